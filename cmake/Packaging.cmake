# The install tree: two libraries, their headers under one private include root, and the CMake
# package `reference-docparser`.
include(CMakePackageConfigHelpers)

set(private_include_root "${CMAKE_INSTALL_INCLUDEDIR}/reference-docparser")
set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/reference-docparser")

set_target_properties(docparser PROPERTIES
  INSTALL_RPATH "$<IF:$<PLATFORM_ID:Darwin>,@loader_path,$ORIGIN>")

install(TARGETS environment docparser EXPORT reference-docparser-targets
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  INCLUDES DESTINATION "${private_include_root}")
install(DIRECTORY include/reference DESTINATION "${private_include_root}")
install(DIRECTORY src/environment DESTINATION "${private_include_root}"
  FILES_MATCHING PATTERN "*.hpp" PATTERN local EXCLUDE)

install(EXPORT reference-docparser-targets NAMESPACE reference:: DESTINATION "${package_dir}")
configure_package_config_file(cmake/reference-docparser-config.cmake.in
  "${CMAKE_CURRENT_BINARY_DIR}/reference-docparser-config.cmake"
  INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file(
  "${CMAKE_CURRENT_BINARY_DIR}/reference-docparser-config-version.cmake"
  COMPATIBILITY SameMinorVersion)
install(FILES
  "${CMAKE_CURRENT_BINARY_DIR}/reference-docparser-config.cmake"
  "${CMAKE_CURRENT_BINARY_DIR}/reference-docparser-config-version.cmake"
  DESTINATION "${package_dir}")
