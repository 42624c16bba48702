# What all targets of this project share; nothing here reaches a consumer.
function(docparser_configure target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES
    CXX_EXTENSIONS OFF
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
endfunction()

# The folder of what is loaded, in a path that the loader reads.
set(DOCPARSER_ORIGIN "$<IF:$<PLATFORM_ID:Darwin>,@loader_path,$ORIGIN>")

# For a folder of tests: what is tested is the optimised library; the tests themselves build faster
# without.
function(docparser_optimise_little)
  add_compile_options($<$<CONFIG:Release>:-Og>)
endfunction()

# Whether the build is one for ThreadSanitizer, wherever its flag comes from.
function(docparser_find_thread_sanitizer variable)
  try_compile(found SOURCE_FROM_CONTENT thread_sanitizer.cpp [[
#if defined(__SANITIZE_THREAD__)
int main() {}
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
int main() {}
#endif
#endif
]] NO_CACHE)
  set(${variable} ${found} PARENT_SCOPE)
endfunction()

# macOS has neither of these: there, hidden visibility alone says what is exported.
if(NOT APPLE)
  include(CheckLinkerFlag)
  check_linker_flag(CXX "LINKER:-z,nodelete" DOCPARSER_LINKER_KNOWS_NODELETE)
  file(WRITE "${CMAKE_CURRENT_BINARY_DIR}/probe.map" "{ global: *; };\n")
  check_linker_flag(CXX "LINKER:--version-script=${CMAKE_CURRENT_BINARY_DIR}/probe.map"
    DOCPARSER_LINKER_KNOWS_VERSION_SCRIPTS)
endif()

# Makes the symbols of a list, one demangled name a line, all that a shared library exports.
function(docparser_export_only target list)
  get_target_property(type ${target} TYPE)
  if(NOT type STREQUAL "SHARED_LIBRARY" OR NOT DOCPARSER_LINKER_KNOWS_VERSION_SCRIPTS)
    return()
  endif()
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${list}")
  file(STRINGS "${list}" symbols REGEX "^[^#]")
  set(exported "")
  foreach(symbol IN LISTS symbols)
    string(APPEND exported "    \"${symbol}\";\n")
  endforeach()
  set(script "${CMAKE_CURRENT_BINARY_DIR}/${target}.map")
  # It keeps its time while nothing changes, so that configuring anew links nothing anew.
  file(CONFIGURE OUTPUT "${script}" @ONLY
    CONTENT "{\n  global: extern \"C++\" {\n${exported}  };\n  local: *;\n};\n")
  target_link_options(${target} PRIVATE "LINKER:--version-script=${script}")
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${script}")
endfunction()

# A library of the package: `reference::<target>` here and for a consumer of the installed package.
function(docparser_add_library target)
  add_library(${target} ${ARGN})
  add_library(reference::${target} ALIAS ${target})
  docparser_configure(${target})
  set_target_properties(${target} PROPERTIES
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
  if(DOCPARSER_DEBIAN_PACKAGES)
    # The comparison of binary interfaces reads it; what is packed is stripped.
    target_compile_options(${target} PRIVATE -g)
  endif()
  if(DOCPARSER_LINKER_KNOWS_NODELETE)
    # What callers still hold after dlclose, snapshots and exceptions, ends in code of the library.
    target_link_options(${target} PRIVATE "LINKER:-z,nodelete")
  endif()
endfunction()
