#include <memory>
#include <string>
#include <vector>

#include "dati/Cards.h"
#include "dati/NewCard.h"
#include "dati/Transaction.h"
#include "host/commands/Command.h"
#include "host/environment/Arguments.h"
#include "host/environment/Errors.h"
#include "host/environment/Selection.h"
#include "language/Language.h"

namespace bukorval::host {
namespace {

/// "NAME=VALUE" arguments as the columns of a new card.
ado::DictionaryPtr parseColumns(const std::vector<std::string>& texts) {
  auto columns = std::make_shared<ado::Dictionary>();
  for (const auto& text : texts) {
    const auto equals = text.find('=');
    if (equals == 0 || equals == std::string::npos) throw UsageError(tr("NAME=VALUE is needed, not {}", text));
    const values::Variant name = text.substr(0, equals);
    if (columns->Exists(name)) throw UsageError(tr("The column {} is given twice", text.substr(0, equals)));
    columns->Add(name, parseArgument(text.substr(equals + 1)));
  }
  return columns;
}

void createCard(Environment& environment, const std::vector<std::string>& texts) {
  requireBudget(environment);
  const auto columns = parseColumns(texts);
  auto transaction = environment.transaction();
  requireWritable(environment, budgetScelto(environment.budget()));
  const auto card =
      dati::createCard(environment.budget(), transaction.connection(), columns, environment.session().CodicePdcCoGe());
  const auto details = dati::countDetails(transaction.connection(), card);
  transaction.end(dati::RunMode::Write);
  environment.show({{{"BU65_ID", "New card", true}, {"DETTAGLI", "Empty details", true}}, {{card, details}}, {}});
}

}  // namespace

Command newCommand() {
  const auto columns = std::make_shared<std::vector<std::string>>();
  return {"new",
          "Create a card with its empty details",
          "  bukorval new -d demo.db -t 4 -s 01 -y 2025 BU65_INDCOSRIC_BU07=0 \"BU65_SCHEDA_BU07='PROVA'\" \\\n"
          "      BU65_CODICE_CG31=1 \"BU65_CONTO_CG24='62050002'\"\n"
          "NAME is a column of BU65_TESBUDGET; 'text' keeps a code that looks like a number a text.",
          {{"NAME=VALUE", "columns of the card", columns.get(), true}},
          [columns](Environment& environment) { createCard(environment, *columns); },
          Writes::Cards};
}

}  // namespace bukorval::host
