# Installs the build in BUILD_DIR, builds the example with only the installed files, through CMake and
# through pkg-config, and runs it.
include("${CMAKE_CURRENT_LIST_DIR}/Support.cmake")

set(installed "${WORK_DIR}/installed")
run(${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix "${installed}")

configure("${EXAMPLE_DIR}" "${WORK_DIR}/build" "-DCMAKE_PREFIX_PATH=${installed}")
run(${CMAKE_COMMAND} --build "${WORK_DIR}/build")
expect_card("${WORK_DIR}/build/help_card")

build_by_pkg_config("${installed}" "${EXAMPLE_DIR}/main.cpp" "${WORK_DIR}/help_card")
file(GLOB_RECURSE library "${installed}/*/libdocparser.so")
cmake_path(GET library PARENT_PATH folder)
expect_card("${WORK_DIR}/help_card" "${folder}")
