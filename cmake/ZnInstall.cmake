# What an installation holds and where. Everything finds its neighbours from its own place, so that a prefix may move.
include(CMakePackageConfigHelpers)
include(ZnPublicHeaders)

set(ZN_INCLUDE_DIR ${CMAKE_INSTALL_INCLUDEDIR}/znCADImport)
set(ZN_CONFIG_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/znCADImport)

set(ZN_INSTALLED_LIBRARIES znCADImport)
set(installed_headers ${ZN_HOST_HEADERS} ${ZN_LIBRARY_HEADERS})
set(ZN_HAS_STANDALONE_HOST OFF)
if(TARGET znStandaloneHost)
  list(APPEND ZN_INSTALLED_LIBRARIES znStandaloneHost znImporter)
  list(APPEND installed_headers ${ZN_STANDALONE_HEADERS} ${ZN_IMPORTER_HEADERS})
  set(ZN_HAS_STANDALONE_HOST ON)
endif()

set_target_properties(${ZN_INSTALLED_LIBRARIES} PROPERTIES
  VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR} INSTALL_RPATH $ORIGIN)
install(TARGETS ${ZN_INSTALLED_LIBRARIES}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Libraries NAMELINK_COMPONENT Development)

if(TARGET znimport)
  set_target_properties(znimport ptxconvert ptxtessellate PROPERTIES
    INSTALL_RPATH $ORIGIN/${ZN_LIBRARIES_FROM_PROGRAMS})
  install(TARGETS znimport ptxconvert ptxtessellate
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Tools)
  install(TARGETS ptxlaunch RUNTIME DESTINATION ${CMAKE_INSTALL_LIBDIR}/znCADImport COMPONENT Tools)
  install(TARGETS ptxstep ptxiges ptxbrep ptxmesh ptxplmxml
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/znCADImport COMPONENT Tools)
  foreach(program znimport ptxconvert)
    install(FILES ${PROJECT_BINARY_DIR}/tools/manual/${program}.1
      DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT Tools)
    install(FILES ${PROJECT_BINARY_DIR}/tools/manual/${program}.bash RENAME ${program}
      DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT Tools)
  endforeach()
endif()

foreach(header IN LISTS installed_headers)
  cmake_path(GET header PARENT_PATH folder)
  install(FILES ${PROJECT_SOURCE_DIR}/${header} DESTINATION ${ZN_INCLUDE_DIR}/${folder} COMPONENT Development)
endforeach()

set(generated ${PROJECT_BINARY_DIR}/package)
configure_file(cmake/znVersion.h.in ${generated}/znVersion.h @ONLY)
install(FILES ${generated}/znVersion.h DESTINATION ${ZN_INCLUDE_DIR}/import COMPONENT Development)

configure_package_config_file(cmake/znCADImportConfig.cmake.in ${generated}/znCADImportConfig.cmake
  INSTALL_DESTINATION ${ZN_CONFIG_DIR} PATH_VARS ZN_INCLUDE_DIR CMAKE_INSTALL_LIBDIR)
write_basic_package_version_file(${generated}/znCADImportConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${generated}/znCADImportConfig.cmake ${generated}/znCADImportConfigVersion.cmake
  DESTINATION ${ZN_CONFIG_DIR} COMPONENT Development)

file(RELATIVE_PATH ZN_PREFIX_FROM_PC ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
list(TRANSFORM ZN_INSTALLED_LIBRARIES PREPEND -l OUTPUT_VARIABLE ZN_PC_LIBS)
list(JOIN ZN_PC_LIBS " " ZN_PC_LIBS)
configure_file(cmake/znCADImport.pc.in ${generated}/znCADImport.pc @ONLY)
install(FILES ${generated}/znCADImport.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT Development)
