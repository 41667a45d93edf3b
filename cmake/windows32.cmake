# The same for 32 bits.
set(windows_cpu i686)
include(${CMAKE_CURRENT_LIST_DIR}/windows.cmake)
