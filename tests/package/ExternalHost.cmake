# The library is built, installed and used without the open host: a host that shares no code with it takes its place.
include(${CMAKE_CURRENT_LIST_DIR}/Common.cmake)
set(external "${ROOT}/external")
# What the other build has compiled with the same flags is not compiled again.
set(ENV{CCACHE_NOHASHDIR} 1)
run(log ${CMAKE_COMMAND} -S ${SOURCE} -B ${external}/library -G Ninja -DZN_HOST=external -DCMAKE_BUILD_TYPE=${CONFIG}
  -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER} -DCMAKE_INSTALL_PREFIX=${external}/prefix)
run(log ${CMAKE_COMMAND} --build ${external}/library)
run(log ${CMAKE_COMMAND} --install ${external}/library)
foreach(name standalone importer)
  if(EXISTS ${external}/prefix/include/znCADImport/${name})
    message(FATAL_ERROR "headers of ${name} are installed")
  endif()
endforeach()
run(dynamic readelf -d ${external}/prefix/lib/libznCADImport.so)
if(dynamic MATCHES "znStandaloneHost")
  message(FATAL_ERROR "the library asks for the open host:\n${dynamic}")
endif()

file(COPY ${SOURCE}/tests/external-host DESTINATION ${external})
build_against(${external}/prefix ${external}/external-host ${external}/host)
file(WRITE "${external}/Teile äö.obj" "axle\nwheel\n")
run(output ${external}/host/external_host "${external}/Teile äö.obj")
expect("${output}" "^state 0\nTeile äö\naxle\nwheel\n$")
