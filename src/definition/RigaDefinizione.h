#pragma once

#include <string>

#include "frame/Contesto.h"

namespace bukorval {

/// The row of a budget's definition for those who answer one question from it; no rows when there is no such budget.
/// Asked by the client, a question sends its own statement; inside an operation the first one reads the whole
/// row, and the others look at it.
/// @param sola  the question's own statement. @param tipo, sottoTipo  ready to be spliced.
/// Reads BU01_ANABUDGET.
ado::RecordsetPtr rigaDefinizione(Contesto& ctx, const std::string& sola, const std::string& tipo,
                                  const std::string& sottoTipo);

}  // namespace bukorval
