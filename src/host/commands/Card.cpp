#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "dati/CardDetails.h"
#include "dati/History.h"
#include "dati/LastChange.h"
#include "dati/Locks.h"
#include "host/commands/CardChanges.h"
#include "host/commands/CardPeriods.h"
#include "host/commands/Command.h"
#include "host/commands/Deltas.h"
#include "host/environment/Arguments.h"
#include "host/environment/Selection.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

using values::Variant;

bool isMeasure(const Column& column) {
  return column.name.starts_with("DELTA") ||
         std::ranges::any_of(kMeasurePrefixes, [&](const auto prefix) { return column.name.starts_with(prefix); });
}

/// What the budget's grid says of one card: its columns with their descriptions, and its figures as the grid has them.
void addHeader(Environment& environment, const Variant& card, CallResults& results) {
  auto row = cardRows(environment, *dati::codesOf(environment.budget(), *environment.connection(), card));
  mergeDescriptions(row);
  Table header{{{"CAMPO", "Field"}, {"NOME", "Name"}, {"VALORE", "Value"}}, {}, {}}, figures;
  header.columns[0].secondary = true;
  for (std::size_t i = 0; i < row.columns.size() && !row.rows.empty(); ++i) {
    const auto& column = row.columns[i];
    const auto& value = row.rows.front()[i];
    if (value.isNothing()) continue;
    if (isMeasure(column)) {
      if (figures.rows.empty()) figures.rows.emplace_back();
      figures.columns.push_back(column);
      figures.rows.front().push_back(value);
    } else if (!column.secondary) {
      header.rows.push_back({column.name, column.title, value});
    }
  }
  results.tables.emplace_back("Header", std::move(header));
  results.tables.emplace_back("Totals", std::move(figures));
}

Table termsTable(const dati::CardTerms& terms) {
  return {{{"ULTIMAMODIFICA", "Written"},
           {"MANUALI", "By hand", true},
           {"TIPOCF", "Party kind", true},
           {"CLIFOR", "Customer/Supplier", true},
           {"VALIDADA", "Valid from"},
           {"RATE", "Instalments", true},
           {"MESI", "Months between", true},
           {"GIORNI", "Days to the first", true}},
          {{terms.written, terms.byHand, terms.partyKind, terms.party, terms.validFrom, terms.instalments,
            terms.monthsBetween, terms.daysToFirst}},
          {}};
}

Table percentageTable(const std::vector<dati::CardPercentage>& percentages) {
  Table table{
      {{"PROGRESSIVO", "Number", true}, {"RIPARTIZIONE", "Share %", true, 2}, {"SCOSTAMENTO", "Deviation %", true, 2}},
      {},
      {}};
  for (const auto& [number, share, deviation] : percentages) table.rows.push_back({number, share, deviation});
  return table;
}

Table dueDateTable(const std::vector<dati::DueDate>& dates) {
  Table table{{{"BU14_ID", "ID", true},
               {"PERIODO", "Period", true},
               {"SCADENZA", "Due"},
               {"IMPORTO", "Amount", true, 2, false, true},
               {"MANUALE", "By hand", true}},
              {},
              {}};
  for (const auto& [id, period, date, amount, byHand] : dates) table.rows.push_back({id, period, date, amount, byHand});
  if (!dates.empty()) table.addTotals();
  return table;
}

void showCard(Environment& environment, const std::string& text) {
  const auto card = parseArgument(text);
  selectCard(environment, card);
  auto& connection = *environment.connection();
  const dati::History history(connection, environment.budget().CodiceDitta);
  const auto number = values::toInt64(card);
  const auto last = dati::lastChanges(connection, environment.budget().CodiceDitta, {number})[number];
  CallResults results{{{"Card", card},
                       {"Budget", dati::nameOf(budgetScelto(environment.budget()))},
                       {"Last change", dati::textOf(last)}},
                      {}};
  addHeader(environment, card, results);
  const auto add = [&](const char* name, Table table) { results.tables.emplace_back(name, std::move(table)); };
  add("Cash flow", termsTable(dati::termsOf(connection, card)));
  add("Percentages", percentageTable(dati::percentagesOf(connection, card)));
  add("Due dates", dueDateTable(dati::dueDatesOf(connection, card)));
  add("History", tableOf(history.ofCard(number), history.entries()));
  environment.show(results);
}

}  // namespace

Command cardCommand() {
  const auto card = std::make_shared<std::string>();
  return {
      "card",
      "Show all of one card: header, totals, cash flow, due dates, history",
      "  bukorval card 12 -d demo.db\n"
      "`bukorval periods 12` shows its values period by period, `bukorval movements --card 12` what is behind them.",
      {{"CARD", "identifier of the card", card.get(), true}},
      [card](Environment& environment) { showCard(environment, *card); }};
}

}  // namespace bukorval::host
