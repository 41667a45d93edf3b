#pragma once

namespace ado::sqlite {

/// Makes the embedded database known under "Provider=SQLite".
void registerSqlite();

}  // namespace ado::sqlite
