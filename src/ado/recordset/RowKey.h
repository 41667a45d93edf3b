#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "values/Variant.h"

namespace ado {

/// A hash of a value such that whatever a filter's = holds equal has one key: numbers by value, text that is a number
/// with that number, dates by their day, other text without regard to case. Values that differ may share a key, so
/// what an index finds must still be tested.
using Key = std::uint64_t;
Key keyOf(const values::Variant& value);
/// The key of several values, in order.
Key combine(Key so_far, Key next);

/// The number that a text holds, as filters read it (point only, blanks around ignored); nothing when there is none.
std::optional<values::Decimal> numberIn(std::string_view text);

}  // namespace ado
