#pragma once

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
  void leggi(const values::Variant& soloConto);
  bool creabile(const values::Variant& conto);
  void crea(const values::Variant& conto);

  Contesto& ctx_;
  std::unordered_map<std::string, values::Variant> perConto_;
};

}  // namespace bukorval
