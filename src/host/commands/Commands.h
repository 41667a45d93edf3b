#pragma once

#include <vector>

#include "host/commands/Command.h"

namespace bukorval::host {

/// Every command of the program, in the order of the help.
std::vector<Command> commands();

}  // namespace bukorval::host
