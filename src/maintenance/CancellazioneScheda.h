#pragma once

#include "frame/Contesto.h"

namespace bukorval {

/// Deletes cards: first what depends on a card, last its header.
/// The contracts of public members stand in object/CLSKORVAL.h.
class CancellazioneScheda {
 public:
  explicit CancellazioneScheda(Contesto& ctx) : ctx_(ctx) {}

  void CancellaRigaBU65(values::Variant& id);

  /// Deletes the ledger detail of a card. Writes BU63_DETMASTRI.
  void DeleteBU63_DettaglioMastri(const values::Variant& id);

  void EliminaBudgetConSolaTestata(const values::Variant& ditta, BdgTipo tipo, const values::Variant& sottoTipo);

 private:
  Contesto& ctx_;
};

}  // namespace bukorval
