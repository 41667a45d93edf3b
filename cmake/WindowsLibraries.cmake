# The libraries of a build for Windows. The engine and the test framework are built from their sources, the header-only
# ones are the machine's own. ODBC is the system's.
enable_language(C RC)
# No other library than the system's is needed where the programs run.
add_link_options(-static)
# The same sources give the same bytes.
add_link_options(-Wl,--no-insert-timestamp)

set(BUKORVAL_SQLITE_SOURCE ${PROJECT_SOURCE_DIR}/build/sqlite-source CACHE PATH "Folder of sqlite3.c and sqlite3.h")
add_library(bukorval_sqlite3 STATIC ${BUKORVAL_SQLITE_SOURCE}/sqlite3.c)
target_include_directories(bukorval_sqlite3 SYSTEM PUBLIC ${BUKORVAL_SQLITE_SOURCE})
target_compile_definitions(bukorval_sqlite3 PRIVATE SQLITE_ENABLE_COLUMN_METADATA SQLITE_ENABLE_SESSION
  SQLITE_ENABLE_PREUPDATE_HOOK SQLITE_MAX_VARIABLE_NUMBER=250000)
target_compile_options(bukorval_sqlite3 PRIVATE -O1 -w)
add_library(SQLite::SQLite3 ALIAS bukorval_sqlite3)

add_library(ODBC::ODBC INTERFACE IMPORTED)
target_link_libraries(ODBC::ODBC INTERFACE odbc32)

# Only these folders of the machine's own headers: the rest of them is not for this system.
function(bukorval_headers target folder)
  file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/headers)
  file(CREATE_LINK /usr/include/${folder} ${PROJECT_BINARY_DIR}/headers/${folder} SYMBOLIC)
  add_library(${target} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${target} SYSTEM INTERFACE ${PROJECT_BINARY_DIR}/headers)
endfunction()
bukorval_headers(CLI11::CLI11 CLI)
bukorval_headers(nlohmann_json::nlohmann_json nlohmann)

set(CMAKE_POLICY_DEFAULT_CMP0077 NEW)
set(gtest_force_shared_crt ON)
set(INSTALL_GTEST OFF)
add_subdirectory(/usr/src/googletest ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
