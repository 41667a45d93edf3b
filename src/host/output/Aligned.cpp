#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "host/output/Writers.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval::host {
namespace {

/// Longer descriptions are cut, unless everything is asked for.
constexpr std::size_t kDescrizioneMassima = 30;
constexpr std::string_view kGrassetto = "\033[1m";
constexpr std::string_view kRosso = "\033[31m";
constexpr std::string_view kFine = "\033[0m";

/// The table as texts, without the columns that hold nothing.
struct Griglia {
  std::vector<const Colonna*> colonne;
  std::vector<std::size_t> larghezze;
  std::vector<std::vector<std::string>> righe;  ///< the totals last, when there are any
};

bool vuota(const Tabella& tabella, std::size_t colonna) {
  return std::ranges::all_of(tabella.righe, [&](const auto& riga) { return values::isBlank(riga[colonna]); });
}

std::string testoCella(const values::Variant& cella, const Colonna& colonna, const OpzioniStampa& opzioni) {
  auto testo = testoUmano(cella, colonna, opzioni.separatore);
  const bool intera = opzioni.tutte || !colonna.nome.ends_with("_DESCR");
  if (intera || values::length(testo) <= kDescrizioneMassima) return testo;
  return std::string(values::rtrim(values::left(testo, kDescrizioneMassima - 1))) + "…";
}

Griglia prepara(const Tabella& tabella, const OpzioniStampa& opzioni) {
  Griglia griglia;
  griglia.righe.resize(tabella.righe.size() + (tabella.totali.empty() ? 0 : 1));
  for (std::size_t i = 0; i < tabella.colonne.size(); ++i) {
    const Colonna& colonna = tabella.colonne[i];
    if (!opzioni.tutte && (colonna.secondaria || vuota(tabella, i))) continue;
    std::size_t larghezza = values::length(colonna.titolo);
    for (std::size_t r = 0; r < griglia.righe.size(); ++r) {
      const auto& cella = r < tabella.righe.size() ? tabella.righe[r][i] : tabella.totali[i];
      auto& testo = griglia.righe[r].emplace_back(testoCella(cella, colonna, opzioni));
      larghezza = std::max(larghezza, values::length(testo));
    }
    griglia.colonne.push_back(&colonna);
    griglia.larghezze.push_back(larghezza);
  }
  return griglia;
}

std::string cella(std::string_view testo, std::size_t larghezza, bool destra) {
  const std::string spazi(larghezza - values::length(testo), ' ');
  return destra ? spazi + std::string(testo) : std::string(testo) + spazi;
}

std::string titoli(const Griglia& griglia) {
  std::string testo;
  for (std::size_t i = 0; i < griglia.colonne.size(); ++i) {
    if (i > 0) testo += "  ";
    testo += cella(griglia.colonne[i]->titolo, griglia.larghezze[i], griglia.colonne[i]->numero);
  }
  return std::string(values::rtrim(testo));
}

std::string linea(const Griglia& griglia) {
  std::string testo;
  for (std::size_t i = 0; i < griglia.larghezze.size(); ++i) {
    testo += std::string(i > 0 ? 2 : 0, ' ') + std::string(griglia.larghezze[i], '-');
  }
  return testo;
}

std::string riga(const Griglia& griglia, const std::vector<std::string>& celle, bool colore) {
  std::string testo;
  for (std::size_t i = 0; i < celle.size(); ++i) {
    if (i > 0) testo += "  ";
    const bool numero = griglia.colonne[i]->numero;
    const auto allineata = cella(celle[i], griglia.larghezze[i], numero);
    const bool negativo = colore && numero && celle[i].starts_with('-');
    testo += negativo ? std::string(kRosso).append(allineata).append(kFine) : allineata;
  }
  return std::string(values::rtrim(testo));
}

}  // namespace

void stampaAllineata(std::ostream& uscita, const Tabella& tabella, const OpzioniStampa& opzioni) {
  // A heading of dozens of empty columns would say less.
  if (tabella.righe.empty()) {
    uscita << "No rows\n";
    return;
  }
  const auto griglia = prepara(tabella, opzioni);
  const auto grassetto = [&](const std::string& testo) {
    return opzioni.colore ? std::string(kGrassetto).append(testo).append(kFine) : testo;
  };
  uscita << grassetto(titoli(griglia)) << '\n' << linea(griglia) << '\n';
  for (std::size_t r = 0; r < tabella.righe.size(); ++r)
    uscita << riga(griglia, griglia.righe[r], opzioni.colore) << '\n';
  if (!tabella.totali.empty()) {
    uscita << linea(griglia) << '\n' << grassetto(riga(griglia, griglia.righe.back(), false)) << '\n';
  }
}

}  // namespace bukorval::host
