#include <memory>
#include <string>

#include "host/commands/CardPeriods.h"
#include "host/commands/Command.h"
#include "host/commands/Explain.h"
#include "host/environment/Arguments.h"
#include "host/environment/Selection.h"

namespace bukorval::host {
namespace {

void showPeriods(Environment& environment, const std::string& cardText, bool explain) {
  const auto card = parseArgument(cardText);
  selectCard(environment, card);
  auto table = periodsTable(environment, card);
  if (explain) explainPeriods(environment, table, card);
  environment.show(table);
}

}  // namespace

Command periodsCommand() {
  const auto card = std::make_shared<std::string>();
  const auto explain = std::make_shared<bool>(false);
  return {
      "periods",
      "Show one card period by period",
      "  bukorval periods 12 -d demo.db\n"
      "CARD is the identifier that `bukorval grid` shows in its first column (BU65_ID).",
      {{"CARD", "identifier of the card", card.get(), true},
       {"--explain", "show what each forecast is made of: actuals, forecast, and from which period", explain.get()}},
      [card, explain](Environment& environment) { showPeriods(environment, *card, *explain); }};
}

}  // namespace bukorval::host
