#include "dati/NewCard.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

#include "dati/Cards.h"
#include "dati/Codes.h"
#include "dati/Failure.h"
#include "dati/Nearest.h"
#include "frame/ContiPiano.h"
#include "frame/TestoSql.h"
#include "language/Language.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval::dati {
namespace {

using values::Variant;

/// The table of accounts behind a kind of chart.
struct ChartTable {
  BdgTipoPdc kind;
  std::string_view table, chart, account;
};
constexpr ChartTable kChartTables[] = {{bdgPdcCoGe, "CG24_TABPDC", "CG24_GRUPPO_CG10", "CG24_CONTO"},
                                       {bdgPdcRiclassificato, "CG23_RICLBILCEE", "CG23_CODICE_CG21", "CG23_CODICE"},
                                       {bdgPdcAnalitico, "PC03_ANAGPDC", "PC03_CODICE_PC01", "PC03_CONTO"}};

constexpr std::string_view kSite = "BU65_CODICE_CG31";
constexpr std::string_view kKind = "BU65_INDCOSRIC_BU07";

/// The value of a column, by its name in any case; nothing when it is not given.
std::optional<Variant> given(const ado::Dictionary& columns, std::string_view name) {
  for (std::size_t i = 0; i < columns.Count(); ++i)
    if (values::compareText(values::toPlainText(columns.Keys()[i]), name) == 0) return columns.Items()[i];
  return std::nullopt;
}

bool exists(ado::Connection& connection, std::string_view table, std::string_view parent, const Variant& parentCode,
            std::string_view column, const std::string& code) {
  TestoSql sql;
  sql.riga(" SELECT TOP 1 1 AS ESISTE ")
      .riga(" FROM   ", table, " WITH (NOLOCK) ")
      .riga(" WHERE  ", parent, " = ", testoDati(parentCode))
      .riga(" AND    ", column, " = ", code);
  return connection.Execute(sql)->RecordCount() > 0;
}

/// Filled in when it is not given, or no part of what a card is for: charts and flags.
bool isOptional(std::string_view column) {
  return column.find("_FLG") != std::string_view::npos || std::ranges::any_of(kContiPiano, [&](const auto& account) {
           return values::compareText(column, account.piano) == 0;
         });
}

void refuseTwin(CLSKORVAL& budget, ado::Connection& connection, const ado::Dictionary& columns) {
  CardKey key;
  for (const auto& column : cardColumns(budget, connection)) {
    const auto value = given(columns, column.name);
    if (value || !isOptional(column.name)) key.emplace_back(column.name, value.value_or(Variant::Null()));
  }
  const auto twins = findCards(connection, budgetScelto(budget), key);
  if (!twins.empty())
    throw Refused(tr("Card {} of this budget has the same columns already", values::toPlainText(twins.front())));
}

}  // namespace

CardSelectors::CardSelectors(CLSKORVAL& budget) : kind_(budget.TipoBudget == bdgTipoSpeseGenerali) {
  budget.GetGestioneSede(budget.TipoBudget, budget.SottoTipoBudget, site_);
  requireSuccess(budget);
}

void CardSelectors::require(const ado::Dictionary& columns) const {
  const auto needed = [&](std::string_view column, const std::string& why) {
    if (values::isBlank(given(columns, column).value_or(Variant()))) throw Refused(tr("{} is needed: {}", column, why));
  };
  if (site_) needed(kSite, tr("the budget is kept by site"));
  if (kind_) needed(kKind, tr("the budget is kept by card kind, 0 cost or 1 revenue"));
}

std::string unknownReference(ado::Connection& connection, const Variant& company, const Variant& chart,
                             const ado::Dictionary& columns) {
  if (const auto site = given(columns, kSite); site && !values::isBlank(*site)) {
    const auto code = values::toPlainText(*site);
    const bool number = code.find_first_not_of("0123456789") == std::string::npos;
    if (!number || !exists(connection, "CG31_SEDI", "CG31_DITTA_CG18", company, "CG31_CODICE", code))
      return tr("The company has no site {}", code) +
             didYouMeanOf(code, textsOf(codesOf(connection, company, colonnaBU65(kSite), {})));
  }
  for (const auto& [accountColumn, chartColumn, kind] : kContiPiano) {
    const auto account = given(columns, accountColumn);
    if (!account || values::isBlank(*account)) continue;
    const auto own = given(columns, chartColumn).value_or(chart);
    const auto& table = *std::ranges::find(kChartTables, kind, &ChartTable::kind);
    if (!exists(connection, table.table, table.chart, own, table.account, testoDati(*account)))
      return tr("The chart of accounts {} has no account {}", values::toPlainText(own), values::toPlainText(*account)) +
             didYouMeanOf(values::toPlainText(*account), textsOf(accountsOf(connection, company, {kind, own})));
  }
  return {};
}

Variant createCard(CLSKORVAL& budget, ado::Connection& connection, const ado::DictionaryPtr& columns,
                   const Variant& companyChart) {
  auto chart = budget.GetCodicePdC(budget.TipoBudget, budget.SottoTipoBudget);
  requireSuccess(budget);
  if (values::isBlank(chart)) chart = companyChart;
  if (const auto unknown = unknownReference(connection, budget.CodiceDitta, chart, *columns); !unknown.empty())
    throw Refused(unknown);
  CardSelectors(budget).require(*columns);
  refuseTwin(budget, connection, *columns);
  budget.InserimentoNuovaSchedaBudget(columns);
  requireSuccess(budget);
  return budget.SchedaInserita();
}

}  // namespace bukorval::dati
