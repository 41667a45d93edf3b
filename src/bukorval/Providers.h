#pragma once

#include "values/Export.h"

namespace bukorval {

/// Makes known every provider that this library was built with ("Provider=SQLite", "ODBC", "PostgreSQL") and the
/// suite's own services. Once, at the start of a program; services of its own are registered afterwards.
BUKORVAL_API void registerAll();

/// The library's version, "0.1.0".
BUKORVAL_API const char* version();

}  // namespace bukorval
