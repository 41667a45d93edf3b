#pragma once

// The driver manager's calls; on Windows they need the system's types first.
#ifdef _WIN32
#include <windows.h>
#endif

#include <sql.h>
#include <sqlext.h>
