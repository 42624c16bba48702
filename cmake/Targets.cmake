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

# macOS has neither of these.
set(DOCPARSER_FOREIGN_SYMBOLS "${CMAKE_CURRENT_LIST_DIR}/foreign_symbols.map")
if(NOT APPLE)
  include(CheckLinkerFlag)
  check_linker_flag(CXX "LINKER:-z,nodelete" DOCPARSER_LINKER_KNOWS_NODELETE)
  check_linker_flag(CXX "LINKER:--version-script=${DOCPARSER_FOREIGN_SYMBOLS}"
    DOCPARSER_LINKER_KNOWS_VERSION_SCRIPTS)
endif()

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
  if(DOCPARSER_LINKER_KNOWS_VERSION_SCRIPTS)
    target_link_options(${target} PRIVATE "LINKER:--version-script=${DOCPARSER_FOREIGN_SYMBOLS}")
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${DOCPARSER_FOREIGN_SYMBOLS}")
  endif()
endfunction()
