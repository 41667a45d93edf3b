#pragma once

#include <map>
#include <string>
#include <string_view>

#include "ado/recordset/Recordset.h"

namespace bukorval {

/// What a copied row gets instead of the source's value: column name to SQL text.
using Sostituzioni = std::map<std::string, std::string>;

/// The statement that copies one row of a table within the table: every column of the record set read from it, but
/// its identity, with the given replacements.
/// @param condizione  selects the row, for example "BU65_ID = 7".
std::string testoCopiaRiga(std::string_view tabella, std::string_view identita, const ado::Recordset& righe,
                           const Sostituzioni& sostituzioni, std::string_view condizione);

}  // namespace bukorval
