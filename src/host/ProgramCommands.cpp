#include "host/ProgramCommands.h"

#include "host/commands/Commands.h"
#ifdef BUKORVAL_SERVER
#include "host/server/ServeCommand.h"
#endif

namespace bukorval::host {

std::vector<Command> programCommands() {
  auto all = commands();
#ifdef BUKORVAL_SERVER
  all.push_back(serveCommand());
#endif
  return all;
}

}  // namespace bukorval::host
