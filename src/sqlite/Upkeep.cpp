#include "sqlite/Upkeep.h"

#include <filesystem>

#include "ado/connection/ConnectionString.h"
#include "sqlite/ConnectionWords.h"
#include "sqlite/Handle.h"
#include "sqlite/NewFile.h"
#include "sqlite/file/LockHolder.h"
#include "sqlite/functions/Functions.h"
#include "values/Errore.h"
#include "values/FileName.h"
#include "values/Text.h"

namespace sqlite {
namespace {

using values::Errore;

struct CloseBackup {
  void operator()(sqlite3_backup* backup) const { sqlite3_backup_finish(backup); }
};

template <class Step>
auto naming(const std::string& file, Step step) try {
  return step();
} catch (const Errore& error) {
  throw Errore("'" + file + "': " + error.what());
}

Database openAsAsked(const ConnectionWords& words) {
  return naming(words.file.file, [&] {
    auto database = openFile(words.file);
    sqlite3_busy_timeout(database.get(), words.busyTimeout * 1000);
    registerFunctions(database.get());
    return database;
  });
}

/// All pages in one step, so that nobody's commit comes between two of them.
void copyPages(sqlite3* to, sqlite3* from) {
  std::unique_ptr<sqlite3_backup, CloseBackup> backup(sqlite3_backup_init(to, "main", from, "main"));
  if (!backup) throwFailure(to);
  const int outcome = sqlite3_backup_step(backup.get(), -1);
  backup.reset();
  if (outcome == SQLITE_DONE) return;
  if (sqlite3_errcode(to) == SQLITE_OK) throw Errore(sqlite3_errstr(outcome));
  throwFailure(to);
}

std::vector<std::string> damageOf(sqlite3* database) try {
  const auto check = prepare(database, "PRAGMA integrity_check");
  std::vector<std::string> damage;
  int outcome = sqlite3_step(check.get());
  for (; outcome == SQLITE_ROW; outcome = sqlite3_step(check.get()))
    damage.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(check.get(), 0)));
  if (outcome != SQLITE_DONE) throwFailure(database);
  if (damage.size() == 1 && damage.front() == "ok") damage.clear();
  return damage;
} catch (const Errore& error) {
  return {error.what()};
}

/// Leaves the log, which only the one connection to a file can do: its changes are in the file then, and nothing of it
/// remains beside the new contents.
void leaveLog(sqlite3* database, const std::string& file) {
  const auto leave = prepare(database, "PRAGMA journal_mode = DELETE");
  const int outcome = sqlite3_step(leave.get());
  if (outcome == SQLITE_ROW) return;
  if ((outcome & 0xff) != SQLITE_BUSY)
    throw Errore(describeFailure(database) + "; move it and its " + kCompanions[0] + " file away to restore it anew");
  const auto user = lockHolder(values::nameOf(std::filesystem::canonical(values::pathOf(file))), Holding::Open);
  throw Errore("The database is open in " + (user.empty() ? "another program" : user) + " and is left as it is");
}

}  // namespace

bool isEmbedded(const std::string& connectionString) {
  return values::compareText(ado::connectionEntry(connectionString, "Provider"), "SQLite") == 0;
}

void copyDatabase(const std::string& connectionString, const std::string& emptyFile) {
  const auto from = openAsAsked(wordsOf(connectionString));
  const auto to = open(emptyFile, SQLITE_OPEN_READWRITE);
  // It is brought to the disk when it gets its name; until then nobody misses it.
  run(to.get(), "PRAGMA synchronous = OFF");
  run(to.get(), "PRAGMA journal_mode = OFF");
  copyPages(to.get(), from.get());
}

void replaceDatabase(const std::string& connectionString, const std::string& from) {
  const auto words = wordsOf(connectionString);
  const auto other = wordsOf(from);
  const auto source = openAsAsked(other);
  if (const auto damage = damageOf(source.get()); !damage.empty())
    throw Errore("Nothing was restored from '" + other.file.file + "': " + damage.front());
  const auto database = openAsAsked(words);
  naming(words.file.file, [&] {
    if (std::filesystem::equivalent(values::pathOf(words.file.file), values::pathOf(other.file.file)))
      throw Errore("It is the same file");
    leaveLog(database.get(), words.file.file);
    copyPages(database.get(), source.get());
  });
}

std::vector<std::string> findDamage(const std::string& connectionString) {
  return damageOf(openAsAsked(wordsOf(connectionString)).get());
}

}  // namespace sqlite
