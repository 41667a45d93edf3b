#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "dati/Budgets.h"
#include "dati/Codes.h"
#include "definition/Colonne.h"
#include "definition/Slot.h"
#include "frame/LivelliConto.h"
#include "host/commands/Command.h"
#include "host/commands/DetailKind.h"
#include "host/commands/Lists.h"
#include "host/environment/CodeLists.h"
#include "host/environment/Errors.h"
#include "host/environment/Selection.h"
#include "host/output/Titles.h"
#include "language/Language.h"
#include "report/Axes.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval::host {
namespace {

using values::Variant;

/// Codes and what they are called, as they stand in the lists of words.
Table codeTable(Environment& environment, Codes codes, std::string_view code) {
  Table table{{{"CODICE", std::string(code)}, {"DESCRIZIONE", "Description"}}, {}, {}};
  for (const auto& [text, description] : listedCodes(environment, codes)) table.rows.push_back({text, description});
  return table;
}

Table typesTable(Environment& environment) { return codeTable(environment, Codes::Types, "Type"); }
Table sitesTable(Environment& environment) { return codeTable(environment, Codes::Sites, "Site"); }
Table structuresTable(Environment& environment) { return codeTable(environment, Codes::Structures, "Structure"); }

/// All of them, or those of a type.
Table chosenBudgets(Environment& environment) {
  auto table = budgetsTable(environment);
  if (environment.options.properties.contains("TipoBudget"))
    std::erase_if(table.rows,
                  [&](const auto& row) { return values::toInt32(row.front()) != environment.budget().TipoBudget; });
  return table;
}

bool budgetGiven(const Environment& environment) {
  const auto& properties = environment.options.properties;
  return properties.contains("TipoBudget") || properties.contains("SottoTipoBudget");
}

/// What a list of one budget needs, which no year changes.
void requireDefinition(Environment& environment) {
  requireGiven(environment, {"TipoBudget", "SottoTipoBudget"});
  requireDefined(environment);
}

Table kindsTable(Environment& environment) {
  if (budgetGiven(environment)) requireDefinition(environment);
  Table table{{{"TIPO", "Kind", true}, {"NOME", "Name"}, {"DESCRIZIONE", "Description"}}, {}, {}};
  for (const auto& [name, number] : listedCodes(environment, Codes::DetailKinds)) {
    const int kind = std::stoi(number);
    table.rows.push_back({kind, name, title("IMP_" + parseDetailKind(name).column)});
  }
  return table;
}

dati::Chart chosenChart(Environment& environment) {
  const auto ledger = environment.session().CodicePdcCoGe();
  if (!budgetGiven(environment)) return {bdgPdcCoGe, ledger};
  requireDefinition(environment);
  return dati::chartOf(environment.budget(), ledger);
}

/// 1 for an account that is all zeros behind the first level.
Variant levelOf(std::string_view account, const std::vector<int>& lengths) {
  const auto last = ultimoLivello(account, lengths);
  std::size_t end = 0;
  int level = 0;
  while (end < last.fine && static_cast<std::size_t>(level) < lengths.size())
    end += static_cast<std::size_t>(lengths[static_cast<std::size_t>(level++)]);
  return level == 0 ? Variant::Null() : Variant(level);
}

Table accountsTable(Environment& environment) {
  const auto chart = chosenChart(environment);
  const auto lengths = chart.kind == bdgPdcCoGe ? environment.session().LunghezzeLivelli() : std::vector<int>();
  Table table{{{"CONTO", "Account"}, {"DESCRIZIONE", "Description"}, {"LIVELLO", "Level", true}}, {}, {}};
  for (const auto& [code, description, parent] :
       dati::accountsOf(*environment.connection(), environment.session().CodiceDitta(), chart))
    table.rows.push_back({code, description, levelOf(values::rtrim(values::toPlainText(code)), lengths)});
  return table;
}

std::string columnsText(const Elemento& element) {
  return std::string(element.colonne[0]) + (element.colonne[1].empty() ? "" : ", ") + std::string(element.colonne[1]);
}

/// Which budgets have an element: "0/01, 4/01".
std::string usersOf(std::string_view element, Environment& environment, const std::vector<dati::DefinedBudget>& all) {
  std::string text;
  for (const auto& defined : all) {
    bool used = false;
    perOgniElemento(environment.budget().GetStruttura(defined.type, defined.subtype),
                    [&](std::string_view slot) { used = used || values::compareText(slot, element) == 0; });
    if (used)
      text.append(text.empty() ? "" : ", ") +=
          std::to_string(defined.type) + "/" + values::toPlainText(defined.subtype);
  }
  return text;
}

/// The elements that a structure may have; of a budget that is given, those that its structure has.
Table elementsTable(Environment& environment) {
  Table table{
      {{"ELEMENTO", "Element"}, {"DESCRIZIONE", "Description"}, {"COLONNE", "Columns"}, {"BUDGET", "Budgets"}}, {}, {}};
  if (budgetGiven(environment)) requireDefinition(environment);
  const auto& budget = environment.budget();
  std::vector<dati::DefinedBudget> defined;
  if (environment.hasDatabase()) defined = dati::definedBudgets(*environment.connection(), budget.CodiceDitta);
  if (budgetGiven(environment))
    std::erase_if(defined, [&](const auto& one) {
      return one.type != budget.TipoBudget ||
             values::compareText(values::toPlainText(one.subtype), values::toPlainText(budget.SottoTipoBudget)) != 0;
    });
  for (const auto& element : elementiStruttura()) {
    const auto users = usersOf(element.codice, environment, defined);
    if (budgetGiven(environment) && users.empty()) continue;
    table.rows.push_back({std::string(element.codice), std::string(element.descrizione), columnsText(element), users});
  }
  environment.requireSuccess();
  return table;
}

/// The element of a budget's structure that brings a column; "" for one that comes by itself.
std::string elementOf(std::string_view structure, std::string_view column) {
  std::string text;
  perOgniElemento(structure, [&](std::string_view slot) {
    const auto& element = elementoStruttura(slot);
    if (std::ranges::find(element.colonne, column) != element.colonne.end() && text.empty()) text = element.codice;
  });
  return text;
}

Table columnsTable(Environment& environment) {
  requireDefinition(environment);
  auto& budget = environment.budget();
  const auto structure = budget.GetStruttura(budget.TipoBudget, budget.SottoTipoBudget);
  Table table{{{"COLONNA", "Column"},
               {"ASSE", "Axis"},
               {"DESCRIZIONE", "Description"},
               {"ELEMENTO", "Element"},
               {"TIPO", "Type"},
               {"LUNGHEZZA", "Length", true}},
              {},
              {}};
  const report::Axes axes(budget);
  for (const auto& [name, column] : axes.known()) {
    if (column == "BU65_ID") continue;
    const auto& known = colonnaBU65(column);
    table.rows.push_back({column, name, title(column), elementOf(structure, column),
                          known.isNumero() ? "number" : "text", known.lunghezza});
  }
  return table;
}

/// The codes that the cards of a budget may have, column by column.
Table codesTable(Environment& environment) {
  const auto chart = chosenChart(environment);
  requireDefinition(environment);
  auto& budget = environment.budget();
  Table table{
      {{"COLONNA", "Column"}, {"CODICE", "Code"}, {"DESCRIZIONE", "Description"}, {"PADRE", "Belongs to"}}, {}, {}};
  const report::Axes axes(budget);
  for (const auto& [name, column] : axes.known())
    for (const auto& [code, description, parent] :
         dati::codesOf(*environment.connection(), budget.CodiceDitta, colonnaBU65(column), chart))
      table.rows.push_back({column, values::toPlainText(code), description, parent});
  return table;
}

struct List {
  std::string_view name, text;
  Table (*table)(Environment&);
};
constexpr List kLists[] = {{"types", "of budgets", typesTable},
                           {"budgets", "that are defined", chosenBudgets},
                           {"years", "of the calendar", yearsTable},
                           {"sites", "", sitesTable},
                           {"accounts", "of the ledger, or of the budget's chart", accountsTable},
                           {"elements", "that structures are made of", elementsTable},
                           {"structures", "that cards are aligned to", structuresTable},
                           {"columns", "that a budget is analysed by", columnsTable},
                           {"codes", "that they may have", codesTable},
                           {"kinds", "of details", kindsTable}};

/// A text with * and ? matches a whole cell, any other a part of one; case does not count.
bool matches(std::string_view pattern, std::string_view text) {
  std::size_t p = 0, t = 0, star = std::string_view::npos, from = 0;
  while (t < text.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      from = t;
    } else if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == text[t])) {
      ++p;
      ++t;
    } else if (star != std::string_view::npos) {
      p = star + 1;
      t = ++from;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('*', p) == std::string_view::npos;
}

void keep(Table& table, const std::string& filter) {
  auto pattern = values::foldText(filter);
  if (pattern.find_first_of("*?") == std::string::npos) pattern = "*" + pattern + "*";
  std::erase_if(table.rows, [&](const auto& row) {
    return std::ranges::none_of(
        row, [&](const Variant& cell) { return matches(pattern, values::foldText(values::toPlainText(cell))); });
  });
}

struct ListOptions {
  std::string what, filter;
};

void showList(Environment& environment, const ListOptions& options) {
  auto table = std::ranges::find(kLists, options.what, &List::name)->table(environment);
  if (!options.filter.empty()) keep(table, options.filter);
  environment.show(table);
}

std::string whatHelp() {
  std::string text;
  for (const auto& [name, what, table] : kLists)
    text.append(text.empty() ? "" : ", ").append(name).append(what.empty() ? "" : " ").append(translated(what));
  return text;
}

}  // namespace

Command listCommand() {
  const auto options = std::make_shared<ListOptions>();
  std::vector<std::string> names;
  for (const auto& list : kLists) names.emplace_back(list.name);
  return {"list",
          "List what can be named: budgets, sites, accounts, codes …",
          "  bukorval list types\n"
          "  bukorval list accounts '6205*' -d demo.db\n"
          "  bukorval list accounts personale -d demo.db\n"
          "  bukorval list columns -t 0 -s 01 -d demo.db\n"
          "  bukorval list codes rossi -t 0 -s 01 -d demo.db\n"
          "Of one budget (-t, -s): its columns and their codes, its elements and detail kinds, the accounts of its\n"
          "chart.",
          {{.flags = "WHAT", .help = whatHelp(), .target = &options->what, .required = true, .oneOf = names},
           {"FILTER", "a part of a code or description, or with * and ? the whole of one", &options->filter}},
          [options](Environment& environment) { showList(environment, *options); }};
}

}  // namespace bukorval::host
