#pragma once

#include "ado/recordset/Recordset.h"

namespace bukorval {

/// Adds the rows of a result to a grid: each field of the result goes to the grid field of its name, converted to
/// that field's type. Throws for a field that the grid lacks and for a value that its field cannot hold; the rows
/// before it stay. Both sets end on their first row.
void copiaRighe(ado::Recordset& risultato, ado::Recordset& griglia);

}  // namespace bukorval
