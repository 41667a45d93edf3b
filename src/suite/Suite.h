#pragma once

#include "suite/Servizi.h"
#include "suite/Sessione.h"
#include "values/Export.h"

namespace suite {

/// Registers our own date, arithmetic, accounting-year and accounting-situation services. A host that has
/// services of its own registers them afterwards under the same names.
BUKORVAL_API void registraServiziSuite();

}  // namespace suite
