#pragma once

#include <map>
#include <memory>
#include <string>

#include "host/output/Formats.h"
#include "host/output/Table.h"
#include "object/CLSKORVAL.h"

namespace suite {
class Sessione;
}

namespace bukorval::host {

/// What the shared options hold.
struct Scelte {
  std::string database;     ///< file of the embedded database
  std::string connessione;  ///< a whole connection string, instead of a file
  std::string formato = "table";
  bool tutte = false;                            ///< show empty columns too
  std::map<std::string, std::string> proprieta;  ///< the object's properties as given, by name
};

/// What a command works with: the connection, the session and the object, made on first use from the shared
/// options.
class Ambiente {
 public:
  Ambiente();
  ~Ambiente();
  Ambiente(const Ambiente&) = delete;
  Ambiente& operator=(const Ambiente&) = delete;

  Scelte scelte;

  bool haDatabase() const;
  /// Throws Rifiuto when there is no such database: only `create` makes one.
  const ado::ConnectionPtr& connessione();
  suite::Sessione& sessione();
  /// The object on that connection and session, with the properties given on the command line; company and
  /// progressive default to the session's company and the year's own progressive. Without a database the
  /// object stands alone: what needs one is refused by the object itself.
  CLSKORVAL& oggetto();
  /// Ends the command with the object's outcome when its last operation did not succeed.
  void controlla();

  /// Writes a table to standard output in the chosen format.
  void mostra(const Tabella& tabella);

 private:
  void completaSelezione();

  ado::ConnectionPtr connessione_;
  std::shared_ptr<suite::Sessione> sessione_;
  std::unique_ptr<CLSKORVAL> oggetto_;
};

/// "Provider=SQLite;Data Source=FILE".
std::string stringaSqlite(const std::string& file);

}  // namespace bukorval::host
