#pragma once

#include <string>

#include "tsql/Lexer.h"

namespace ado::sqlite {

/// The table a text inserts into, "" when it inserts into none.
std::string insertTarget(const dialect::Scan& scan);

bool hasIdentity(const dialect::Table& table);

}  // namespace ado::sqlite
