# Finds libzip by pkg-config, and gives the target PkgConfig::LIBZIP: the CMake package of libzip also asks
# for its programs, which Debian has in another package.
find_package(PkgConfig QUIET)
if(PkgConfig_FOUND)
  pkg_check_modules(LIBZIP QUIET IMPORTED_TARGET libzip)
endif()
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Libzip REQUIRED_VARS LIBZIP_VERSION VERSION_VAR LIBZIP_VERSION)
