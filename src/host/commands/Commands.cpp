#include "host/commands/Commands.h"

/// To add a command, write a file that defines `Command NAMECommand()` and give it a line here.
// clang-format off
#define BUKORVAL_COMMANDS(command) \
  command(create)                  \
  command(import)                  \
  command(export)                  \
  command(years)                   \
  command(batches)                 \
  command(budgets)                 \
  command(list)                    \
  command(grid)                    \
  command(periods)                 \
  command(report)                  \
  command(card)                    \
  command(movements)               \
  command(compare)                 \
  command(set)                     \
  command(spread)                  \
  command(raise)                   \
  command(clear)                   \
  command(new)                     \
  command(delete)                  \
  command(align)                   \
  command(elaborateCards)          \
  command(elaborateBalances)       \
  command(duplicate)               \
  command(lock)                    \
  command(unlock)                  \
  command(history)                 \
  command(undo)                    \
  command(check)                   \
  command(backup)                  \
  command(restore)                 \
  command(call)                    \
  command(completion)
// clang-format on

namespace bukorval::host {

#define BUKORVAL_DECLARE(name) Command name##Command();
BUKORVAL_COMMANDS(BUKORVAL_DECLARE)

std::vector<Command> commands() {
#define BUKORVAL_MAKE(name) name##Command(),
  return {BUKORVAL_COMMANDS(BUKORVAL_MAKE)};
}

}  // namespace bukorval::host
