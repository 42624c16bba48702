# All dependencies of the build, and the one error that names those that are missing.
include(FeatureSummary)

# Users of the installed libraries need these versions as well.
set(DOCPARSER_BOOST_VERSION 1.81)
set(DOCPARSER_LIBZIP_VERSION 1.7)

# A project around this one may have looked for packages of its own, which are no concern of ours.
foreach(state FOUND NOT_FOUND)
  get_property(packages_${state}_before GLOBAL PROPERTY PACKAGES_${state})
  set_property(GLOBAL PROPERTY PACKAGES_${state} "")
endforeach()

find_package(Threads REQUIRED)
find_package(Boost ${DOCPARSER_BOOST_VERSION} QUIET COMPONENTS json log)
find_package(ICU 60 QUIET COMPONENTS uc)
find_package(Libzip ${DOCPARSER_LIBZIP_VERSION} QUIET MODULE)
if(DOCPARSER_BUILD_TOOLS)
  find_package(CLI11 2.1 QUIET)
  find_package(fmt 9 QUIET)
endif()
if(DOCPARSER_BUILD_TESTS)
  find_package(GTest 1.12 QUIET)
  find_package(ZLIB 1.2 QUIET)
endif()
if(DOCPARSER_BUILD_TESTS AND DOCPARSER_BUILD_TOOLS)
  find_package(valijson QUIET)
endif()
if(DOCPARSER_BUILD_TESTS OR DOCPARSER_BUILD_BENCHMARKS)
  find_package(Python3 3.9 QUIET COMPONENTS Interpreter)
endif()
if(DOCPARSER_BUILD_BENCHMARKS)
  find_package(benchmark 1.7 QUIET)
  find_package(simdjson 3.0 QUIET)
  find_package(RapidJSON 1.1 QUIET)
  find_package(nlohmann_json 3.11 QUIET)
  find_package(Libdeflate 1.14 QUIET MODULE)
endif()

get_property(sought GLOBAL PROPERTY PACKAGES_NOT_FOUND)
get_property(found GLOBAL PROPERTY PACKAGES_FOUND)
list(APPEND sought ${found})

# Describes each dependency by its Debian packages, and sets DOCPARSER_DEBIAN_<dependency> to them.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/.ci/packages")
file(STRINGS "${PROJECT_SOURCE_DIR}/.ci/packages" lines REGEX "^[^#]")
foreach(line IN LISTS lines)
  if(line MATCHES "^\\[(.+)\\]$")
    set(section "${CMAKE_MATCH_1}")
  elseif(line MATCHES "^([^ ]+): (.+)$")
    string(REPLACE " " ";" DOCPARSER_DEBIAN_${CMAKE_MATCH_1} "${CMAKE_MATCH_2}")
    if(CMAKE_MATCH_1 IN_LIST sought)
      set_package_properties(${CMAKE_MATCH_1} PROPERTIES TYPE REQUIRED
        DESCRIPTION "Debian: ${CMAKE_MATCH_2}" PURPOSE "for the ${section}")
    endif()
  endif()
endforeach()

feature_summary(WHAT REQUIRED_PACKAGES_NOT_FOUND QUIET_ON_EMPTY VAR missing
  DESCRIPTION "docparser needs these, which are missing or too old:")
foreach(state FOUND NOT_FOUND)
  set_property(GLOBAL APPEND PROPERTY PACKAGES_${state} ${packages_${state}_before})
endforeach()
if(missing)
  message(FATAL_ERROR "${missing}\n"
    "Name the prefix of what is installed elsewhere in CMAKE_PREFIX_PATH.")
endif()
