# A program that knows the package by its pkg-config file alone.
include(${CMAKE_CURRENT_LIST_DIR}/Common.cmake)
find_program(pkg_config pkg-config)
if(NOT pkg_config)
  message("no pkg-config here: skipped")
  return()
endif()
# Blanks in flags survive no shell variable, so the package is met under a plain name.
string(MD5 key ${ROOT})
set(link /tmp/zn-pkg-config-${key})
file(CREATE_LINK ${PREFIX} ${link} SYMBOLIC)
set(program ${ROOT}/version)
file(WRITE ${program}.cpp "#include \"import/znVersion.h\"\n#include \"import/filetypes/znCADFileTypes.h\"\n#include <cstdio>\n"
  "#include \"standalone/startup/StandaloneSession.h\"\n"
  "int main() { std::puts(zn::StandaloneSession::current() ? \"session\" : ZN_CADIMPORT_VERSION); }\n")
run(log sh -c "exec ${COMPILER} -std=c++20 -fPIC -Wall -Wextra -Wpedantic -Werror '${program}.cpp' -o '${program}' \
  $(PKG_CONFIG_PATH=${link}/lib/pkgconfig ${pkg_config} --cflags --libs znCADImport) -Wl,-rpath,${link}/lib")
run(output ${program})
file(REMOVE ${link})
expect("${output}" "^${VERSION}\n$")
