# TinyXML ships no CMake package.
find_path(TINYXML_INCLUDE_DIR tinyxml.h REQUIRED)
find_library(TINYXML_LIBRARY tinyxml REQUIRED)
add_library(zn_tinyxml UNKNOWN IMPORTED)
set_target_properties(zn_tinyxml PROPERTIES
  IMPORTED_LOCATION ${TINYXML_LIBRARY}
  INTERFACE_INCLUDE_DIRECTORIES ${TINYXML_INCLUDE_DIR}
  INTERFACE_COMPILE_DEFINITIONS TIXML_USE_STL)

if(NOT ZN_STANDALONE)
  return()
endif()
find_package(Eigen3 3.3 REQUIRED NO_MODULE)
find_package(ZLIB REQUIRED)
find_package(LibLZMA REQUIRED)
# minizip ships no CMake package in Debian 12.
find_path(MINIZIP_INCLUDE_DIR minizip/unzip.h REQUIRED)
find_library(MINIZIP_LIBRARY minizip REQUIRED)
add_library(zn_minizip UNKNOWN IMPORTED)
set_target_properties(zn_minizip PROPERTIES
  IMPORTED_LOCATION ${MINIZIP_LIBRARY}
  INTERFACE_INCLUDE_DIRECTORIES ${MINIZIP_INCLUDE_DIR})
# libseccomp ships no CMake package.
find_path(SECCOMP_INCLUDE_DIR seccomp.h REQUIRED)
find_library(SECCOMP_LIBRARY seccomp REQUIRED)
add_library(zn_seccomp UNKNOWN IMPORTED)
set_target_properties(zn_seccomp PROPERTIES
  IMPORTED_LOCATION ${SECCOMP_LIBRARY}
  INTERFACE_INCLUDE_DIRECTORIES ${SECCOMP_INCLUDE_DIR})
find_package(assimp 5.2 REQUIRED)
find_package(TinyGLTF 2.7 REQUIRED)
find_package(nlohmann_json 3.11 REQUIRED)
find_package(meshoptimizer 0.18 REQUIRED)
find_package(draco 1.5 REQUIRED)
find_package(embree 3.13 REQUIRED)
find_package(pugixml 1.13 REQUIRED)
include(ZnOpenCascade)

if(ZN_BUILD_TESTS)
  find_package(GTest REQUIRED)
  include(GoogleTest)
endif()
if(ZN_BUILD_BENCH)
  find_package(benchmark REQUIRED)
endif()
