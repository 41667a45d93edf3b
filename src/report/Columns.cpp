#include "report/Columns.h"

#include <algorithm>
#include <set>
#include <utility>

#include "dati/Failure.h"
#include "definition/Periodicita.h"
#include "language/Language.h"
#include "values/Conversion.h"

namespace bukorval::report {
namespace {

using values::Date;

/// How columns split the year.
struct Split {
  std::string_view name;
  int months;  ///< 0 for those of the budget's own periods
  BdgPeriodicita periodicity;
  std::string_view prefix;
};
constexpr Split kSplits[] = {{"month", 1, kMensile, "M"},
                             {"quarter", 3, 2, "Q"},
                             {"half", 6, 4, "H"},
                             {"year", 12, kAnnuale, ""},
                             {"period", 0, 0, "P"}};

const Periodicita& periodicityOf(CLSKORVAL& budget) {
  const auto code = budget.GetPeriodicitaBudget(budget.TipoBudget, budget.SottoTipoBudget);
  dati::requireSuccess(budget);
  const auto* known = periodicita(code);
  if (known == nullptr) throw dati::Refused(tr("The budget does not say how long its periods are"));
  return *known;
}

BdgPeriodicita codeOf(const Periodicita& of) { return static_cast<BdgPeriodicita>(&of - std::begin(kPeriodicita)); }

bool fits(const Split& split, const Periodicita& own) { return split.months % own.mesi == 0; }

std::string labelOf(CLSKORVAL& budget, BdgPeriodicita periodicity, int number) {
  const auto yearKind = budget.GetAnnoBudgetFiscaleSolare(budget.TipoBudget, budget.SottoTipoBudget);
  return budget.GetDescrizionePeriodo(budget.CodiceDitta, periodicity, yearKind, static_cast<std::int16_t>(number),
                                      budget.AnnoEsercizio, budget.ProgressivoEsercizio);
}

std::string columnName(const Split& split, int number) {
  const bool two = split.prefix == "M" || split.prefix == "P";
  return std::string(split.prefix) + (two && number < 10 ? "0" : "") + std::to_string(number);
}

std::string fittingNames(CLSKORVAL& budget, const Periodicita& own) {
  std::string text;
  for (const auto& split : kSplits)
    if (fits(split, own)) text.append(text.empty() ? "" : ", ").append(split.name);
  return tr("The budget's periods are \"{}\": its columns are {}", budget.GetDes_BdgPeriodicita(codeOf(own)), text);
}

/// "2025-09".
std::string monthText(const Date& date) {
  const auto digits = date.toSql();
  return digits.substr(0, 4) + "-" + digits.substr(4, 2);
}

std::pair<Date, Date> datesOf(CLSKORVAL& budget) {
  values::Variant begin, end;
  budget.GetBdgDataInizioBdgDataFine(budget.TipoBudget, budget.SottoTipoBudget, budget.CodiceDitta,
                                     budget.AnnoEsercizio, budget.ProgressivoEsercizio, begin, end);
  dati::requireSuccess(budget);
  return {values::toDate(begin).firstOfMonth(), values::toDate(end).firstOfMonth()};
}

/// The budget's months with the periods they fall in.
std::vector<std::pair<Date, int>> monthsOf(CLSKORVAL& budget) {
  const auto [first, last] = datesOf(budget);
  const auto periodicity = codeOf(periodicityOf(budget));
  const auto yearKind = budget.GetAnnoBudgetFiscaleSolare(budget.TipoBudget, budget.SottoTipoBudget);
  std::vector<std::pair<Date, int>> months;
  for (Date month = first; month <= last; month = month.addMonths(1))
    months.emplace_back(month,
                        budget.GetBdgPeriodo(static_cast<std::int16_t>(month.month()), periodicity, yearKind, first));
  dati::requireSuccess(budget);
  return months;
}

}  // namespace

bool isPeriods(const std::string& name) { return std::ranges::find(kSplits, name, &Split::name) != std::end(kSplits); }

PeriodColumns periodColumns(CLSKORVAL& budget, const std::string& name) {
  const auto* const split = std::ranges::find(kSplits, name, &Split::name);
  const auto& own = periodicityOf(budget);
  if (!fits(*split, own)) throw dati::Refused(tr("{}, not {}", fittingNames(budget, own), name));
  const int months = split->months == 0 ? own.mesi : split->months;
  const auto periodicity = split->months == 0 ? codeOf(own) : split->periodicity;
  PeriodColumns made;
  for (int n = 1; n <= 12 / months; ++n)
    made.columns.push_back({columnName(*split, n), labelOf(budget, periodicity, n)});
  made.ofPeriods.assign(1, made.columns.size());
  for (int period = 1; period <= own.periodi; ++period)
    made.ofPeriods.push_back(static_cast<std::size_t>((period * own.mesi - 1) / months));
  return made;
}

std::vector<int> periodsUpTo(CLSKORVAL& budget, const Date& to) {
  const auto months = monthsOf(budget);
  const auto last = std::ranges::find(months, to.firstOfMonth(), &std::pair<Date, int>::first);
  if (last == months.end())
    throw dati::Refused(tr("The budget goes from {} to {}; {} is no month of it", monthText(months.front().first),
                           monthText(months.back().first), monthText(to)));
  const auto next = last + 1;
  if (next != months.end() && next->second == last->second)
    throw dati::Refused(
        tr("{} is in the middle of a period of the budget ({})", monthText(to), periodName(budget, last->second)));
  std::set<int> periods;
  for (auto month = months.begin(); month != next; ++month) periods.insert(month->second);
  return {periods.begin(), periods.end()};
}

std::string periodName(CLSKORVAL& budget, int period) { return labelOf(budget, codeOf(periodicityOf(budget)), period); }

}  // namespace bukorval::report
