#pragma once

#include <vector>

#include "host/commands/Command.h"

namespace bukorval::host {

/// The options that every command shares: database, output, and one option for each property of the object that can
/// be written as text, under the property's own name.
std::vector<Option> sharedOptions(SharedOptions& options);

}  // namespace bukorval::host
