#include <memory>
#include <string>

#include "dati/Cards.h"
#include "dati/Transaction.h"
#include "host/commands/Command.h"
#include "host/environment/Arguments.h"
#include "host/environment/Selection.h"
#include "language/Language.h"

namespace bukorval::host {
namespace {

struct DeleteOptions {
  std::string card;
  bool yes = false;
};

void deleteCard(Environment& environment, const DeleteOptions& options) {
  values::Variant card = parseArgument(options.card);
  auto& connection = *environment.connection();
  selectWritableCard(environment, card);
  environment.confirm(tr("Delete card {} with its {} details?", options.card, dati::countDetails(connection, card)),
                      options.yes);
  auto transaction = environment.transaction();
  selectWritableCard(environment, card);
  const auto before = dati::countRowsOfCard(connection, card);
  environment.budget().CancellaRigaBU65(card);
  environment.requireSuccess();
  const auto after = dati::countRowsOfCard(connection, card);
  transaction.end(dati::RunMode::Write);
  Table table{{{"TABELLA", "Table"}, {"CANCELLATE", "Deleted rows", true}, {"RESTANO", "Left", true}}, {}, {}};
  for (std::size_t i = 0; i < before.size(); ++i)
    table.rows.push_back({before[i].table, before[i].rows - after[i].rows, after[i].rows});
  environment.show(table);
}

}  // namespace

Command deleteCommand() {
  const auto options = std::make_shared<DeleteOptions>();
  return {"delete",
          "Delete a card with everything that hangs on it",
          "  bukorval delete 52 --yes -d demo.db\n"
          "Asks on a terminal; elsewhere --yes is needed.",
          {{"CARD", "identifier of the card", &options->card, true}, {"--yes", "do not ask", &options->yes}},
          [options](Environment& environment) { deleteCard(environment, *options); },
          Writes::Cards};
}

}  // namespace bukorval::host
