#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ado/connection/Connection.h"
#include "dati/History.h"
#include "dati/Ledger.h"
#include "dati/import/Batches.h"
#include "dati/import/CardCodes.h"
#include "dati/import/CodeSet.h"
#include "dati/import/CsvModel.h"
#include "dati/import/FileKinds.h"
#include "dati/import/Problems.h"
#include "object/CLSKORVAL.h"
#include "suite/ActiveInterface.h"

namespace bukorval::dati {

/// How files are imported.
struct ImportOptions {
  std::string encoding{encodings().front()};  ///< of every file, one of encodings()
  bool replace = false;                       ///< registrations whose numbers are taken replace those
  std::string batch;                          ///< the name by which the movements can be removed again, "" for none
  std::optional<Author> author = {};          ///< for the history of what is written into cards
  ImportProgress* progress = nullptr;         ///< told of the long steps, if anybody asks
};

/// What the files of one import share while they are checked and then written.
class ImportContext {
 public:
  ImportContext(ado::ConnectionPtr connection, const suite::ActiveInterface& session,
                std::function<CLSKORVAL&()> budget, ImportOptions options);

  /// Reads one file in the way of this import.
  CsvBatch read(const std::string& file, const CsvModel& model);
  /// One that is not held.
  CsvFile open(const std::string& file, const CsvModel& model) const {
    return {file, model, {options.encoding, options.progress}};
  }
  /// In the database, or brought by this import. After a file of accounts (sites) that could not be understood every
  /// account (site) may be.
  bool hasAccount(const values::Variant& account);
  bool hasSite(const values::Variant& site);

  ado::ConnectionPtr connection;
  std::function<CLSKORVAL&()> budget;  ///< the object, which only some files need
  ImportOptions options;
  values::Variant company, chart;
  std::vector<int> accountLevels;  ///< characters of each level of an account code
  Ledger ledger;
  Batches batches;
  Problems problems;
  CodeSet accounts, sites;  ///< what this import brings
  std::vector<BroughtCode> codes;
  bool accountsUnderstood = true, sitesUnderstood = true;

 private:
  std::optional<CodeSet> knownAccounts_, knownSites_;  ///< in the database, once asked for
};

/// An import of files: each is read and checked first, then all are written, or none.
///
///   Import import(connection, session, [&]() -> CLSKORVAL& { return budget; });
///   for (const auto& kind : fileKinds()) import.read(kind, file);
///   if (import.problems().count() == 0) import.write();
class Import {
 public:
  /// @param budget  the object, asked for when a file needs it.
  /// Refused when there is an import of the name that the options give.
  Import(ado::ConnectionPtr connection, const suite::ActiveInterface& session, std::function<CLSKORVAL&()> budget,
         ImportOptions options = {});
  ~Import();

  /// Throws Refused when the file cannot be opened; what is wrong inside goes to the problems. Writes nothing.
  void read(const FileKind& kind, const std::string& file);
  bool empty() const { return files_.empty(); }
  const Problems& problems() const { return context_.problems; }
  /// Writes what was read in one transaction, file after file in the order in which they were read. Refused when
  /// there are problems, or another run has meanwhile made an import of this name.
  /// @param look  what else must hold, asked inside the transaction before anything is written: throws when it does
  /// not.
  /// @return what was written, in words: "12 accounts".
  std::vector<std::string> write(const std::function<void()>& look = {});

 private:
  void refuseTakenName() const;

  ImportContext context_;
  std::vector<std::unique_ptr<FileImporter>> files_;
};

/// "12 accounts", "1 account".
std::string counted(std::size_t number, const std::string& noun);

}  // namespace bukorval::dati
