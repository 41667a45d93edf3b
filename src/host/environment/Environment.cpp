#include "host/environment/Environment.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <iostream>

#include "ado/connection/ConnectionString.h"
#include "dati/Failure.h"
#include "host/environment/Arguments.h"
#include "host/environment/Errors.h"
#include "host/environment/StandardStreams.h"
#include "host/environment/Terminal.h"
#include "host/environment/UserName.h"
#include "host/output/SafeText.h"
#include "object/Interfaccia.h"
#include "odbc/Provider.h"
#include "sqlite/Provider.h"
#include "suite/Suite.h"
#include "values/Conversion.h"
#include "values/FileName.h"

namespace bukorval::host {

std::string sqliteConnectionString(const std::string& file) {
  // A name that begins with a colon would be no name of a file to the provider.
  return "Provider=SQLite;Data Source=" + ado::connectionValue((file.starts_with(':') ? "./" : "") + file);
}

Environment::Environment() {
  sqlite::registerSqlite();
  odbc::registerOdbc();
  suite::registraServiziSuite();
}

Environment::~Environment() = default;

bool Environment::hasDatabase() const { return !options.database.empty() || !options.connectionString.empty(); }

std::string Environment::connectionString() const {
  if (!hasDatabase()) throw UsageError("Which database? Give -d FILE or set BUKORVAL_DATABASE");
  if (!options.connectionString.empty()) return options.connectionString;
  const auto& file = options.database;
  if (!std::filesystem::exists(values::pathOf(file)))
    throw dati::Refused("There is no database " + file + "; `bukorval create " + file + "` makes one");
  return sqliteConnectionString(file) + ";Busy Timeout=" + std::to_string(options.wait);
}

const ado::ConnectionPtr& Environment::connection() {
  if (connection_) return connection_;
  auto connection = ado::createConnection();
  connection->ConnectionString = connectionString();
  connection->CursorLocation = ado::adUseClient;
  connection->Open();
  connection_ = std::move(connection);
  return connection_;
}

suite::Sessione& Environment::session() {
  if (!session_) {
    const auto company = options.properties.find("CodiceDitta");
    session_ = std::make_shared<suite::Sessione>(
        connection(), company == options.properties.end() ? values::Variant() : parseArgument(company->second));
    session_->messaggiero = [](std::string_view text, int, std::string_view title) {
      std::cerr << safeText(title) << ": " << safeText(text, Lines::Keep) << '\n';
    };
  }
  return *session_;
}

CLSKORVAL& Environment::budget() {
  if (budget_) return *budget_;
  auto budget = std::make_unique<CLSKORVAL>();
  if (hasDatabase()) {
    budget->Connessione(connection());
    session();
    budget->ActiveInterface = session_;
    budget->CodiceDitta = session_->CodiceDitta();
  }
  for (const auto& [name, text] : options.properties) {
    const auto* member = trovaMembro(name);
    member->scrivi(*budget, parseAs(text, member->tipo, member->nome));
  }
  budget_ = std::move(budget);
  completeSelection();
  return *budget_;
}

void Environment::completeSelection() {
  if (!hasDatabase() || budget_->AnnoEsercizio.isNothing() || !budget_->ProgressivoEsercizio.isNothing()) return;
  budget_->ProgressivoEsercizio = budget_->GetProgressivoEsercizio(budget_->CodiceDitta, budget_->AnnoEsercizio);
  requireSuccess();
}

std::optional<dati::Author> Environment::author() const {
  if (options.noHistory) return std::nullopt;
  return dati::Author{userName(), options.commandText};
}

dati::Transaction Environment::transaction() { return {budget(), connection(), author()}; }

void Environment::requireSuccess() { dati::requireSuccess(budget()); }

const Format& Environment::format() const { return findFormat(options.format); }

Style Environment::style() const {
  const char separator = session_ ? session_->SeparatoreDecimale() : values::kDefaultSeparator;
  return {separator, wantsColour(stdout), options.all};
}

void Environment::show(const Table& table) const {
  errno = 0;
  format().write(std::cout, table, style());
  flushOutput();
}

void Environment::show(const CallResults& results) const {
  errno = 0;
  format().writeResults(std::cout, results, style());
  flushOutput();
}

}  // namespace bukorval::host
