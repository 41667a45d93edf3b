#pragma once

#include <vector>

#include "host/commands/Command.h"

namespace bukorval::host {

/// Every command, and those above them that run others.
std::vector<Command> programCommands();

}  // namespace bukorval::host
