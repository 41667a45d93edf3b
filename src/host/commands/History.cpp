#include "dati/History.h"

#include <map>
#include <memory>
#include <string>

#include "dati/CardRows.h"
#include "host/commands/CardChanges.h"
#include "host/commands/Command.h"
#include "host/environment/Arguments.h"
#include "host/environment/Errors.h"
#include "language/Language.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

void showEntries(Environment& environment, const dati::History& history) {
  Table table{{{"NUMERO", "Entry", true},
               {"DATA", "When"},
               {"UTENTE", "Who"},
               {"COMANDO", "Command"},
               {"RIGHE", "Rows", true},
               {"ANNULLATO", "Undone by", true}},
              {},
              {}};
  for (const auto& entry : history.entries())
    table.rows.push_back({entry.number, entry.when, entry.user, entry.command, entry.rows, entry.undoneBy});
  environment.show(table);
}

void history(Environment& environment, const std::string& card) {
  const dati::History history(*environment.connection(), environment.session().CodiceDitta());
  if (card.empty()) return showEntries(environment, history);
  const auto number = parseArgument(card);
  if (!number.isNumber())
    throw UsageError(tr("A card is given by its identifier, a whole number (BU65_ID in the grid)"));
  environment.show(tableOf(history.ofCard(values::toInt64(number)), history.entries()));
}

}  // namespace

Command historyCommand() {
  const auto card = std::make_shared<std::string>();
  return {"history",
          "Show what commands have written, or what happened to one card",
          "  bukorval history -d demo.db\n"
          "  bukorval history 12 -d demo.db\n"
          "`bukorval undo` takes an entry back.",
          {{"CARD", "identifier of a card", card.get()}},
          [card](Environment& environment) { history(environment, *card); }};
}

}  // namespace bukorval::host
