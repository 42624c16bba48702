# For a system whose libraries are not at hand, to be named in CMAKE_PROJECT_TOP_LEVEL_INCLUDES: what
# the project finds are headers, in the folder DOCPARSER_HEADERS, and nothing to link.
set(docparser_targets_of_Boost Boost::json Boost::log)
set(docparser_targets_of_CLI11 CLI11::CLI11)
set(docparser_targets_of_ICU ICU::uc)
set(docparser_targets_of_fmt fmt::fmt)

# A package that is not listed is looked for in the usual way.
macro(docparser_find_headers method package)
  foreach(target IN LISTS docparser_targets_of_${package})
    add_library(${target} INTERFACE IMPORTED)
    target_include_directories(${target} INTERFACE "${DOCPARSER_HEADERS}")
    target_compile_definitions(${target} INTERFACE BOOST_ALL_DYN_LINK)
    set(${package}_FOUND TRUE)
  endforeach()
endmacro()
cmake_language(SET_DEPENDENCY_PROVIDER docparser_find_headers SUPPORTED_METHODS FIND_PACKAGE)
