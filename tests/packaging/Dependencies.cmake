# A dependency that is missing or too old is named, with what to install.
include("${CMAKE_CURRENT_LIST_DIR}/Support.cmake")

function(expect_failure name message)
  execute_process(
    COMMAND ${CMAKE_COMMAND} -S "${SOURCE_DIR}" -B "${WORK_DIR}/${name}" -G "${GENERATOR}" "-DCMAKE_MAKE_PROGRAM=${MAKE_PROGRAM}"
      "-DCMAKE_CXX_COMPILER=${CXX_COMPILER}" -DDOCPARSER_BUILD_TESTS=OFF ${ARGN}
    OUTPUT_QUIET ERROR_VARIABLE errors RESULT_VARIABLE result)
  string(REGEX REPLACE "[ \n]+" " " errors "${errors}")
  string(FIND "${errors}" "${message}" position)
  if(result EQUAL 0 OR position EQUAL -1)
    message(FATAL_ERROR "${name}: expected \"${message}\", got:\n${errors}")
  endif()
endfunction()

function(expect_failure_when_missing package message)
  expect_failure(missing_${package} "${message}" -DCMAKE_DISABLE_FIND_PACKAGE_${package}=ON)
endfunction()

expect_failure_when_missing(Boost
  "docparser needs Boost 1.81 or later COMPONENTS json log. Debian has it in libboost-json1.81-dev")
expect_failure_when_missing(ICU "docparser needs ICU 60 or later COMPONENTS uc")
expect_failure_when_missing(CLI11
  "docparser needs CLI11 2.1 or later. Debian has it in libcli11-dev")
expect_failure_when_missing(fmt "docparser needs fmt 9 or later. Debian has it in libfmt-dev")
expect_failure(missing_GTest
  "docparser needs GTest 1.12 or later. Debian has it in libgtest-dev and libgmock-dev"
  -DCMAKE_DISABLE_FIND_PACKAGE_GTest=ON -DDOCPARSER_BUILD_TESTS=ON)

# An empty one counts as given.
expect_failure(missing_valijson
  "docparser needs valijson with its adapter for Boost.JSON (valijson/adapters/boost_json_adapter.hpp). Debian has it in libvalijson-dev"
  -DVALIJSON_INCLUDE_DIR= -DDOCPARSER_BUILD_TESTS=ON)

file(WRITE "${WORK_DIR}/old/BoostConfig.cmake" "")
file(WRITE "${WORK_DIR}/old/BoostConfigVersion.cmake"
  "set(PACKAGE_VERSION 1.70.0)\nset(PACKAGE_VERSION_COMPATIBLE FALSE)\n")
expect_failure(old_boost "(found: 1.70.0)"
  "-DBoost_DIR=${WORK_DIR}/old"
  -DCMAKE_FIND_USE_CMAKE_SYSTEM_PATH=OFF -DCMAKE_FIND_USE_SYSTEM_ENVIRONMENT_PATH=OFF)

file(WRITE "${WORK_DIR}/modules/libzip.pc"
  "Name: libzip\nDescription: an old one\nVersion: 1.0\nLibs:\n")
set(ENV{PKG_CONFIG_LIBDIR} "${WORK_DIR}/modules")
expect_failure(old_libzip
  "docparser needs libzip 1.7 or later (found: 1.0). Debian has it in libzip-dev")

file(REMOVE "${WORK_DIR}/modules/libzip.pc")
expect_failure(missing_libzip "docparser needs libzip 1.7 or later. Debian has it in libzip-dev")
