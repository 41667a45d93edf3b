#pragma once

#include <vector>

#include "ado/connection/Connection.h"
#include "dati/DetailNames.h"
#include "object/CLSKORVAL.h"
#include "values/Decimal.h"
#include "values/Variant.h"

/// An amount or a quantity of a card's year, spread over its periods.
namespace bukorval::dati {

/// By period from the first; not negative.
using PeriodWeights = std::vector<values::Decimal>;

/// The days that each period of the selected budget has in its year. Throws Refused for a year that is not there.
PeriodWeights daysOfPeriods(CLSKORVAL& budget, ado::Connection& connection);
struct PeriodRange {
  int from, to;
};
/// The amounts or quantities of a card in a range of periods, 0 for the others; the card may be another budget's with
/// the same periods: the object keeps its selection. What is empty counts 0. Throws Refused for a card that is not
/// there, for other periods, and for negative amounts in the range.
PeriodWeights amountsAsWeights(CLSKORVAL& budget, ado::Connection& connection, const values::Variant& card,
                               BdgTipoDettaglio kind, const Measure& measure, PeriodRange range);
/// The card of the same budget that had the same columns in the accounting year before. Throws Refused when there is
/// none, or more than one.
values::Variant cardOfLastYear(CLSKORVAL& budget, ado::Connection& connection, const values::Variant& card);

}  // namespace bukorval::dati
