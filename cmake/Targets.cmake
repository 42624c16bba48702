# Settings that all targets of this project share, and that no consumer inherits.
function(docparser_configure target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES
    CXX_EXTENSIONS OFF
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
endfunction()

# How a run path names the folder of the file that contains it.
set(DOCPARSER_ORIGIN "$<IF:$<PLATFORM_ID:Darwin>,@loader_path,$ORIGIN>")

# For a folder of tests: the library under test is optimised, but tests compile faster without
# optimisation.
function(docparser_optimise_little)
  add_compile_options($<$<CONFIG:Release>:-Og>)
endfunction()

# Sets the variable to whether the build uses ThreadSanitizer, wherever the flag comes from.
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

# The linker of macOS has neither of these.
set(DOCPARSER_FOREIGN_SYMBOLS "${CMAKE_CURRENT_LIST_DIR}/foreign_symbols.map")
if(NOT APPLE)
  include(CheckLinkerFlag)
  check_linker_flag(CXX "LINKER:-z,nodelete" DOCPARSER_LINKER_KNOWS_NODELETE)
  check_linker_flag(CXX "LINKER:--version-script=${DOCPARSER_FOREIGN_SYMBOLS}"
    DOCPARSER_LINKER_KNOWS_VERSION_SCRIPTS)
endif()

# Adds a library that is called `reference::<target>` both here and in the installed package.
function(docparser_add_library target)
  add_library(${target} ${ARGN})
  add_library(reference::${target} ALIAS ${target})
  docparser_configure(${target})
  set_target_properties(${target} PROPERTIES
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
  if(DOCPARSER_DEBIAN_PACKAGES)
    # packaging/compare_abi reads the debug information; the packaged files are stripped.
    target_compile_options(${target} PRIVATE -g)
  endif()
  if(DOCPARSER_LINKER_KNOWS_NODELETE)
    # Callers may hold snapshots and exceptions after dlclose, and destroying them runs our code.
    target_link_options(${target} PRIVATE "LINKER:-z,nodelete")
  endif()
  if(DOCPARSER_LINKER_KNOWS_VERSION_SCRIPTS)
    target_link_options(${target} PRIVATE "LINKER:--version-script=${DOCPARSER_FOREIGN_SYMBOLS}")
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${DOCPARSER_FOREIGN_SYMBOLS}")
  endif()
endfunction()
