# Builds the example with the library's sources as part of its project, which must not inherit any flag,
# test or install rule of the library, unless it asks for the install rules.
include("${CMAKE_CURRENT_LIST_DIR}/Support.cmake")

# What the project looks for in vain is its own concern.
file(WRITE "${WORK_DIR}/optional.cmake" "find_package(fmt 99 QUIET)\nfind_package(Nowhere QUIET)\n")
configure("${EXAMPLE_DIR}" "${WORK_DIR}/build" "-DDOCPARSER_SOURCE_DIR=${SOURCE_DIR}"
  "-DCMAKE_PROJECT_INCLUDE=${WORK_DIR}/optional.cmake" -DCMAKE_EXPORT_COMPILE_COMMANDS=ON)
run(${CMAKE_COMMAND} --build "${WORK_DIR}/build")
expect_card("${WORK_DIR}/build/help_card")

file(READ "${WORK_DIR}/build/compile_commands.json" commands)
string(JSON count LENGTH "${commands}")
math(EXPR last "${count} - 1")
foreach(number RANGE ${last})
  string(JSON command GET "${commands}" ${number} command)
  string(JSON file GET "${commands}" ${number} file)
  if(file MATCHES "help_card/main.cpp$" AND command MATCHES " (-W|-f)")
    message(FATAL_ERROR "The project inherits flags of the library: ${command}")
  endif()
  string(REPLACE "${SOURCE_DIR}/" "" source "${file}")
  if(source MATCHES "^(tests|tools|fuzz|bench)/")
    message(FATAL_ERROR "Built although nobody asked for it: ${file}")
  endif()
endforeach()

run(ctest --test-dir "${WORK_DIR}/build" --show-only)
if(NOT output MATCHES "Total Tests: 0")
  message(FATAL_ERROR "The project inherits tests of the library:\n${output}")
endif()
run(${CMAKE_COMMAND} --install "${WORK_DIR}/build" --prefix "${WORK_DIR}/installed")
if(EXISTS "${WORK_DIR}/installed")
  message(FATAL_ERROR "The project inherits install rules of the library")
endif()

# The libraries are static here, because the project did not set BUILD_SHARED_LIBS.
configure("${EXAMPLE_DIR}" "${WORK_DIR}/build" -DDOCPARSER_INSTALL=ON)
run(${CMAKE_COMMAND} --build "${WORK_DIR}/build")
run(${CMAKE_COMMAND} --install "${WORK_DIR}/build" --prefix "${WORK_DIR}/installed")
configure("${EXAMPLE_DIR}" "${WORK_DIR}/user" "-DCMAKE_PREFIX_PATH=${WORK_DIR}/installed")
run(${CMAKE_COMMAND} --build "${WORK_DIR}/user")
expect_card("${WORK_DIR}/user/help_card")
