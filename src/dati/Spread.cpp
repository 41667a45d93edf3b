#include "dati/Spread.h"

#include <algorithm>
#include <string>

#include "dati/Cards.h"
#include "dati/Failure.h"
#include "dati/WrittenPeriods.h"
#include "dati/Years.h"
#include "frame/BudgetAnno.h"
#include "frame/TestoSql.h"
#include "language/Language.h"
#include "values/Conversion.h"

namespace bukorval::dati {
namespace {

using values::Date;
using values::Decimal;
using values::Variant;

/// Gives the object its selection back.
class KeptSelection {
 public:
  explicit KeptSelection(CLSKORVAL& budget)
      : budget_(budget), selected_(budgetScelto(budget)), site_(budget.CodiceSede), cardKind_(budget.BdgTipoScheda) {}
  ~KeptSelection() {
    selectBudget(budget_, selected_);
    budget_.CodiceSede = site_;
    budget_.BdgTipoScheda = cardKind_;
  }
  KeptSelection(const KeptSelection&) = delete;
  KeptSelection& operator=(const KeptSelection&) = delete;

 private:
  CLSKORVAL& budget_;
  BudgetAnno selected_;
  Variant site_, cardKind_;
};

/// What tells a card from the others of its budget.
CardKey keyOfCard(CLSKORVAL& budget, ado::Connection& connection, const Variant& card) {
  const auto columns = keyColumns(budget, connection);
  TestoSql sql;
  sql.testo(" SELECT BU65_ID");
  for (const auto& column : columns) sql.testo(", ", column.name);
  sql.riga(" ").riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ").riga(" WHERE  BU65_ID = ", numero(card));
  const auto rs = connection.Execute(sql);
  CardKey key;
  for (const auto& column : columns) key.emplace_back(column.name, (*rs)[column.name].Value());
  return key;
}

}  // namespace

PeriodWeights daysOfPeriods(CLSKORVAL& budget, ado::Connection& connection) {
  requireYear(connection, budget.CodiceDitta, budget.AnnoEsercizio, budget.ProgressivoEsercizio);
  Variant begin, end;
  budget.GetBdgDataInizioBdgDataFine(budget.TipoBudget, budget.SottoTipoBudget, budget.CodiceDitta,
                                     budget.AnnoEsercizio, budget.ProgressivoEsercizio, begin, end);
  requireSuccess(budget);
  const auto first = values::toDate(begin), last = values::toDate(end);
  const WrittenPeriods periods(budget, first, last);
  PeriodWeights days(periodShape(budget).count);
  for (Date day = first; day <= last; day = day.lastOfMonth().addDays(1)) {
    const auto period = static_cast<std::size_t>(periods.periodOf(static_cast<std::size_t>(day.month())));
    if (period < 1 || period > days.size()) continue;
    const int count = values::daysBetween(day, std::min(day.lastOfMonth(), last)) + 1;
    days[period - 1] = days[period - 1] + Decimal::FromScaled(count);
  }
  return days;
}

PeriodWeights amountsAsWeights(CLSKORVAL& budget, ado::Connection& connection, const Variant& card,
                               BdgTipoDettaglio kind, const Measure& measure, PeriodRange range) {
  const auto shape = periodShape(budget);
  const KeptSelection kept(budget);
  const auto name = "card " + values::toPlainText(card);
  if (!selectBudgetOfCard(budget, connection, card)) throw Refused(tr("There is no {}", name));
  if (periodShape(budget) != shape) throw Refused(tr("The periods of {} are others", name));
  PeriodWeights weights(shape.count);
  for (const auto& [period, amount] : amountsOfCard(connection, card, kind, measure)) {
    if (period < range.from || period > range.to || amount.isNothing()) continue;
    auto& weight = weights.at(static_cast<std::size_t>(period) - 1);
    weight = values::toDecimal(amount);
    if (weight.isNegative())
      throw Refused(tr("Period {} of {} has {}: a negative amount is no weight", period, name, weight.toString()));
  }
  return weights;
}

Variant cardOfLastYear(CLSKORVAL& budget, ado::Connection& connection, const Variant& card) {
  const auto years = accountingYears(connection, budget.CodiceDitta);
  const auto isSelected = [&](const AccountingYear& year) {
    return values::toInt32(year.year) == values::toInt32(budget.AnnoEsercizio) &&
           values::toInt32(year.progressive) == values::toInt32(budget.ProgressivoEsercizio);
  };
  const auto year = std::ranges::find_if(years, isSelected);
  if (year == years.begin() || year == years.end()) throw Refused(tr("The calendar has no year before the card's"));
  const auto before = year - 1;
  auto source = budgetScelto(budget);
  source.anno = before->year;
  source.progressivo = before->progressive;
  const auto found = findCards(connection, source, keyOfCard(budget, connection, card));
  if (found.size() == 1) return found.front();
  throw Refused(tr(found.empty() ? "No card of {} has the columns of this one"
                                 : "More than one card of {} has the columns of this one",
                   values::toPlainText(before->year)));
}

}  // namespace bukorval::dati
