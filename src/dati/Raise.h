#pragma once

#include <cstdint>
#include <set>

#include "ado/connection/Connection.h"
#include "dati/DetailSnapshot.h"
#include "object/CLSKORVAL.h"
#include "values/Decimal.h"

/// Values of cards, raised or lowered by a percentage.
namespace bukorval::dati {

/// @param percentage  5 raises 100.00 to 105.00.
values::Decimal raisingFactor(const values::Decimal& percentage);

/// The cards of the selected budget; of its site, card kind and range of codes only where these are set.
std::set<std::int64_t> selectedCards(const CLSKORVAL& budget, ado::Connection& connection);

/// Writes the values of these cells multiplied and rounded to the measure's decimals, through the object; cells without
/// one stay so. @return how many it wrote. Throws Failure when one no longer fits.
int raiseAmounts(CLSKORVAL& budget, const DetailSnapshot& amounts, const std::set<DetailSnapshot::Key>& cells,
                 BdgTipoDettaglio kind, const Measure& measure, const values::Decimal& factor);

}  // namespace bukorval::dati
