#pragma once

#include <map>
#include <string>
#include <vector>

#include "frame/Contesto.h"

namespace bukorval {

/// What an element of a structure fixes: columns of BU65_TESBUDGET and their values.
using ElementoBU60 = std::map<std::string, values::Variant>;

/// The elements of a structure in the order of their numbers. Throws for a name that is no column.
/// Reads BU61_STRUTTELEM.
std::vector<ElementoBU60> leggiElementiBU60(Contesto& ctx, const std::string& struttura);

}  // namespace bukorval
