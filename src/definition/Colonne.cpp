#include "definition/Colonne.h"

#include <algorithm>
#include <string>

#include "values/Errore.h"
#include "values/Text.h"

namespace bukorval {
namespace {

template <class Riga, class Membro>
const Riga& trova(std::span<const Riga> tabella, Membro membro, std::string_view cercato, std::string_view cosa) {
  const auto trovata =
      std::ranges::find_if(tabella, [&](const Riga& riga) { return values::compareText(riga.*membro, cercato) == 0; });
  if (trovata == tabella.end()) throw values::Errore(std::string(cosa) + " '" + std::string(cercato) + "'");
  return *trovata;
}

}  // namespace

const Colonna& colonnaBU65(std::string_view nome) {
  return trova(colonneBU65(), &Colonna::nome, values::trim(nome), "BU65_TESBUDGET has no column");
}

const Elemento& elementoStruttura(std::string_view codice) {
  return trova(elementiStruttura(), &Elemento::codice, codice, "Unknown structure element");
}

std::vector<const Colonna*> colonneElenco(std::string_view elencoCampi) {
  std::vector<const Colonna*> colonne;
  while (!values::trim(elencoCampi).empty()) {
    const auto fine = std::min(elencoCampi.find(','), elencoCampi.size());
    colonne.push_back(&colonnaBU65(elencoCampi.substr(0, fine)));
    elencoCampi.remove_prefix(std::min(fine + 1, elencoCampi.size()));
  }
  return colonne;
}

}  // namespace bukorval
