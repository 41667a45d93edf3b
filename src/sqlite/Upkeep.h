#pragma once

#include <string>
#include <vector>

/// Care of a database as a file. Only an embedded engine offers it: a server's databases are cared for by the server.
/// Connection strings are those of SqliteConnection; failures throw values::Errore.
namespace sqlite {

/// The string is meant for this provider.
bool isEmbedded(const std::string& connectionString);

/// Copies a database, as its last commit left it, into a file that is empty (NewFile). Others may go on reading and
/// writing meanwhile.
void copyDatabase(const std::string& connectionString, const std::string& emptyFile);

/// Replaces everything in a database by what another one holds, in one transaction: a run that fails or is killed
/// leaves the old contents. Refused while anybody else has the database open, and when the other one is damaged.
/// @param from  the connection string of the other one.
void replaceDatabase(const std::string& connectionString, const std::string& from);

/// What the engine finds damaged, in its own words; nothing when the database is whole.
std::vector<std::string> findDamage(const std::string& connectionString);

}  // namespace sqlite
