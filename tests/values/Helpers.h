#pragma once

#include "support/Test.h"

namespace values {

inline Decimal dec(std::string_view text) { return Decimal::TryParse(text).value(); }

}  // namespace values
