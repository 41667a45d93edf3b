# Debian packages, one a component: cpack in the build of the preset package. Included at the end.
set(CPACK_GENERATOR DEB)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_PACKAGE_NAME bukorval)
set(CPACK_PACKAGE_CONTACT "bukorval maintainers <maintainers@bukorval.invalid>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

# The date of the package's own changelog is that of the release.
set(date "$ENV{SOURCE_DATE_EPOCH}")
if(NOT date)
  set(date 0)
endif()
execute_process(COMMAND date -u -R -d @${date} OUTPUT_VARIABLE CHANGELOG_DATE OUTPUT_STRIP_TRAILING_WHITESPACE)
configure_file(${PROJECT_SOURCE_DIR}/cmake/debian/changelog.in ${PROJECT_BINARY_DIR}/debian/changelog @ONLY)
execute_process(COMMAND gzip -9nkf ${PROJECT_BINARY_DIR}/debian/changelog)

# bukorval_package(COMPONENT name SECTION section DEPENDS text SUMMARY text DESCRIPTION text)
function(bukorval_package component name)
  cmake_parse_arguments(PACKAGE "" "SECTION;DEPENDS;SUMMARY;DESCRIPTION" "" ${ARGN})
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name} PARENT_SCOPE)
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${PACKAGE_SECTION} PARENT_SCOPE)
  set(CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS "${PACKAGE_DEPENDS}" PARENT_SCOPE)
  set(CPACK_DEBIAN_${upper}_DESCRIPTION "${PACKAGE_SUMMARY}\n${PACKAGE_DESCRIPTION}" PARENT_SCOPE)
  install(FILES ${PROJECT_SOURCE_DIR}/cmake/debian/copyright ${PROJECT_BINARY_DIR}/debian/changelog.gz
          DESTINATION share/doc/${name} COMPONENT ${component})
  list(APPEND CPACK_COMPONENTS_ALL ${component})
  set(CPACK_COMPONENTS_ALL ${CPACK_COMPONENTS_ALL} PARENT_SCOPE)
endfunction()

set(library libbukorval${PROJECT_VERSION_MAJOR})
set(about "The budgets of an accounting suite: cards with budget, actual, order and
forecast values by period, exact to the cent, in an embedded database, on a
PostgreSQL server or behind ODBC.")
# libpq is loaded when a server is met: no tool sees it.
bukorval_package(program bukorval SECTION utils
  DEPENDS libpq5
  SUMMARY "budgets of an accounting suite, on the command line"
  DESCRIPTION "${about}\n\nThis package has the program.")
bukorval_package(library ${library} SECTION libs
  SUMMARY "budgets of an accounting suite, shared library"
  DESCRIPTION "${about}\n\nThis package has the shared library for programs in C and C++.")
bukorval_package(development libbukorval-dev SECTION libdevel
  DEPENDS "${library} (= ${PROJECT_VERSION}), libsqlite3-dev, unixodbc-dev, libpq-dev"
  SUMMARY "budgets of an accounting suite, files for development"
  DESCRIPTION "${about}\n\nThis package has what programs in C and C++ are built with.")
bukorval_package(python python3-bukorval SECTION python
  DEPENDS "${library} (>= ${PROJECT_VERSION}), python3:any"
  SUMMARY "budgets of an accounting suite, for Python"
  DESCRIPTION "${about}\n\nThis package has the package for Python 3.")
install(FILES ${PROJECT_SOURCE_DIR}/cmake/debian/overrides.program
        DESTINATION share/lintian/overrides RENAME bukorval COMPONENT program)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_BUKORVAL_SYMBOLS ${PROJECT_BINARY_DIR}/debian/symbols)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/cmake/debian/triggers ${CPACK_BUKORVAL_SYMBOLS})
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/debian/Staged.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/debian/WithoutLdconfig.cmake)
set(CPACK_DEBIAN_PYTHON_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA
  ${PROJECT_SOURCE_DIR}/cmake/debian/postinst ${PROJECT_SOURCE_DIR}/cmake/debian/prerm)
include(CPack)
