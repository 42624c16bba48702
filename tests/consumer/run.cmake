# Installs the build in BUILD_DIR into WORK_DIR, builds the consumer against it alone, and runs it.
file(REMOVE_RECURSE "${WORK_DIR}")
function(run)
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${ARGN}\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

run(${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix "${WORK_DIR}/installed")
run(${CMAKE_COMMAND} -S "${SOURCE_DIR}" -B "${WORK_DIR}/build" -G "${GENERATOR}"
  "-DCMAKE_CXX_COMPILER=${CXX_COMPILER}" "-DCMAKE_PREFIX_PATH=${WORK_DIR}/installed"
  -DCMAKE_FIND_USE_PACKAGE_REGISTRY=OFF)
run(${CMAKE_COMMAND} --build "${WORK_DIR}/build")

file(WRITE "${WORK_DIR}/docroot/docCatalog/referenceapi/alpha.json" [[
{"productName": "Alpha", "baseCode": "AL", "helpFolder": "alpha", "helpLocation": "help/alpha",
 "refItems": [{"href": "alpha/spin.html", "refpurpose": "Turn a shape"}]}
]])
run("${WORK_DIR}/build/consumer" "${WORK_DIR}/docroot")
if(NOT output STREQUAL "alpha: alpha/spin.html: Turn a shape\n")
  message(FATAL_ERROR "The consumer printed: ${output}")
endif()
