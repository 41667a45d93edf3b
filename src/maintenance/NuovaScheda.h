#pragma once

#include "ado/Dictionary.h"
#include "frame/Contesto.h"

namespace bukorval {

/// New cards of the selected budget. No transaction is opened here: what was written before a failure stays.
/// The contracts of public members stand in object/CLSKORVAL.h.
class NuovaScheda {
 public:
  explicit NuovaScheda(Contesto& ctx) : ctx_(ctx) {}

  /// @return BU65_ID of the new card, Null without one.
  values::Variant InserimentoNuovaSchedaBudget(const ado::DictionaryPtr& colonne);

  /// Creates the details that a card (BU65_ID) lacks, values Null: one for each kind and period of the budget. Orders
  /// only where the budget's nature is 1. Safe to run again. Writes BU66_DETBUDGET.
  void CreazioneBU66NULL(const values::Variant& id);

  /// Creates the cash-flow row of a card, manual due dates off. Writes BU67_BDGCASHFLOW.
  void CreazioneBU67NULL(const values::Variant& id);

  values::Variant GetNaturaConto(BdgTipoPdc& tipoPdc, values::Variant& codicePdc, values::Variant& conto);

 private:
  Contesto& ctx_;
};

}  // namespace bukorval
