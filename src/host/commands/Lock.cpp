#include <memory>
#include <string>

#include "dati/Budgets.h"
#include "dati/Failure.h"
#include "dati/Locks.h"
#include "dati/Years.h"
#include "host/commands/Command.h"
#include "host/environment/BudgetName.h"

namespace bukorval::host {
namespace {

struct LockOptions {
  std::string budget, reason;
};

void showLocks(Environment& environment) {
  Table table{{{"BUDGET", "Budget"}, {"DATA", "Locked"}, {"UTENTE", "By"}, {"MOTIVO", "Reason"}}, {}, {}};
  for (const auto& lock : dati::budgetLocks(*environment.connection(), environment.session().CodiceDitta()))
    table.rows.push_back({dati::nameOf(lock.budget), lock.when, lock.user, lock.reason});
  environment.show(table);
}

void lock(Environment& environment, const LockOptions& options) {
  if (!options.budget.empty())
    dati::lockBudget(*environment.connection(), parseBudgetName(environment, options.budget), environment.user(),
                     options.reason);
  environment.noteWritten();
  showLocks(environment);
}

void unlock(Environment& environment, const LockOptions& options) {
  dati::unlockBudget(*environment.connection(), parseBudgetName(environment, options.budget));
  environment.noteWritten();
  showLocks(environment);
}

}  // namespace

Command lockCommand() {
  const auto options = std::make_shared<LockOptions>();
  return {"lock",
          "Keep a budget of a year from being written",
          "  bukorval lock 4/01@2025 --reason \"approved by the board\" -d demo.db\n"
          "  bukorval lock -d demo.db                                        what is locked\n"
          "Every command that writes refuses a locked budget, also with --force. `bukorval unlock` opens it.",
          {{"BUDGET", "TYPE/SUBTYPE@YEAR", &options->budget}, {"--reason", "why", &options->reason}},
          [options](Environment& environment) { lock(environment, *options); }};
}

Command unlockCommand() {
  const auto options = std::make_shared<LockOptions>();
  return {"unlock",
          "Let a locked budget be written again",
          "  bukorval unlock 4/01@2025 -d demo.db",
          {{"BUDGET", "TYPE/SUBTYPE@YEAR", &options->budget, true}},
          [options](Environment& environment) { unlock(environment, *options); }};
}

}  // namespace bukorval::host
