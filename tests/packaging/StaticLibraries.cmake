# Builds the libraries alone, statically and from a plain configuration, installs them, and builds
# the example against them by CMake and by pkg-config.
include("${CMAKE_CURRENT_LIST_DIR}/Support.cmake")

configure("${SOURCE_DIR}" "${WORK_DIR}/build" -DBUILD_SHARED_LIBS=OFF -DDOCPARSER_BUILD_TESTS=OFF
  -DDOCPARSER_BUILD_TOOLS=OFF "-DCMAKE_INSTALL_PREFIX=${WORK_DIR}/installed")
run(${CMAKE_COMMAND} --build "${WORK_DIR}/build" --target install)

configure("${EXAMPLE_DIR}" "${WORK_DIR}/example"
  "-DCMAKE_PREFIX_PATH=${WORK_DIR}/installed")
run(${CMAKE_COMMAND} --build "${WORK_DIR}/example")
expect_card("${WORK_DIR}/example/help_card")

build_by_pkg_config("${WORK_DIR}/installed" "${WORK_DIR}/help_card" --static)
expect_card("${WORK_DIR}/help_card")
