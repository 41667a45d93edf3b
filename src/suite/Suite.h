#pragma once

#include "suite/Servizi.h"
#include "suite/Sessione.h"

namespace suite {

/// Registers our own date, arithmetic, accounting-year and accounting-situation services. A host that has
/// services of its own registers them afterwards under the same names.
void registraServiziSuite();

}  // namespace suite
