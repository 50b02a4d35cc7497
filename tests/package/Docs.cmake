# The commands and sources of a page of the documentation, with the installation.
include(${CMAKE_CURRENT_LIST_DIR}/Common.cmake)
get_filename_component(page ${DOCUMENT} NAME_WE)
run(log bash ${SOURCE}/tests/docs/run-doc ${SOURCE}/docs/${DOCUMENT} ${ROOT}/docs/${page} ${PREFIX} ${SOURCE}/examples/models)
