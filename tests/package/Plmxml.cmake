# The worked assembly, from a copy, with the installed program.
include(${CMAKE_CURRENT_LIST_DIR}/Common.cmake)
file(COPY ${SOURCE}/examples/plmxml DESTINATION ${ROOT})
run(tree ${CMAKE_COMMAND} -E env PATH=/nowhere
  ${PREFIX}/bin/znimport ${ROOT}/plmxml/cart.plmxml --tree -o ${ROOT}/cart.glb)
expect("${tree}" "wheel.* \\[Geometry\\], [0-9]+ triangles")
file(SIZE ${ROOT}/cart.glb size)
if(size LESS 1000)
  message(FATAL_ERROR "cart.glb has ${size} bytes")
endif()
