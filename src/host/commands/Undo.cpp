#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "dati/Cards.h"
#include "dati/Failure.h"
#include "dati/History.h"
#include "host/commands/CardChanges.h"
#include "host/commands/Command.h"
#include "host/environment/Selection.h"
#include "language/Language.h"

namespace bukorval::host {
namespace {

void requireWritableCards(Environment& environment, ado::Connection& connection,
                          const std::vector<std::int64_t>& cards) {
  for (const auto& budget : dati::budgetsOfCards(connection, cards)) requireWritable(environment, budget);
}

void undo(Environment& environment, int number) {
  const auto given = number == 0 ? std::nullopt : std::optional<std::int64_t>(number);
  auto transaction = environment.transaction();
  auto& connection = transaction.connection();
  dati::History history(connection, environment.budget().CodiceDitta);
  const auto entry = history.undoable(given);
  const auto cards = history.cardsOf(entry);
  requireWritableCards(environment, connection, cards);
  const auto conflicts = history.takeBack(entry);
  if (!conflicts.empty()) {
    environment.show(conflictTable(conflicts));
    throw dati::Refused(tr("Entry {} cannot be undone: the values above have changed since", entry.number));
  }
  // A deleted card is there again only now.
  requireWritableCards(environment, connection, cards);
  const auto by = transaction.end(dati::RunMode::Write, entry);
  environment.show({{{"NUMERO", "Undone entry", true},
                     {"COMANDO", "Command"},
                     {"RIGHE", "Rows", true},
                     {"ANNULLO", "New entry", true}},
                    {{entry.number, entry.command, entry.rows, by}},
                    {}});
}

}  // namespace

Command undoCommand() {
  const auto number = std::make_shared<int>(0);
  return {"undo",
          "Take back what a command has written into cards",
          "  bukorval undo -d demo.db             the latest entry of the history\n"
          "  bukorval undo 17 -d demo.db          that one\n"
          "Refused, with a list, when a value has changed since. An undo is an entry too, and can be undone.",
          {{.flags = "ENTRY",
            .help = "its number in `bukorval history`",
            .target = number.get(),
            .range = {{1, 2147483647}}}},
          [number](Environment& environment) { undo(environment, *number); },
          Writes::UndoneCards};
}

}  // namespace bukorval::host
