#include "dati/Budgets.h"

#include <string>

#include "dati/Locks.h"
#include "host/commands/Command.h"
#include "host/commands/Lists.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

/// "2010 (48), 2011 (1102)": the fiscal years that hold cards, and how many.
std::string yearsText(const std::vector<dati::CardsOfYear>& years) {
  std::string text;
  for (const auto& [year, cards] : years)
    text += (text.empty() ? "" : ", ") + values::toPlainText(year) + " (" + values::toPlainText(cards) + ")";
  return text;
}

std::string lockedYears(const dati::DefinedBudget& defined, const std::vector<dati::BudgetLock>& locks) {
  std::string text;
  for (const auto& [budget, when, user, reason] : locks)
    if (budget.tipo == defined.type && values::toPlainText(budget.sottoTipo) == values::toPlainText(defined.subtype))
      text += (text.empty() ? "" : ", ") + values::toPlainText(budget.anno);
  return text;
}

std::vector<values::Variant> rowOf(CLSKORVAL& budget, const dati::DefinedBudget& defined,
                                   const std::vector<dati::BudgetLock>& locks) {
  const auto type = defined.type;
  const auto& subtype = defined.subtype;
  bool perSite = false;
  budget.GetGestioneSede(type, subtype, perSite);
  return {type,
          subtype,
          budget.GetDescrizioneTipoBudget(type),
          defined.description,
          budget.GetDescrizioneStruttura(budget.GetStruttura(type, subtype)),
          budget.GetDes_BdgPeriodicita(budget.GetPeriodicitaBudget(type, subtype)),
          perSite,
          budget.GetNumeroForecast(type, subtype),
          yearsText(defined.years),
          lockedYears(defined, locks)};
}

}  // namespace

Table budgetsTable(Environment& environment) {
  auto& budget = environment.budget();
  Table table{{{"TIPO", "Type", true},
               {"SOTTOTIPO", "Subtype"},
               {"DESCRIZIONE_TIPO", "Kind"},
               {"DESCRIZIONE", "Description"},
               {"STRUTTURA", "Structure"},
               {"PERIODICITA", "Periods"},
               {"PER_SEDE", "Per site"},
               {"FORECAST", "Forecasts", true},
               {"SCHEDE", "Years (cards)"},
               {"BLOCCATI", "Locked"}},
              {},
              {}};
  const auto locks = dati::budgetLocks(*environment.connection(), budget.CodiceDitta);
  for (const auto& defined : dati::definedBudgets(*environment.connection(), budget.CodiceDitta)) {
    table.rows.push_back(rowOf(budget, defined, locks));
    environment.requireSuccess();
  }
  return table;
}

Command budgetsCommand() {
  return {"budgets",
          "List the budgets that are defined, with their years and cards",
          "  bukorval budgets -d demo.db",
          {},
          [](Environment& environment) { environment.show(budgetsTable(environment)); }};
}

}  // namespace bukorval::host
