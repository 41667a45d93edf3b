#pragma once

#include <libpq-fe.h>

#include <string>

/// Who writes into a database on a server goes one after the other, in the order in which they came, as on a file: a
/// long run is not undone by short ones that change what it has read. Readers do not wait, nor does a client that knows
/// nothing of the queue. The turn is an advisory lock of the transaction, so the server ends it with the transaction,
/// however that ends.
namespace postgres {

/// The statement that takes the turn of the transaction in which it runs; it gives no column.
std::string takeTurn();

/// Waits for the turn, then begins a transaction, whose snapshot is taken behind the wait. Throws values::Errore when
/// the wait is too long.
/// @param begin  the statement that begins the transaction. @param then  another, its first.
void beginInTurn(PGconn* server, const std::string& begin, const std::string& then);

/// The statement that says how long a session waits for others, whatever they hold. @param seconds  0 is not at all.
std::string waitSetting(int seconds);

/// Who has the turn, for one who has waited in vain; "" when nobody else has it.
std::string describeTurn(PGconn* server);

}  // namespace postgres
