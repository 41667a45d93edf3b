# The library that clients link: every folder up to the object, with the providers, as one shared and one static library,
# and the headers that the public ones need. Included when those folders are there.
include(GNUInstallDirs)

bukorval_folder(bukorval object sqlite odbc suite)
target_compile_definitions(bukorval_bukorval PRIVATE BUKORVAL_VERSION="${PROJECT_VERSION}")
set(engine_find_names "SQLite3 ODBC")
set(engines SQLite::SQLite3 ODBC::ODBC)
set(engine_packages "sqlite3 odbc")
if(BUKORVAL_POSTGRES)
  target_link_libraries(bukorval_bukorval PUBLIC bukorval_postgres)
  target_compile_definitions(bukorval_bukorval PRIVATE BUKORVAL_POSTGRES)
  string(APPEND engine_find_names " PostgreSQL")
  list(APPEND engines PostgreSQL::PostgreSQL)
  string(APPEND engine_packages " libpq")
endif()

# The interface for C; what it tells of the members is taken from the type library's text.
bukorval_folder(capi bukorval)
set(descriptions ${PROJECT_BINARY_DIR}/Descriptions.cpp)
add_custom_command(
  OUTPUT ${descriptions}
  COMMAND ${CMAKE_COMMAND} -DIDL=${PROJECT_SOURCE_DIR}/src/com/bukorval.idl -DOUTPUT=${descriptions}
          -P ${PROJECT_SOURCE_DIR}/src/capi/Descriptions.cmake
  DEPENDS ${PROJECT_SOURCE_DIR}/src/com/bukorval.idl ${PROJECT_SOURCE_DIR}/src/capi/Descriptions.cmake
  VERBATIM)
target_sources(bukorval_capi PRIVATE ${descriptions})
add_custom_target(bukorval_capi_sources DEPENDS ${descriptions})

# Clients include <bukorval/…>: the headers are copied so that they name each other in this way too, and no other folder
# of a client is ever searched for them.
set(public_headers ${PROJECT_BINARY_DIR}/include)
file(GLOB_RECURSE private_headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/*.h)
add_custom_command(
  OUTPUT ${public_headers}/stamp
  COMMAND ${CMAKE_COMMAND} -DSOURCE=${PROJECT_SOURCE_DIR}/src -DOUTPUT=${public_headers}
          -P ${PROJECT_SOURCE_DIR}/cmake/PublicHeaders.cmake
  DEPENDS ${private_headers} ${PROJECT_SOURCE_DIR}/cmake/PublicHeaders.cmake
  VERBATIM)
add_custom_target(bukorval_public_headers DEPENDS ${public_headers}/stamp)

get_property(folders GLOBAL PROPERTY BUKORVAL_FOLDERS)
list(TRANSFORM folders REPLACE "(.+)" "$<TARGET_OBJECTS:\\1>" OUTPUT_VARIABLE objects)
foreach(kind shared static)
  string(TOUPPER ${kind} upper)
  add_library(bukorval_${kind} ${upper} ${objects})
  add_library(bukorval::${kind} ALIAS bukorval_${kind})
  add_dependencies(bukorval_${kind} bukorval_public_headers)
  target_compile_features(bukorval_${kind} PUBLIC cxx_std_20)
  target_include_directories(bukorval_${kind} PUBLIC
    $<BUILD_INTERFACE:${public_headers}> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  target_link_libraries(bukorval_${kind} PRIVATE ${engines})
  set_target_properties(bukorval_${kind} PROPERTIES
    OUTPUT_NAME bukorval EXPORT_NAME ${kind} LINKER_LANGUAGE CXX
    VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
  if(BUKORVAL_SANITIZE)
    target_link_options(bukorval_${kind} PUBLIC -fsanitize=address,undefined)
  endif()
endforeach()
if(NOT WIN32)
  target_link_options(bukorval_shared PRIVATE -Wl,--no-undefined)
endif()
if(BUILD_SHARED_LIBS OR (PROJECT_IS_TOP_LEVEL AND NOT DEFINED BUILD_SHARED_LIBS))
  add_library(bukorval::bukorval ALIAS bukorval_shared)
else()
  add_library(bukorval::bukorval ALIAS bukorval_static)
endif()
if(NOT PROJECT_IS_TOP_LEVEL)
  # Only the one that is used.
  set_target_properties(bukorval_shared bukorval_static PROPERTIES EXCLUDE_FROM_ALL ON)
endif()

if(BUKORVAL_INSTALL AND NOT WIN32)
  include(CMakePackageConfigHelpers)
  set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/bukorval)
  configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/bukorvalConfig.cmake.in
    ${PROJECT_BINARY_DIR}/bukorvalConfig.cmake INSTALL_DESTINATION ${package_folder})
  write_basic_package_version_file(${PROJECT_BINARY_DIR}/bukorvalConfigVersion.cmake COMPATIBILITY SameMinorVersion)
  # The package file finds its folders from where it stands.
  file(RELATIVE_PATH package_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/bukorval.pc.in ${PROJECT_BINARY_DIR}/bukorval.pc @ONLY)

  install(DIRECTORY ${public_headers}/bukorval DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
  install(FILES ${PROJECT_BINARY_DIR}/bukorval.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
  install(FILES ${PROJECT_BINARY_DIR}/bukorvalConfig.cmake ${PROJECT_BINARY_DIR}/bukorvalConfigVersion.cmake
          DESTINATION ${package_folder} COMPONENT development)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/python/bukorval DESTINATION lib/python3/dist-packages COMPONENT python
          FILES_MATCHING PATTERN *.py)
  foreach(kind shared static)
    install(TARGETS bukorval_${kind} EXPORT bukorval_${kind}
            LIBRARY COMPONENT library NAMELINK_COMPONENT development
            ARCHIVE COMPONENT development)
    install(EXPORT bukorval_${kind} NAMESPACE bukorval:: FILE ${kind}.cmake
            DESTINATION ${package_folder} COMPONENT development)
  endforeach()
endif()
