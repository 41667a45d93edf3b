#include "host/environment/Environment.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <sstream>

#include "ado/connection/ConnectionString.h"
#include "bukorval/Providers.h"
#include "dati/Failure.h"
#include "host/environment/Arguments.h"
#include "host/environment/Errors.h"
#include "host/environment/Pager.h"
#include "host/environment/StandardStreams.h"
#include "host/environment/Terminal.h"
#include "host/environment/UserName.h"
#include "language/Language.h"
#include "object/Interfaccia.h"
#include "values/Conversion.h"
#include "values/FileName.h"
#include "values/Text.h"

namespace bukorval::host {
namespace {

/// A driver's words are its own.
std::string patient(std::string connection, int seconds) {
  const auto provider = ado::connectionEntry(connection, "Provider");
  const bool ours = !provider.empty() && values::compareText(provider, "ODBC") != 0;
  if (!ours || !ado::connectionEntry(connection, "Busy Timeout").empty()) return connection;
  return "Busy Timeout=" + std::to_string(seconds) + ";" + connection;
}

}  // namespace

std::string sqliteConnectionString(const std::string& file) {
  // A name that begins with a colon would be no name of a file to the provider.
  return "Provider=SQLite;Data Source=" + ado::connectionValue((file.starts_with(':') ? "./" : "") + file);
}

Environment::Environment() { registerAll(); }

Environment::~Environment() = default;

std::string Environment::serverConnection() const {
  if (!options.connectionString.empty()) return options.connectionString;
  const char* usual = std::getenv("BUKORVAL_CONNECTION");
  return options.database.empty() && usual ? usual : "";
}

bool Environment::hasDatabase() const { return !options.database.empty() || !serverConnection().empty(); }

std::string Environment::connectionString() const {
  if (!hasDatabase())
    throw UsageError(
        tr("Which database? Give -d FILE or --connection, or set BUKORVAL_DATABASE or BUKORVAL_CONNECTION"));
  if (auto server = serverConnection(); !server.empty()) return patient(std::move(server), options.wait);
  const auto& file = options.database;
  if (!std::filesystem::exists(values::pathOf(file)))
    throw dati::Refused(tr("There is no database {}; `bukorval create {}` makes one", file, file));
  return sqliteConnectionString(file) + ";Busy Timeout=" + std::to_string(options.wait);
}

const ado::ConnectionPtr& Environment::connection() {
  if (connection_) return connection_;
  auto connection = ado::createConnection();
  connection->ConnectionString = connectionString();
  connection->CursorLocation = ado::adUseClient;
  // What a command has looked at in its transaction holds until its end, as for the object's own connections.
  connection->IsolationLevel = ado::adXactSerializable;
  connection->Open();
  connection_ = std::move(connection);
  return connection_;
}

suite::Sessione& Environment::session() {
  if (!session_) {
    const auto company = options.properties.find("CodiceDitta");
    session_ = std::make_shared<suite::Sessione>(
        connection(), company == options.properties.end() ? values::Variant() : parseArgument(company->second));
    session_->messaggiero = [this](std::string_view text, int, std::string_view title) {
      tell(std::string(title) + ": " + std::string(text), Lines::Keep);
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

std::string Environment::user() const { return options.user.empty() ? userName() : options.user; }

std::optional<dati::Author> Environment::author() const {
  if (options.noHistory) return std::nullopt;
  return dati::Author{user(), options.commandText};
}

dati::Transaction Environment::transaction() {
  noteWritten();
  return {budget(), connection(), author()};
}

void Environment::requireSuccess() { dati::requireSuccess(budget()); }

const Format& Environment::format() const { return findFormat(options.format); }

Style Environment::style() const {
  const char separator = session_ ? session_->SeparatoreDecimale() : values::kDefaultSeparator;
  const bool fitted = isTerminal(stdout) && !options.wide && !options.all;
  return {separator, wantsColour(stdout), options.all, fitted ? screen().columns : 0};
}

CallResults Environment::chosen(const CallResults& results) const {
  const auto names = split(options.fields);
  std::string there;
  for (const auto& [name, table] : results.tables)
    for (const auto& column : table.columns) there.append(there.empty() ? "" : ", ").append(column.name);
  for (const auto& name : names) {
    if (std::ranges::any_of(results.tables, [&](const auto& each) { return each.second.positionOf(name).has_value(); }))
      continue;
    const auto problem = tr("There is no column {}, only {}", name, there);
    if (!written_) throw UsageError(problem);
    tell(problem);
    return results;
  }
  CallResults chosen{results.values, {}};
  for (const auto& [name, table] : results.tables)
    if (auto some = table.with(names); !some.columns.empty()) chosen.tables.emplace_back(name, std::move(some));
  return chosen;
}

template <class Shown>
void Environment::showAll(const Shown& shown, void (*write)(std::ostream&, const Shown&, const Style&)) const {
  if (sink_)
    sink_->show(shown);
  else
    print(shown, write);
}

template <class Shown>
void Environment::print(const Shown& shown, void (*write)(std::ostream&, const Shown&, const Style&)) const {
  if (!isTerminal(stdout)) {
    errno = 0;
    write(std::cout, shown, style());
  } else {
    std::ostringstream text;
    write(text, shown, style());
    errno = 0;
    writePaged(text.str(), !options.noPager);
  }
  flushOutput();
}

void Environment::show(const Table& table) const {
  if (!options.fields.empty()) return showAll(chosen({{}, {{"", table}}}).tables.front().second, format().write);
  showAll(table, format().write);
}

void Environment::show(const CallResults& results) const {
  showAll(options.fields.empty() ? results : chosen(results), format().writeResults);
}

void Environment::tell(std::string_view text, Lines lines) const {
  if (sink_) return sink_->tell(text);
  std::cerr << safeText(text, lines) << '\n';
}

void Environment::confirm(std::string_view question, bool yes) const {
  if (sink_ && !yes) throw Unanswered(std::string(question));
  host::confirm(question, yes);
}

}  // namespace bukorval::host
