#include "host/environment/Selection.h"

#include "dati/Budgets.h"
#include "dati/Cards.h"
#include "dati/Failure.h"
#include "dati/Locks.h"
#include "dati/Nearest.h"
#include "dati/Years.h"
#include "host/environment/CodeLists.h"
#include "host/environment/Errors.h"
#include "language/Language.h"
#include "values/Conversion.h"

namespace bukorval::host {

void requireGiven(const Environment& environment, std::initializer_list<std::string_view> properties) {
  for (const auto name : properties) {
    if (environment.options.properties.contains(std::string(name))) continue;
    throw UsageError(tr("--{} is needed; `bukorval budgets` lists what is defined", name));
  }
}

void requireDefined(Environment& environment, const values::Variant& type, const values::Variant& subtype) {
  if (dati::isBudgetDefined(*environment.connection(), type, subtype)) return;
  std::vector<std::string> defined;
  for (const auto& budget : dati::definedBudgets(*environment.connection(), environment.session().CodiceDitta()))
    defined.push_back(std::to_string(budget.type) + "/" + values::toPlainText(budget.subtype));
  const auto typeText = values::toPlainText(type), subtypeText = values::toPlainText(subtype);
  throw dati::Refused(tr("There is no budget of type {}, subtype {}; `bukorval budgets` lists what is defined{}",
                         typeText, subtypeText, dati::didYouMean(typeText + "/" + subtypeText, defined)));
}

void requireDefined(Environment& environment) {
  const auto& budget = environment.budget();
  requireDefined(environment, budget.TipoBudget, budget.SottoTipoBudget);
}

void requireBudget(Environment& environment) {
  requireGiven(environment, {"TipoBudget", "SottoTipoBudget", "AnnoEsercizio"});
  const auto& budget = environment.budget();
  if (!environment.hasDatabase()) return;
  auto& connection = *environment.connection();
  dati::requireYear(connection, budget.CodiceDitta, budget.AnnoEsercizio, budget.ProgressivoEsercizio);
  dati::requireYear(connection, budget.CodiceDitta, budget.AnnoEsercizioMovimenti,
                    budget.ProgressivoEsercizioMovimenti);
  requireDefined(environment);
  tellUnknownCodes(environment);
}

void requireWritable(Environment& environment, const BudgetAnno& budget) {
  auto& connection = *environment.connection();
  if (environment.options.force)
    dati::requireYear(connection, budget.ditta, budget.anno, budget.progressivo);
  else
    dati::requireOpenYear(connection, budget.ditta, budget.anno, budget.progressivo);
  dati::requireUnlocked(connection, budget);
}

void requireGrid(Environment& environment) {
  requireBudget(environment);
  auto& budget = environment.budget();
  if (budget.TipoBudget == bdgTipoSpeseGenerali) requireGiven(environment, {"BdgTipoScheda"});
  bool perSite = false;
  budget.GetGestioneSede(budget.TipoBudget, budget.SottoTipoBudget, perSite);
  environment.requireSuccess();
  if (perSite) requireGiven(environment, {"CodiceSede"});
}

void completeCardRange(Environment& environment) {
  auto& budget = environment.budget();
  if (values::isBlank(budget.AScheda))
    budget.AScheda = dati::lastCardCode(*environment.connection(), budgetScelto(budget));
}

void selectCard(Environment& environment, const values::Variant& card) {
  if (!card.isNumber()) throw UsageError(tr("A card is given by its identifier, a whole number (BU65_ID in the grid)"));
  const auto& connection = environment.connection();
  if (!dati::selectBudgetOfCard(environment.budget(), *connection, card))
    throw dati::Refused(tr("There is no card {}", values::toPlainText(card)));
}

void selectWritableCard(Environment& environment, const values::Variant& card) {
  selectCard(environment, card);
  requireWritable(environment, budgetScelto(environment.budget()));
}

}  // namespace bukorval::host
