# What is installed: the two libraries, their headers under one private include folder, and the
# CMake package and the pkg-config module `reference-docparser`. The components are `runtime`,
# `development` and, if the tools are built, `client`.
include(CMakePackageConfigHelpers)

set(private_include_root "${CMAKE_INSTALL_INCLUDEDIR}/reference-docparser")
set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/reference-docparser")

set_target_properties(docparser PROPERTIES
  INSTALL_RPATH "${DOCPARSER_ORIGIN}")

install(TARGETS environment docparser EXPORT reference-docparser-targets
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
    COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development
  INCLUDES DESTINATION "${private_include_root}")
install(DIRECTORY include/reference DESTINATION "${private_include_root}" COMPONENT development)
install(DIRECTORY src/environment DESTINATION "${private_include_root}" COMPONENT development
  FILES_MATCHING PATTERN "*.hpp" PATTERN local EXCLUDE)

install(EXPORT reference-docparser-targets NAMESPACE reference::
  DESTINATION "${package_dir}" COMPONENT development)
get_target_property(library_type docparser TYPE)
configure_package_config_file(cmake/reference-docparser-config.cmake.in
  "${CMAKE_CURRENT_BINARY_DIR}/reference-docparser-config.cmake"
  INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file(
  "${CMAKE_CURRENT_BINARY_DIR}/reference-docparser-config-version.cmake"
  COMPATIBILITY SameMinorVersion)
install(FILES
  "${CMAKE_CURRENT_BINARY_DIR}/reference-docparser-config.cmake"
  "${CMAKE_CURRENT_BINARY_DIR}/reference-docparser-config-version.cmake"
  DESTINATION "${package_dir}" COMPONENT development)
if(library_type STREQUAL "STATIC_LIBRARY")
  install(FILES cmake/FindLibzip.cmake DESTINATION "${package_dir}" COMPONENT development)
endif()

# The module derives all its paths from its own place, so that the installed files can be moved.
set(pkgconfig_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX
  BASE_DIRECTORY "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" OUTPUT_VARIABLE prefix_from_pkgconfig)
cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_LIBDIR
  BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}" OUTPUT_VARIABLE libdir_from_prefix)
cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_INCLUDEDIR
  BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}" OUTPUT_VARIABLE includedir_from_prefix)
configure_file(cmake/reference-docparser.pc.in
  "${CMAKE_CURRENT_BINARY_DIR}/reference-docparser.pc" @ONLY)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/reference-docparser.pc"
  DESTINATION "${pkgconfig_dir}" COMPONENT development)
