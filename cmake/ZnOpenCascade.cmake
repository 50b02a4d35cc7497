# zn_opencascade: the modules of the CAD kernel that are used, without those for windows and drawing that its own
# package file insists on.
if(NOT TARGET zn_opencascade)
  find_path(OPENCASCADE_INCLUDE_DIR Standard_Version.hxx PATH_SUFFIXES opencascade REQUIRED)
  add_library(zn_opencascade INTERFACE)
  target_include_directories(zn_opencascade SYSTEM INTERFACE ${OPENCASCADE_INCLUDE_DIR})
  foreach(module TKXDESTEP TKXDEIGES TKSTEP TKSTEPBase TKSTEPAttr TKSTEP209 TKIGES TKXSBase TKXCAF TKLCAF TKCDF TKCAF
          TKMesh TKShHealing TKTopAlgo TKGeomAlgo TKBRep TKGeomBase TKG3d TKG2d TKMath TKernel)
    find_library(OPENCASCADE_${module} ${module} REQUIRED)
    target_link_libraries(zn_opencascade INTERFACE ${OPENCASCADE_${module}})
  endforeach()
endif()
