# Builds only the libraries, statically and with the default configuration, installs them, and builds
# the example with them, through CMake and through pkg-config.
include("${CMAKE_CURRENT_LIST_DIR}/Support.cmake")

configure("${SOURCE_DIR}" "${WORK_DIR}/build" -DBUILD_SHARED_LIBS=OFF -DDOCPARSER_BUILD_TESTS=OFF
  -DDOCPARSER_BUILD_TOOLS=OFF "-DCMAKE_INSTALL_PREFIX=${WORK_DIR}/installed")
run(${CMAKE_COMMAND} --build "${WORK_DIR}/build" --target install)

configure("${EXAMPLE_DIR}" "${WORK_DIR}/example"
  "-DCMAKE_PREFIX_PATH=${WORK_DIR}/installed")
run(${CMAKE_COMMAND} --build "${WORK_DIR}/example")
expect_card("${WORK_DIR}/example/help_card")

build_by_pkg_config("${WORK_DIR}/installed" "${EXAMPLE_DIR}/main.cpp" "${WORK_DIR}/help_card" --static)
expect_card("${WORK_DIR}/help_card")

# A program that the shell finds through PATH reads the documentation beside itself, not that of the
# current folder.
file(WRITE "${WORK_DIR}/print_root.cpp" [[
#include <iostream>
#include "environment/PathAndText.hpp"
#include "reference/docparser/DocResourceParser.hpp"
int main() {
    using namespace reference::docparser::DocResourceParser;
    std::cout << fl::i18n::to_string(getReferenceRoots()->referenceRoot);
}
]])
file(MAKE_DIRECTORY "${WORK_DIR}/moved/bin" "${WORK_DIR}/planted/folder")
build_by_pkg_config("${WORK_DIR}/installed" "${WORK_DIR}/print_root.cpp"
  "${WORK_DIR}/moved/bin/print_root" --static)
run(sh -c "cd '${WORK_DIR}/planted/folder' && PATH='${WORK_DIR}/moved/bin' print_root")
if(NOT output STREQUAL "${WORK_DIR}/moved/share/reference-docparser/docroot")
  message(FATAL_ERROR "The default documentation root is ${output}")
endif()

# A consumer learns that a dependency of the static library is missing.
set(ENV{PKG_CONFIG_LIBDIR} "${WORK_DIR}")
execute_process(
  COMMAND ${CMAKE_COMMAND} -S "${EXAMPLE_DIR}" -B "${WORK_DIR}/without_libzip" -G "${GENERATOR}"
    "-DCMAKE_MAKE_PROGRAM=${MAKE_PROGRAM}" "-DCMAKE_CXX_COMPILER=${CXX_COMPILER}"
    "-DCMAKE_PREFIX_PATH=${WORK_DIR}/installed"
  OUTPUT_QUIET ERROR_VARIABLE errors)
string(REGEX REPLACE "[ \n]+" " " errors "${errors}")
if(NOT errors MATCHES "libzip [0-9.]+ or later is missing")
  message(FATAL_ERROR "Nothing says that libzip is missing:\n${errors}")
endif()
