#pragma once

#include "host/commands/Command.h"

namespace bukorval::host {

/// `serve` stands above the other commands: it runs them.
Command serveCommand();

}  // namespace bukorval::host
