#pragma once

#include "frame/Contesto.h"

namespace bukorval {

/// Deletes cards: first what depends on a card, last its header. No transaction groups the statements: a failure
/// stops them, and what was deleted before stays deleted.
class CancellazioneScheda {
 public:
  explicit CancellazioneScheda(Contesto& ctx) : ctx_(ctx) {}

  /// Deletes a card with all that hangs on it; the header stays when details are left. An id (BU65_ID) of 0, Null or
  /// blank deletes nothing. Writes BU66_DETBUDGET, BU65_TESBUDGET; for `TipoBudget` 4 also BU67_BDGCASHFLOW,
  /// BU14_SCADCFLOW, BU90_TABPERCBUD; for 5 also BU63_DETMASTRI.
  void CancellaRigaBU65(values::Variant& id);

  /// Deletes the ledger detail of a card. Writes BU63_DETMASTRI.
  void DeleteBU63_DettaglioMastri(const values::Variant& id);

  /// Deletes every header that a company has for a budget; it does not look for details. Writes BU65_TESBUDGET.
  void EliminaBudgetConSolaTestata(const values::Variant& ditta, BdgTipo tipo, const values::Variant& sottoTipo);

 private:
  Contesto& ctx_;
};

}  // namespace bukorval
