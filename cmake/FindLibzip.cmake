# Finds libzip through pkg-config, as the target PkgConfig::LIBZIP. The CMake package of libzip also
# demands its programs, which are in another Debian package.
find_package(PkgConfig QUIET)
if(PkgConfig_FOUND)
  pkg_check_modules(LIBZIP QUIET IMPORTED_TARGET libzip)
endif()
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Libzip REQUIRED_VARS LIBZIP_VERSION VERSION_VAR LIBZIP_VERSION)
