# Finds what the build needs. What is missing or too old is named, with what to install.
include(FindPkgConfig)

function(docparser_report_missing what debian_package found)
  if(found)
    set(found " (found: ${found})")
  endif()
  message(FATAL_ERROR
    "docparser needs ${what}${found}.\n"
    "Debian has it in ${debian_package}; if it is installed elsewhere, name its prefix in "
    "CMAKE_PREFIX_PATH.")
endfunction()

# docparser_require(<package> <Debian package> <version> [arguments of find_package])
macro(docparser_require package debian_package version)
  find_package(${package} ${version} ${ARGN} QUIET)
  if(NOT ${package}_FOUND)
    string(REPLACE ";" " " arguments "${ARGN}")
    string(STRIP "${package} ${version} or later ${arguments}" what)
    set(versions ${${package}_CONSIDERED_VERSIONS} ${${package}_VERSION})
    list(REMOVE_DUPLICATES versions)
    docparser_report_missing("${what}" "${debian_package}" "${versions}")
  endif()
endmacro()

# docparser_require_module(<prefix> <Debian package> <pkg-config module> <version>)
macro(docparser_require_module prefix debian_package module version)
  if(NOT PKG_CONFIG_FOUND)
    docparser_report_missing("pkg-config" "pkg-config" "")
  endif()
  pkg_check_modules(${prefix} QUIET IMPORTED_TARGET ${module}>=${version})
  if(NOT ${prefix}_FOUND)
    execute_process(COMMAND ${PKG_CONFIG_EXECUTABLE} --modversion ${module}
      OUTPUT_VARIABLE found ERROR_QUIET OUTPUT_STRIP_TRAILING_WHITESPACE)
    docparser_report_missing("${module} ${version} or later" "${debian_package}" "${found}")
  endif()
endmacro()

# docparser_require_header(<variable> <Debian package> <header> <what>), for what tells no version
function(docparser_require_header variable debian_package header what)
  find_path(${variable} ${header})
  if(NOT ${variable})
    docparser_report_missing("${what} (${header})" "${debian_package}" "")
  endif()
endfunction()
