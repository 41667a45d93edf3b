# Writes what the program says of its build: run at every build, so that the commit is the one that was built. A file
# that stays the same is left alone. Needs SOURCE, OUTPUT, VERSION, KIND.

execute_process(COMMAND git -C ${SOURCE} describe --always --abbrev=12 --dirty --exclude=* OUTPUT_VARIABLE commit
                OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
set(BUILD "${KIND}")
# A folder of sources inside somebody else's checkout has no commit of its own.
if(commit AND EXISTS ${SOURCE}/.git)
  set(BUILD "${commit}, ${KIND}")
endif()
configure_file(${SOURCE}/src/host/Version.cpp.in ${OUTPUT} @ONLY)
