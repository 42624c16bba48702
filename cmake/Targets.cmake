# What all targets of this project share; nothing here reaches a consumer.
function(docparser_configure target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES
    CXX_EXTENSIONS OFF
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
endfunction()

include(CheckLinkerFlag)
check_linker_flag(CXX "-Wl,-z,nodelete" DOCPARSER_LINKER_KNOWS_NODELETE)

# A library of the package: `reference::<target>` here and for a consumer of the installed package.
function(docparser_add_library target)
  add_library(${target} ${ARGN})
  add_library(reference::${target} ALIAS ${target})
  docparser_configure(${target})
  set_target_properties(${target} PROPERTIES
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
  if(DOCPARSER_LINKER_KNOWS_NODELETE)
    # What callers still hold after dlclose, snapshots and exceptions, ends in code of the library.
    target_link_options(${target} PRIVATE "-Wl,-z,nodelete")
  endif()
endfunction()
