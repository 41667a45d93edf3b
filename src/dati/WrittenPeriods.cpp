#include "dati/WrittenPeriods.h"

#include <algorithm>
#include <cstdint>

#include "dati/Failure.h"
#include "values/Conversion.h"

namespace bukorval::dati {

std::vector<std::string> periodNames(CLSKORVAL& budget) {
  const auto periodicity = budget.GetPeriodicitaBudget(budget.TipoBudget, budget.SottoTipoBudget);
  const auto calendar = budget.GetAnnoBudgetFiscaleSolare(budget.TipoBudget, budget.SottoTipoBudget);
  const int count = values::toInt32(values::nvl(budget.GetBdgNrPeriodi(periodicity), 0));
  requireSuccess(budget);
  std::vector<std::string> names;
  for (std::int16_t period = 1; period <= count; ++period)
    names.push_back(budget.GetDescrizionePeriodo(budget.CodiceDitta, periodicity, calendar, period,
                                                 budget.AnnoEsercizio, budget.ProgressivoEsercizio));
  return names;
}

PeriodShape periodShape(CLSKORVAL& budget) {
  const auto periodicity = budget.GetPeriodicitaBudget(budget.TipoBudget, budget.SottoTipoBudget);
  const auto calendar = budget.GetAnnoBudgetFiscaleSolare(budget.TipoBudget, budget.SottoTipoBudget);
  values::Variant begin, end;
  budget.GetBdgDataInizioBdgDataFine(budget.TipoBudget, budget.SottoTipoBudget, budget.CodiceDitta,
                                     budget.AnnoEsercizio, budget.ProgressivoEsercizio, begin, end);
  requireSuccess(budget);
  PeriodShape shape;
  shape.count = static_cast<std::size_t>(values::toInt32(values::nvl(budget.GetBdgNrPeriodi(periodicity), 0)));
  for (std::int16_t month = 1; month <= 12 && !values::isBlank(begin); ++month)
    shape.ofMonth[static_cast<std::size_t>(month)] = budget.GetBdgPeriodo(month, periodicity, calendar, begin);
  requireSuccess(budget);
  return shape;
}

WrittenPeriods::WrittenPeriods(CLSKORVAL& budget, const values::Date& from, const values::Date& to)
    : ofMonth_(periodShape(budget).ofMonth) {
  values::Variant begin, end;
  budget.GetBdgDataInizioBdgDataFine(budget.TipoBudget, budget.SottoTipoBudget, budget.CodiceDitta,
                                     budget.AnnoEsercizio, budget.ProgressivoEsercizio, begin, end);
  requireSuccess(budget);
  const auto [first, last] = ends(values::toDate(begin), values::toDate(end));
  const auto [a, b] = values::monthsBetween(from, to) > 11 ? std::pair(first, last) : ends(from, to);
  // A budget by calendar months of a year across January ends before it begins: it has them all.
  for (int period = std::min(a, b); period <= std::max(a, b); ++period)
    if (first > last || (period >= first && period <= last)) written_.insert(period);
}

std::pair<int, int> WrittenPeriods::ends(const values::Date& from, const values::Date& to) const {
  return {ofMonth_[static_cast<std::size_t>(from.month())], ofMonth_[static_cast<std::size_t>(to.month())]};
}

}  // namespace bukorval::dati
