#pragma once

#include <string>

#include "ado/Dictionary.h"
#include "frame/Contesto.h"
#include "values/Date.h"

namespace bukorval {

/// The insert of a card header of the selected budget: the given columns in the dictionary's order, an account column
/// with the chart code it belongs to, then what every header has. The company is the session's.
/// Throws for a name that is no column and for a value that its column's type cannot take.
/// @param colonne  BU65_ column names and their values; text is stored as given, blank numbers and Null as NULL.
/// @param adesso   the card's last update.
std::string testoInserimentoTestata(Contesto& ctx, const ado::Dictionary& colonne, const values::Date& adesso);

}  // namespace bukorval
