#pragma once

#include <string>

#include "frame/Proprieta.h"

namespace bukorval {

/// One company's budget of one fiscal year.
struct BudgetAnno {
  values::Variant ditta;
  BdgTipo tipo = 0;
  values::Variant sottoTipo, anno, progressivo;
};

/// The budget that the properties select.
inline BudgetAnno budgetScelto(const Proprieta& prop) {
  return {prop.CodiceDitta, prop.TipoBudget, prop.SottoTipoBudget, prop.AnnoEsercizio, prop.ProgressivoEsercizio};
}

/// The lines of a statement, from WHERE, that select the cards of a budget (BU65_TESBUDGET).
std::string condizioniSchede(const BudgetAnno& budget);

}  // namespace bukorval
