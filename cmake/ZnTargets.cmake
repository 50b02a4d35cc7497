# What all of our own targets share: the one include root, warnings as errors, no Qt keywords.
add_library(zn_settings INTERFACE)
target_include_directories(zn_settings INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_definitions(zn_settings INTERFACE
  QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_DEPRECATED_WARNINGS
  ZN_VERSION="${PROJECT_VERSION}")
target_compile_options(zn_settings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
  # False alarms of GCC 12: on joined strings when it optimises, and in the standard library under sanitizers.
  target_compile_options(zn_settings INTERFACE -Wno-restrict)
  if(ZN_SANITIZE)
    target_compile_options(zn_settings INTERFACE -Wno-maybe-uninitialized)
  endif()
endif()

# zn_object_library(NAME [MOC] SOURCES ... [LIBS ...]): the sources of one folder, which libraries, programs and tests link
# as objects. NAME follows from the path of the folder.
function(zn_object_library name)
  cmake_parse_arguments(ARG "MOC" "" "SOURCES;LIBS" ${ARGN})
  add_library(${name} OBJECT ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC zn_settings ${ARG_LIBS})
  if(ARG_MOC)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
  endif()
  set_target_properties(${name} PROPERTIES ZN_BUILT_ON "${ARG_LIBS}")
endfunction()

# zn_closure(OUT TARGET...): these targets and all that they are built on, once each. An object library hands its own
# objects to whoever links it, but not those of the object libraries below it.
function(zn_closure out)
  set(found)
  set(todo ${ARGN})
  while(todo)
    list(POP_FRONT todo target)
    if(target IN_LIST found)
      continue()
    endif()
    list(APPEND found ${target})
    if(TARGET ${target})
      get_target_property(below ${target} ZN_BUILT_ON)
      if(below)
        list(APPEND todo ${below})
      endif()
    endif()
  endwhile()
  set(${out} ${found} PARENT_SCOPE)
endfunction()

# The test framework's headers take half of a test's compile time: they are precompiled once for all tests, which makes
# GCC 12 raise false alarms on joined strings. Tests themselves need little optimisation: more takes half as long again.
set(ZN_TEST_OPTIONS $<$<CONFIG:Release>:-O1>)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
  list(APPEND ZN_TEST_OPTIONS -Wno-array-bounds -Wno-stringop-overflow)
endif()
function(zn_test_headers)
  file(WRITE ${PROJECT_BINARY_DIR}/test_headers.cpp "int main() { return 0; }\n")
  add_executable(zn_test_headers ${PROJECT_BINARY_DIR}/test_headers.cpp)
  target_link_libraries(zn_test_headers PRIVATE zn_settings GTest::gmock GTest::gtest)
  # As Qt asks of the tests that use it.
  target_compile_options(zn_test_headers PRIVATE -fPIC ${ZN_TEST_OPTIONS})
  target_precompile_headers(zn_test_headers PRIVATE <gmock/gmock.h> <gtest/gtest.h>)
endfunction()

# zn_test(NAME SOURCES ... LIBS ... [LABELS ...]): one GoogleTest program; each test of it becomes a CTest test.
function(zn_test name)
  cmake_parse_arguments(ARG "MOC" "TIMEOUT" "SOURCES;LIBS;LABELS" ${ARGN})
  if(NOT ARG_LABELS)
    set(ARG_LABELS unit)
  endif()
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 120)
  endif()
  add_executable(${name} ${ARG_SOURCES})
  zn_closure(libs ${ARG_LIBS})
  target_link_libraries(${name} PRIVATE zn_settings ${libs} GTest::gmock GTest::gtest)
  target_compile_options(${name} PRIVATE -fPIC ${ZN_TEST_OPTIONS})
  target_precompile_headers(${name} REUSE_FROM zn_test_headers)
  if(ARG_MOC)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
  endif()
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST TEST_PREFIX "${name}." DISCOVERY_TIMEOUT 60
    PROPERTIES LABELS "${ARG_LABELS}" TIMEOUT ${ARG_TIMEOUT} ENVIRONMENT XDG_STATE_HOME=${PROJECT_BINARY_DIR}/test-state)
endfunction()

# zn_fast_allocator(PROGRAM): gives a program of ours the allocator with which small objects, of which the CAD kernel and
# large scenes have millions, take half the time. Libraries leave the choice to their hosts; sanitizers bring their own.
function(zn_fast_allocator program)
  if(NOT ZN_SANITIZE AND NOT ZN_FUZZ)
    find_package(mimalloc 2.0 REQUIRED)
    target_link_libraries(${program} PRIVATE mimalloc)
    target_sources(${program} PRIVATE ${PROJECT_SOURCE_DIR}/cmake/FastAllocator.cpp)
  endif()
endfunction()

# zn_bench(NAME SOURCES ... LIBS ...): one Google Benchmark program, with the allocator of our programs.
function(zn_bench name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  zn_closure(libs ${ARG_LIBS})
  target_link_libraries(${name} PRIVATE zn_settings ${libs} benchmark::benchmark)
  zn_fast_allocator(${name})
endfunction()

# zn_fuzz(NAME SOURCES ... LIBS ...): one libFuzzer program, built only with ZN_FUZZ.
function(zn_fuzz name)
  if(NOT ZN_FUZZ)
    return()
  endif()
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  zn_closure(libs ${ARG_LIBS})
  target_link_libraries(${name} PRIVATE zn_settings ${libs})
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
endfunction()
