# The programs of an installation lock themselves in, where the kernel has all of it.
include(${CMAKE_CURRENT_LIST_DIR}/Common.cmake)
run(version ${PREFIX}/bin/ptxconvert --version)
if(NOT version MATCHES "sandbox: files \\(Landlock [0-9]+\\), system calls\n")
  string(REGEX MATCH "sandbox: [^\n]*" abilities "${version}")
  message(STATUS "skipped: ${abilities}")
  return()
endif()

set(out "${ROOT}/sandbox")
file(REMOVE_RECURSE ${out})
file(MAKE_DIRECTORY ${out})
run(log ${PREFIX}/bin/ptxconvert --sandbox require ${SOURCE}/examples/models/flywheel.step ${out}/a.osb)
file(READ ${out}/a.osb.log log)
expect("${log}" "locked in: files \\(Landlock [0-9]+\\), system calls\n")

# Meshing anew and a file that a process for mesh files reads.
run(tree ${CMAKE_COMMAND} -E env PATH=/nowhere ${PREFIX}/bin/znimport ${SOURCE}/examples/models/flywheel.step --tree
  --set convert.sandbox=require --set optimize.mergeGeometries=on)
expect("${tree}" "base plate \\[Geometry\\], [0-9]+ triangles")
run(tree ${CMAKE_COMMAND} -E env PATH=/nowhere ${PREFIX}/bin/znimport ${SOURCE}/examples/models/bracket.obj --tree
  --set convert.sandbox=require)
expect("${tree}" "\\[Geometry\\], [0-9]+ triangles")
file(REMOVE_RECURSE ${out})
