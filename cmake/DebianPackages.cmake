# Debian packages, made by CPack: the runtime libraries, the files for developers, and the client.
set(runtime_package "libdocparser${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME reference-docparser)
set(CPACK_PACKAGE_VENDOR "The docparser authors")
set(CPACK_PACKAGE_CONTACT "The docparser authors <docparser@reference.example>")
set(CPACK_PACKAGING_INSTALL_PREFIX "${CMAKE_INSTALL_PREFIX}")
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime development client)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_BINARY_DIR}/src")
# The first line of each description is its summary.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME "${runtime_package}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA "${PROJECT_SOURCE_DIR}/packaging/triggers")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
  "reader of reference documentation - runtime library
Reads the reference documentation of installed products: JSON resource
files, plain or in zip packages, English with localized variants laid over
it, merged by product.

This package contains the shared libraries that programs use.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libdocparser-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
# pkg-config also looks for the modules in Requires.private.
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${runtime_package} (= ${PROJECT_VERSION}-1)"
  ${DOCPARSER_DEBIAN_Boost} ${DOCPARSER_DEBIAN_ICU} ${DOCPARSER_DEBIAN_Libzip})
list(JOIN CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS ", " CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
  "reader of reference documentation - development files
Reads the reference documentation of installed products: JSON resource
files, plain or in zip packages, English with localized variants laid over
it, merged by product.

This package contains the headers, and the files for CMake and pkg-config.")

set(CPACK_DEBIAN_CLIENT_PACKAGE_NAME refdoc)
set(CPACK_DEBIAN_CLIENT_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_CLIENT_PACKAGE_DEPENDS "${runtime_package} (>= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_CLIENT_DESCRIPTION
  "command-line client for reference documentation
Finds names in the reference documentation of installed products, shows
entries like manual pages, and reports to authors of documentation why a
page does not show up.")

# Installs the documents that Debian expects in every package.
function(docparser_package_documents component package)
  set(folder "${CMAKE_INSTALL_DATADIR}/doc/${package}")
  install(FILES "${CMAKE_CURRENT_BINARY_DIR}/packaging/copyright"
    "${CMAKE_CURRENT_BINARY_DIR}/packaging/changelog.Debian.gz"
    DESTINATION "${folder}" COMPONENT ${component})
endfunction()

find_program(GZIP gzip REQUIRED)
configure_file(packaging/copyright "${CMAKE_CURRENT_BINARY_DIR}/packaging/copyright" COPYONLY)
configure_file(packaging/changelog.in "${CMAKE_CURRENT_BINARY_DIR}/packaging/changelog.Debian" @ONLY)
execute_process(COMMAND ${GZIP} -9nkf "${CMAKE_CURRENT_BINARY_DIR}/packaging/changelog.Debian"
  COMMAND_ERROR_IS_FATAL ANY)
docparser_package_documents(runtime "${runtime_package}")
docparser_package_documents(development libdocparser-dev)
docparser_package_documents(client refdoc)

include(CPack)
