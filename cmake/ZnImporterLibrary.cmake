# The importer as a library, for hosts that like to have the jobs of an import chained. It hides nothing.
set_target_properties(zn_importer zn_importer_cluster zn_importer_materials zn_importer_plmxml PROPERTIES
  CXX_VISIBILITY_PRESET default VISIBILITY_INLINES_HIDDEN OFF)
add_library(znImporter SHARED)
target_link_libraries(znImporter PRIVATE
  zn_importer zn_importer_cluster zn_importer_materials zn_importer_plmxml zn_cad_xml zn_tinyxml zn_protocol
  zn_import_filetypes znCADImport znStandaloneHost)
