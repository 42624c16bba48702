# Finds libdeflate through pkg-config, as the target PkgConfig::LIBDEFLATE.
find_package(PkgConfig QUIET)
if(PkgConfig_FOUND)
  pkg_check_modules(LIBDEFLATE QUIET IMPORTED_TARGET libdeflate)
endif()
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Libdeflate
  REQUIRED_VARS LIBDEFLATE_VERSION VERSION_VAR LIBDEFLATE_VERSION)
