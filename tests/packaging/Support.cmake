# Shared by the packaging tests, which are scripts, each with a folder WORK_DIR of its own.
cmake_minimum_required(VERSION 3.25)
file(REMOVE_RECURSE "${WORK_DIR}")

# Runs a command, which must succeed, and sets `output` to what it printed.
function(run)
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${ARGN}\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

# Configures a project with the compiler of this build.
function(configure source build)
  run(${CMAKE_COMMAND} -S "${source}" -B "${build}" -G "${GENERATOR}" -DCMAKE_BUILD_TYPE=Release
    "-DCMAKE_CXX_COMPILER=${CXX_COMPILER}" "-DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER}"
    -DCMAKE_FIND_USE_PACKAGE_REGISTRY=OFF ${ARGN})
  set(output "${output}" PARENT_SCOPE)
endfunction()

# Compiles a program without CMake, with the flags of pkg-config for the library under `prefix`.
function(build_by_pkg_config prefix source program)
  file(GLOB_RECURSE module "${prefix}/*/reference-docparser.pc")
  cmake_path(GET module PARENT_PATH folder)
  run(${CMAKE_COMMAND} -E env "PKG_CONFIG_PATH=${folder}"
    pkg-config --cflags --libs reference-docparser ${ARGN})
  separate_arguments(flags UNIX_COMMAND "${output}")
  run(${CXX_COMPILER} -std=c++20 "${source}" ${flags} -o "${program}")
endfunction()

# Writes a resource file whose only item belongs to a support package, which the library looks for in
# the resource of its product.
function(write_acos root catalog members)
  set(folders [["helpFolder": "libc", "helpLocation": "help/libc"]])
  file(WRITE "${root}/docCatalog/${catalog}/libc.json"
    "{\"productName\": \"C Library\", \"baseCode\": \"LC\", ${folders}, \"refItems\": [],
 \"supportPackages\": [{\"productName\": \"Mathematics\", \"baseCode\": \"libm\", ${folders},
   \"refItems\": [{\"href\": \"libc/acos.html\", \"refpurpose\": \"arc cosine\", ${members}}]}]}")
endfunction()

# Runs the example, which must print the help card of the name under the cursor.
function(expect_card program)
  set(root "${WORK_DIR}/docroot")
  write_acos("${root}" referenceapi_lookup [["name": "acos", "type": "function"]])
  write_acos("${root}" referenceapi
    [=["syntaxgroup": [{"title": "C", "syntax": ["double acos(double x);"]}]]=])
  file(WRITE "${WORK_DIR}/program.c" "int main() {\n    acos(1);\n}\n")
  run(${CMAKE_COMMAND} -E env "LD_LIBRARY_PATH=${ARGN}"
    "${program}" "${root}" en "${WORK_DIR}/program.c" 2 8)
  set(card [[
acos  (function, libm)
  arc cosine
    double acos(double x);
  libc/acos.html
]])
  if(NOT output STREQUAL card)
    message(FATAL_ERROR "${program} printed:\n${output}")
  endif()
endfunction()
