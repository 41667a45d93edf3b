#pragma once

#include <optional>
#include <string>
#include <unordered_map>

#include "frame/Contesto.h"

namespace bukorval {

/// The cards of the selection by account, read once for a run; creates the ones that are missing.
class SchedePerConto {
 public:
  explicit SchedePerConto(Contesto& ctx);

  /// BU65_ID of the account's card; the oldest when several share the account. Null when there is none and none may
  /// be created. Reads and writes BU65_TESBUDGET, BU66_DETBUDGET.
  values::Variant trovaOCrea(const values::Variant& conto);

 private:
  /// What the budget's structure says of new cards.
  struct Regola {
    bool soloConto = false;  ///< an account alone makes a card: the budget has no other analysis column
    std::string struttura;   ///< code of the structure that lists the accounts allowed; "" allows all
  };
  const Regola& regola();
  void leggi();
  bool creabile(const values::Variant& conto);
  values::Variant crea(const values::Variant& conto);

  Contesto& ctx_;
  std::unordered_map<std::string, values::Variant> perConto_;  ///< Null: no card, and none may be created
  std::optional<Regola> regola_;
};

}  // namespace bukorval
