#include <memory>
#include <string>

#include "dati/Transaction.h"
#include "host/commands/Command.h"
#include "host/commands/DetailKind.h"
#include "host/environment/Arguments.h"
#include "host/environment/Selection.h"
#include "language/Language.h"

namespace bukorval::host {
namespace {

struct ClearOptions {
  std::string card, kind = "all";
  bool yes = false;
};

void clear(Environment& environment, const ClearOptions& options) {
  const auto card = parseArgument(options.card);
  selectWritableCard(environment, card);
  const bool all = options.kind == "all";
  const BdgTipoDettaglio kind = all ? bdgDettaglioTutti : parseDetailKind(options.kind).kind;
  if (!all) requireDetailKind(environment.budget(), kind);
  environment.confirm(all ? tr("Clear the values of every kind of card {}?", options.card)
                          : tr("Clear the {} values of card {}?", options.kind, options.card),
                      options.yes);
  auto transaction = environment.transaction();
  selectWritableCard(environment, card);
  environment.budget().UpdateNullValoriBU66(card, kind);
  environment.requireSuccess();
  transaction.end(dati::RunMode::Write);
  environment.show({{{"BU65_ID", "Card", true}, {"SVUOTATI", "Cleared"}}, {{card, options.kind}}, {}});
}

}  // namespace

Command clearCommand() {
  const auto options = std::make_shared<ClearOptions>();
  return {"clear",
          "Clear the values of a card, keeping its rows",
          "  bukorval clear 52 --kind actual --yes -d demo.db\n"
          "Asks on a terminal; elsewhere --yes is needed.",
          {{"CARD", "identifier of the card", &options->card, true},
           {.flags = "--kind",
            .help = "all, budget, actual, orders, forecastN or a number",
            .target = &options->kind,
            .showDefault = true},
           {"--yes", "do not ask", &options->yes}},
          [options](Environment& environment) { clear(environment, *options); },
          Writes::Cards};
}

}  // namespace bukorval::host
