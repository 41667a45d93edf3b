#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "definition/Colonne.h"
#include "frame/Contesto.h"
#include "maintenance/ElementiBU60.h"

namespace bukorval {

/// The cards that the selected budget has, known by their values in some columns: numbers by value, text as the
/// database compares it, missing values alike.
class SchedePresenti {
 public:
  /// Reads BU65_TESBUDGET.
  SchedePresenti(Contesto& ctx, std::vector<const Colonna*> colonne);

  bool contiene(const ElementoBU60& scheda) const { return chiavi_.contains(chiave(scheda)); }
  void aggiungi(const ElementoBU60& scheda) { chiavi_.insert(chiave(scheda)); }

 private:
  std::string chiave(const ElementoBU60& scheda) const;

  std::vector<const Colonna*> colonne_;
  std::unordered_set<std::string> chiavi_;
};

}  // namespace bukorval
