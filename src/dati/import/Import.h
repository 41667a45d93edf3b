#pragma once

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "ado/connection/Connection.h"
#include "dati/Ledger.h"
#include "dati/import/FileKinds.h"
#include "dati/import/Problems.h"
#include "object/CLSKORVAL.h"
#include "suite/ActiveInterface.h"

namespace bukorval::dati {

/// What the files of one import share while they are checked and then written.
class ImportContext {
 public:
  ImportContext(ado::ConnectionPtr connection, const suite::ActiveInterface& session,
                std::function<CLSKORVAL&()> budget);

  /// In the database, or brought by this import.
  bool hasAccount(const std::string& account);
  bool hasSite(const values::Variant& site);

  ado::ConnectionPtr connection;
  std::function<CLSKORVAL&()> budget;  ///< the object, which only some files need
  Ledger ledger;
  Problems problems;
  std::set<std::string> accounts;  ///< accounts that this import brings
  std::set<int> sites;             ///< and sites

 private:
  std::set<std::string> knownAccounts_;  ///< found in the database already
  std::set<int> knownSites_;
};

/// An import of files: each is read and checked first, then all are written, or none.
///
///   Import import(connection, session, [&]() -> CLSKORVAL& { return budget; });
///   for (const auto& kind : fileKinds()) import.read(kind, file);
///   if (import.problems().count() == 0) import.write();
class Import {
 public:
  /// @param budget  the object, asked for when a file needs it.
  Import(ado::ConnectionPtr connection, const suite::ActiveInterface& session, std::function<CLSKORVAL&()> budget);
  ~Import();

  /// Throws Refused when the file cannot be opened; what is wrong inside goes to the problems. Writes nothing.
  void read(const FileKind& kind, const std::string& file);
  bool empty() const { return files_.empty(); }
  const Problems& problems() const { return context_.problems; }
  /// Writes what was read in one transaction, file after file in the order in which they were read. Refused when
  /// there are problems.
  /// @return what was written, in words: "12 accounts".
  std::vector<std::string> write();

 private:
  ImportContext context_;
  std::vector<std::unique_ptr<FileImporter>> files_;
};

/// "12 accounts", "1 account".
std::string counted(std::size_t number, const std::string& noun);

}  // namespace bukorval::dati
