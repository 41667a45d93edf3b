#include "dati/WatchedRun.h"
#include "host/commands/Command.h"
#include "host/environment/Progress.h"
#include "host/environment/Selection.h"

namespace bukorval::host {
namespace {

void align(Environment& environment) {
  requireBudget(environment);
  auto& budget = environment.budget();
  auto transaction = environment.transaction();
  requireWritable(environment, budgetScelto(budget));
  dati::WatchedRun run(budget, transaction, {budgetScelto(budget)});
  const Progress progress(environment);
  run(&CLSKORVAL::AllineaBU65_A_StrutturaBU60);
  transaction.end(dati::RunMode::Write);
  environment.show({{{"PRIMA", "Cards before", true}, {"AGGIUNTE", "Added", true}, {"DOPO", "Cards now", true}},
                    {{run.before().cards().size(), run.newCards(), run.after().cards().size()}},
                    {}});
}

}  // namespace

Command alignCommand() {
  return {"align",
          "Add the cards that the budget's structure has and the budget lacks",
          "  bukorval align -d demo.db -t 4 -s 01 -y 2025\n"
          "Adds, never removes; running it again adds nothing.",
          {},
          align,
          Writes::Cards};
}

}  // namespace bukorval::host
