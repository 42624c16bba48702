# For a platform whose libraries are not available; CMAKE_PROJECT_TOP_LEVEL_INCLUDES names this file.
# Dependencies consist of the headers in the folder DOCPARSER_HEADERS, with nothing to link.
set(docparser_targets_of_Boost Boost::json Boost::log)
set(docparser_targets_of_CLI11 CLI11::CLI11)
set(docparser_targets_of_ICU ICU::uc)
set(docparser_targets_of_fmt fmt::fmt)

# CMake looks for all other packages in the usual way.
macro(docparser_find_headers method package)
  foreach(target IN LISTS docparser_targets_of_${package})
    add_library(${target} INTERFACE IMPORTED)
    target_include_directories(${target} INTERFACE "${DOCPARSER_HEADERS}")
    target_compile_definitions(${target} INTERFACE BOOST_ALL_DYN_LINK)
    set(${package}_FOUND TRUE)
  endforeach()
endmacro()
cmake_language(SET_DEPENDENCY_PROVIDER docparser_find_headers SUPPORTED_METHODS FIND_PACKAGE)
