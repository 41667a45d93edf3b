#pragma once

#include <optional>
#include <string>

#include "values/Variant.h"

namespace suite {

/// A value's text when a statement reads it as one number, so that it can stand in it bare: digits with at most one
/// sign, one point and one exponent; blanks around stay. Null, Empty and a blank text are themselves: the statement
/// then lacks a number and is refused as a whole. Nothing for any other value: "1 OR 1=1", "1,5", a date, a Boolean.
std::optional<std::string> numeroSql(const values::Variant& valore);

}  // namespace suite
