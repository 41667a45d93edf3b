#pragma once

namespace postgres {

/// Makes PostgreSQL known under "Provider=PostgreSQL".
void registerPostgres();

}  // namespace postgres
