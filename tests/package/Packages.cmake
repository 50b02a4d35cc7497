# What the page on installing does with a build: installs it, makes the packages and unpacks them.
include(${CMAKE_CURRENT_LIST_DIR}/Common.cmake)
find_program(dpkg_deb dpkg-deb)
find_program(shlibdeps dpkg-shlibdeps)
if(NOT dpkg_deb OR NOT shlibdeps)
  message("dpkg-deb or dpkg-shlibdeps is not here: skipped")
  return()
endif()
# Blanks in a folder's name are beyond the packer.
string(MD5 key ${ROOT})
set(work /tmp/zn-install-page-${key})
unset(ENV{DESTDIR})
run(log bash ${SOURCE}/tests/docs/run-doc ${SOURCE}/docs/install.md ${work} /nowhere ${SOURCE}/examples/models
  built build/release=${BUILD})
file(REMOVE_RECURSE ${work})
