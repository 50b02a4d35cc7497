# Sourced by the scripts beside it.
set(PREFIX "${ROOT}/prefix")

# run(OUTPUT COMMAND...): what the command printed, both streams together. Ends the test when the command fails.
function(run output)
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE text ERROR_VARIABLE text RESULT_VARIABLE code)
  if(NOT code EQUAL 0)
    string(JOIN " " command ${ARGN})
    message(FATAL_ERROR "${command}\nended with ${code}:\n${text}")
  endif()
  set(${output} "${text}" PARENT_SCOPE)
endfunction()

# expect(TEXT PATTERN): ends the test when the text does not match.
function(expect text pattern)
  if(NOT "${text}" MATCHES "${pattern}")
    message(FATAL_ERROR "'${pattern}' is not in:\n${text}")
  endif()
endfunction()

# build_against(PREFIX SOURCE BINARY): configures and builds a project with the strictest warnings.
function(build_against prefix source binary)
  run(log ${CMAKE_COMMAND} -S ${source} -B ${binary} -G Ninja -DCMAKE_BUILD_TYPE=Debug
    "-DCMAKE_PREFIX_PATH=${prefix}" -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER}
    "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Wpedantic -Werror")
  run(log ${CMAKE_COMMAND} --build ${binary})
endfunction()
