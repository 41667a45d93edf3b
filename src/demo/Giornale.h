#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "dati/RowInsert.h"
#include "demo/Importi.h"
#include "values/Date.h"

namespace demo {

using bukorval::dati::RowInsert;

inline constexpr int kDitta = 1, kPianoConti = 1;
inline constexpr int kTipoCliente = 0, kTipoFornitore = 1;

/// A registration, without its lines.
struct Registrazione {
  values::Date data;
  int sede = 0;
  std::string_view descrizione;
  int tipoCliFor = kTipoFornitore;
  int clifor = 0;         ///< 0: neither customer nor supplier
  int tipoMovimento = 0;  ///< 2: forecast
  int provenienza = 0;    ///< 3: simulated depreciation
};

/// A line; credits are negative.
struct Riga {
  std::string conto;
  Centesimi importo = 0;
  int mesiCompetenza = 0;         ///< 0: no competence interval, else from the first of the month on
  std::string_view causale = {};  ///< '150' and '151' are lines that no budget counts
};

/// The accounting journal: writes registrations, and keeps what each account got by year, site and month of
/// registration, the way budgets count it.
class Giornale {
 public:
  explicit Giornale(ado::Connection& connessione) : connessione_(connessione) {}

  void registra(const Registrazione& testata, const std::vector<Riga>& righe);

  /// Debits less credits of the accounts that begin with a prefix; site 0 stands for all.
  Mesi saldi(int anno, int sede, std::string_view prefisso) const;

 private:
  void scriviTestata(const Registrazione& testata);
  void scriviRiga(const Registrazione& testata, const Riga& riga, int numero);

  ado::Connection& connessione_;
  int numero_ = 0;
  std::map<std::pair<int, int>, std::map<std::string, Mesi>> saldi_;  ///< by year and site, then account
};

}  // namespace demo
