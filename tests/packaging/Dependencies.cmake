# One error names all dependencies that are missing or too old, each with its Debian packages.
include("${CMAKE_CURRENT_LIST_DIR}/Support.cmake")

# .ci/packages gives the Debian packages of exactly the dependencies that the build looks for.
file(STRINGS "${SOURCE_DIR}/.ci/packages" named REGEX "^[^#]+: ")
list(TRANSFORM named REPLACE ":.*" "")
file(STRINGS "${SOURCE_DIR}/cmake/Dependencies.cmake" sought REGEX "find_package\\(.* QUIET")
list(TRANSFORM sought REPLACE " *find_package\\(([^ ]+) .*" "\\1")
list(APPEND sought PkgConfig)
list(SORT named)
list(SORT sought)
if(NOT named STREQUAL sought)
  message(FATAL_ERROR "The build looks for ${sought}, and .ci/packages names ${named}")
endif()

# Configures a build, which must fail, and sets `errors` to its error on one line.
function(fail_to_configure name)
  execute_process(
    COMMAND ${CMAKE_COMMAND} -S "${SOURCE_DIR}" -B "${WORK_DIR}/${name}" -G "${GENERATOR}" "-DCMAKE_MAKE_PROGRAM=${MAKE_PROGRAM}"
      "-DCMAKE_CXX_COMPILER=${CXX_COMPILER}" ${ARGN}
    OUTPUT_QUIET ERROR_VARIABLE errors RESULT_VARIABLE result)
  if(result EQUAL 0)
    message(FATAL_ERROR "${name}: configuring succeeds")
  endif()
  string(REGEX REPLACE "[ \n]+" " " errors "${errors}")
  set(errors "${errors}" PARENT_SCOPE)
endfunction()

function(expect_in_errors text)
  string(FIND "${errors}" "${text}" position)
  if(position EQUAL -1)
    message(FATAL_ERROR "Expected \"${text}\", got:\n${errors}")
  endif()
endfunction()

file(WRITE "${WORK_DIR}/old/BoostConfig.cmake" "")
file(WRITE "${WORK_DIR}/old/BoostConfigVersion.cmake"
  "set(PACKAGE_VERSION 1.70.0)\nset(PACKAGE_VERSION_COMPATIBLE FALSE)\n")
fail_to_configure(nothing_but_an_old_boost "-DBoost_DIR=${WORK_DIR}/old" -DDOCPARSER_BUILD_BENCHMARKS=ON
  -DCMAKE_FIND_USE_CMAKE_SYSTEM_PATH=OFF -DCMAKE_FIND_USE_SYSTEM_ENVIRONMENT_PATH=OFF)
foreach(dependency IN LISTS sought)
  expect_in_errors(" * ${dependency}")
endforeach()
expect_in_errors(" * Boost (required version >= 1.81), Debian: libboost-json1.81-dev libboost-log1.81-dev for the libraries")

file(WRITE "${WORK_DIR}/modules/libzip.pc"
  "Name: libzip\nDescription: an old one\nVersion: 1.0\nLibs:\n")
set(ENV{PKG_CONFIG_LIBDIR} "${WORK_DIR}/modules")
fail_to_configure(old_libzip)
expect_in_errors("or too old: * Libzip (required version >= 1.7), Debian: libzip-dev for the libraries Name the prefix")
