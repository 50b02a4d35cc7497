# An example, built from a copy outside the sources and run on a sample.
include(${CMAKE_CURRENT_LIST_DIR}/Common.cmake)
file(COPY ${SOURCE}/examples/${EXAMPLE} DESTINATION ${ROOT})
file(COPY ${SOURCE}/examples/models/${ARGUMENT} DESTINATION ${ROOT}/${EXAMPLE})
build_against(${PREFIX} ${ROOT}/${EXAMPLE} ${ROOT}/${EXAMPLE}/build)
run(output ${CMAKE_COMMAND} -E env PATH=/nowhere
  ${ROOT}/${EXAMPLE}/build/${EXAMPLE} ${ROOT}/${EXAMPLE}/${ARGUMENT} ${OUTPUT})
expect("${output}" "${EXPECT}")
