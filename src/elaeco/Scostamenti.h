#pragma once

#include "frame/Contesto.h"

namespace bukorval {

/// The deviation percentage of an account and period from the source that TipoScostamento names: fixed, per account
/// (the nearest account up the tree with a percentage other than zero), or per period. 10 means plus ten per cent.
/// Any other source gives Empty. Outcome: 99 with " in GetPercentualeScostamento".
values::Variant GetPercentualeScostamento(Contesto& ctx, const values::Variant& conto, const values::Variant& periodo);

/// From RstScostPerConto, walking up the account tree. The set's filter stays as the search left it.
/// Outcome: 99 with " in GetPercentualeDaRstScostPerConto ".
values::Variant GetPercentualeDaRstScostPerConto(Contesto& ctx, values::Variant conto, const values::Variant& periodo);

/// From RstScostPerPeriodo; an empty account looks the period up whatever its account.
/// Outcome: 99 with " in GetPercentualeDaRstScostPerPeriodo".
values::Variant GetPercentualeDaRstScostPerPeriodo(Contesto& ctx, const values::Variant& conto,
                                                   const values::Variant& periodo);

/// The account one level up: the last level that is not zero becomes zero; "" for an account of the first level.
values::Variant GetContoPadre(Contesto& ctx, const values::Variant& pianoConti, const values::Variant& conto);

}  // namespace bukorval
