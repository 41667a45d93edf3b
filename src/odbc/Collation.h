#pragma once

#include <functional>
#include <string_view>

#include "ado/recordset/Recordset.h"

namespace odbc {

/// Runs a query on a connection.
using Ask = std::function<ado::RecordsetPtr(std::string_view)>;

/// Asks a server how it compares texts. Codes are equal without regard to case and blanks at their end, and accents
/// count: a database that has it otherwise would find other cards, so values::Errore refuses it.
/// @return false for a server that does not know the question.
bool requireCollation(const Ask& ask);

}  // namespace odbc
