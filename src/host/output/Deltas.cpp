#include "host/output/Deltas.h"

#include <array>
#include <string>

namespace bukorval::host {
namespace {

struct Misura {
  std::string_view prefisso;     ///< of the value columns
  std::string_view delta;        ///< of the difference
  std::string_view percentuale;  ///< of the ratio
};

constexpr std::array kMisure{
    Misura{kPrefissiMisure[0], "DELTAIMP_", "DELTAPERCIMP_"},
    Misura{kPrefissiMisure[1], "DELTAQTA1_", "DELTAPERCQTA1_"},
    Misura{kPrefissiMisure[2], "DELTAQTA2_", "DELTAPERCQTA2_"},
};

/// A ratio is kept with four decimals: a percentage with two.
constexpr int kDecimaliRapporto = 4;

/// One pair of delta columns and the columns they compare.
struct Confronto {
  std::size_t valore, budget, delta, percentuale;
};

/// Nothing when the table lacks one of the columns.
void aggiungi(std::vector<Confronto>& confronti, const Tabella& tabella, const Misura& misura,
              const std::string& valore, const std::string& suffisso) {
  const auto nome = [](std::string_view prefisso, std::string_view resto) {
    return std::string(prefisso).append(resto);
  };
  const auto v = tabella.posizione(nome(misura.prefisso, valore));
  const auto b = tabella.posizione(nome(misura.prefisso, "BUDGET"));
  const auto d = tabella.posizione(nome(misura.delta, suffisso));
  const auto p = tabella.posizione(nome(misura.percentuale, suffisso));
  if (v && b && d && p) confronti.push_back({*v, *b, *d, *p});
}

std::vector<Confronto> trovaConfronti(const Tabella& tabella) {
  std::vector<Confronto> confronti;
  for (const auto& misura : kMisure) {
    aggiungi(confronti, tabella, misura, "CONSUNTIVO", "CONS");
    for (int n = 1; tabella.posizione("IMP_FORECAST" + std::to_string(n)); ++n) {
      aggiungi(confronti, tabella, misura, "FORECAST" + std::to_string(n), "FORE" + std::to_string(n));
    }
  }
  return confronti;
}

}  // namespace

void riempiDelta(CLSKORVAL& oggetto, Tabella& tabella) {
  const auto confronti = trovaConfronti(tabella);
  for (const auto& c : confronti) {
    tabella.colonne[c.percentuale].percentuale = true;
    tabella.colonne[c.percentuale].decimali = kDecimaliRapporto;
  }
  const auto riempi = [&](std::vector<values::Variant>& riga) {
    for (const auto& c : confronti) {
      riga[c.delta] = oggetto.CalcolaDelta(riga[c.valore], riga[c.budget]);
      riga[c.percentuale] = oggetto.CalcolaDeltaPercentuale(riga[c.valore], riga[c.budget]);
    }
  };
  for (auto& riga : tabella.righe) riempi(riga);
  if (!tabella.totali.empty()) riempi(tabella.totali);
}

void segnaTotali(Tabella& tabella) {
  for (auto& colonna : tabella.colonne) {
    for (const auto prefisso : kPrefissiMisure) {
      if (colonna.nome.starts_with(prefisso)) colonna.totale = true;
    }
  }
}

}  // namespace bukorval::host
