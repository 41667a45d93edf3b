#pragma once

#include "ado/Dictionary.h"
#include "frame/Contesto.h"

namespace bukorval {

/// New cards of the selected budget. No transaction is opened here: what was written before a failure stays.
class NuovaScheda {
 public:
  explicit NuovaScheda(Contesto& ctx) : ctx_(ctx) {}

  /// Creates a card with its empty details and, for type 4, its empty cash-flow row. Reads the properties that select
  /// the budget and the session's company.
  /// @param colonne  BU65_ column names and values, written in this order; none, or an empty one, writes nothing.
  /// @return BU65_ID of the new card, Null without one.
  /// Reads BU01_ANABUDGET; writes BU65_TESBUDGET, BU66_DETBUDGET, BU67_BDGCASHFLOW.
  values::Variant InserimentoNuovaSchedaBudget(const ado::DictionaryPtr& colonne);

  /// Creates the details that a card (BU65_ID) lacks, values Null: one for each kind and period of the budget. Orders
  /// only where the budget's nature is 1. Safe to run again. Writes BU66_DETBUDGET.
  void CreazioneBU66NULL(const values::Variant& id);

  /// Creates the cash-flow row of a card, manual due dates off. Writes BU67_BDGCASHFLOW.
  void CreazioneBU67NULL(const values::Variant& id);

  /// Nature (sign indicator) of an account; Empty when the chart does not have it.
  /// Reads PC03_ANAGPDC for chart kind 3, CG24_TABPDC for any other.
  values::Variant GetNaturaConto(BdgTipoPdc& tipoPdc, values::Variant& codicePdc, values::Variant& conto);

 private:
  Contesto& ctx_;
};

}  // namespace bukorval
