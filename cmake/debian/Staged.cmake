# Before the packages are made of what was installed for them: nothing that the compiler says of itself, and the list of
# the shared library's symbols. Those of interface.symbols are promised: packing fails when a later version lacks one. The others are C++,
# which may change with each minor version before 1.0, so that each needs this one.
set(staged ${CPACK_TEMPORARY_INSTALL_DIRECTORY})
file(GLOB_RECURSE program ${staged}/program/usr/bin/*)
file(GLOB_RECURSE library ${staged}/library/*.so.*.*)
file(GLOB_RECURSE archive ${staged}/development/*.a)
execute_process(COMMAND strip --remove-section=.comment --remove-section=.note ${program} ${library}
                COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND strip --strip-debug --enable-deterministic-archives --remove-section=.comment ${archive}
                COMMAND_ERROR_IS_FATAL ANY)

string(REGEX MATCH "^[0-9]+" major ${CPACK_PACKAGE_VERSION})
execute_process(
  COMMAND dpkg-gensymbols -q -c1 -plibbukorval${major} -v${CPACK_PACKAGE_VERSION} -e${library}
          -I${CMAKE_CURRENT_LIST_DIR}/interface.symbols -O${CPACK_BUKORVAL_SYMBOLS}
  COMMAND_ERROR_IS_FATAL ANY)
