#pragma once

#include <string_view>

#include "ado/filter/FilterColumn.h"
#include "ado/filter/FilterExpression.h"

namespace ado {

/// Reads the text of a filter. Throws Errore that says where and why it does not parse, or what `find` throws.
FilterExpression parseFilter(std::string_view text, const FindColumn& find);

}  // namespace ado
