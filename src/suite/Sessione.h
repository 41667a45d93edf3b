#pragma once

#include <functional>
#include <optional>
#include <string>
#include <unordered_map>

#include "ado/connection/Connection.h"
#include "suite/ActiveInterface.h"
#include "values/Export.h"

namespace suite {

/// Where messages to the user go: text, style (48 is a warning), title.
using Messaggiero = std::function<void(std::string_view testo, int stile, std::string_view titolo)>;

/// Length in characters of each level of an account code, by the structure of the codes (2 to 5). Throws Errore for any
/// other.
BUKORVAL_API std::vector<int> lunghezzeLivelli(int struttura);

/// A session over the suite's tables: one company, read once. Reads CG18_ANADITTE and CG00_MESSAGGI.
class BUKORVAL_API Sessione : public ActiveInterface {
 public:
  /// Opens the session of a company; Empty takes the first one stored. Throws Errore when there is none.
  /// @param connessione  open; the session keeps a share of it.
  explicit Sessione(ado::ConnectionPtr connessione, const values::Variant& ditta = {});

  /// The company's name.
  const std::string& RagioneSociale() const { return ragioneSociale_; }
  /// Without one, messages are dropped.
  Messaggiero messaggiero;

  values::Variant CodiceDitta() const override { return ditta_; }
  values::Variant CodicePdcCoGe() const override { return pdc_; }
  values::Variant MastroClienti() const override { return clienti_; }
  values::Variant MastroFornitori() const override { return fornitori_; }
  char SeparatoreDecimale() const override { return separatore_; }
  int StrutturaConti() const override { return struttura_; }
  /// Account codes have 8 digits, whatever their structure.
  std::vector<int> LunghezzeLivelli() const override;
  /// The company's wording of a text, else the built-in one, else Null.
  values::Variant TestoMessaggio(int numero) const override;
  void MostraMessaggio(std::string_view testo, int stile, std::string_view titolo) override;

 private:
  void leggiDitta(const values::Variant& ditta);
  const std::unordered_map<int, std::string>& testi() const;

  ado::ConnectionPtr connessione_;
  values::Variant ditta_, pdc_, clienti_, fornitori_;
  std::string ragioneSociale_;
  char separatore_ = ',';
  int struttura_ = 0;
  mutable std::optional<std::unordered_map<int, std::string>> testi_;
};

}  // namespace suite
