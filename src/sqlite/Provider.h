#pragma once

namespace sqlite {

/// Makes the embedded database known under "Provider=SQLite".
void registerSqlite();

}  // namespace sqlite
