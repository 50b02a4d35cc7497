# Debian packages: cpack -G DEB in the folder of the build.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zncadimport)
set(CPACK_PACKAGE_VENDOR "znCADImport maintainers")
set(CPACK_PACKAGE_CONTACT "The znCADImport maintainers <zncadimport@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY ${PROJECT_DESCRIPTION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL Libraries Development Tools)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_SECTION libs)

set(library libzncadimport${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_NAME ${library})
set(CPACK_COMPONENT_LIBRARIES_DESCRIPTION "CAD import library for 3D visualisation hosts
 Import library, open host and importer.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libzncadimport-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "${library} (= ${PROJECT_VERSION}), qtbase5-dev (>= 5.15), libboost-dev (>= 1.74)")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Headers of the CAD import library
 Headers, CMake package and pkg-config file for hosts that embed the library.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME zncadimport-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "${library} (= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_TOOLS_DESCRIPTION "Imports CAD files on the command line
 The program znimport, the converter process, manual pages and completion of the shell.")

# The libraries find the converter of the tools, as do programs that embed them.
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_RECOMMENDS "zncadimport-tools (= ${PROJECT_VERSION})")
include(CPack)
