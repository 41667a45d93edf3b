#pragma once

#include <sqlite3.h>

#include <optional>
#include <vector>

#include "engine/LiteralConversion.h"
#include "sqlite/emitter/Translate.h"

namespace sqlite {

/// Gives the parameters of a prepared statement their values. Texts are not copied: the literals must outlive the
/// execution. Throws values::Errore in SQL Server's words for a value its column cannot take.
void bindLiterals(sqlite3_stmt* statement, const std::vector<Binding>& bindings,
                  const std::vector<tsql::Literal>& literals);

/// Gives one parameter, counted from 1, its value; nothing is NULL. What a view shows must outlive the execution.
void bindValue(sqlite3_stmt* statement, int index, const std::optional<engine::BoundValue>& value);

}  // namespace sqlite
