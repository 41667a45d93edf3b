#pragma once

#include <memory>
#include <set>
#include <span>
#include <string>
#include <string_view>

#include "dati/Ledger.h"
#include "dati/import/CsvModel.h"
#include "dati/import/Problems.h"
#include "host/Environment.h"

namespace bukorval::host {

/// What the files of one import share while they are checked and then written.
struct Importazione {
  explicit Importazione(Ambiente& a);

  Ambiente& ambiente;
  Archivio archivio;
  char separatore;
  Segnalazioni segnalazioni;
  std::set<std::string> conti;  ///< accounts that this import brings
  std::set<int> sedi;           ///< and sites

  bool haConto(const std::string& conto);
  bool haSede(const values::Variant& sede);

 private:
  std::set<std::string> contiNoti_;  ///< found in the database already
  std::set<int> sediNote_;
};

/// One kind of file: checked first, written when every file of the import is in order.
class Importatore {
 public:
  virtual ~Importatore() = default;
  virtual void leggi(const std::string& file, Importazione& importazione) = 0;
  virtual void scrivi(Importazione& importazione) = 0;
  /// What was written, in words: "12 accounts".
  virtual std::string esito() const = 0;
};

struct GenereImportazione {
  std::string_view opzione;  ///< of the command: "accounts" for --accounts FILE
  std::string aiuto;         ///< the columns
  std::unique_ptr<Importatore> (*crea)();
};

/// In the order in which they are written.
std::span<const GenereImportazione> generiImportazione();

GenereImportazione importaConti();
GenereImportazione importaSedi();
GenereImportazione importaDefinizioni();
GenereImportazione importaMovimenti();
GenereImportazione importaValori();

/// "12 accounts", "1 account".
std::string conta(std::size_t numero, const std::string& nome);

/// Imports a folder of monthly amounts by site, department and account (see DatiFinance.h) into a company
/// that has no accounts yet, in one transaction.
void importaFinance(Ambiente& ambiente, const std::string& cartella);

}  // namespace bukorval::host
