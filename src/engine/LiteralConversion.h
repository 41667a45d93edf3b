#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "engine/Binding.h"
#include "tsql/Lexer.h"

namespace engine {

/// What a parameter is bound to. A view shows the literal's own text; a string is a text made for the occasion.
using BoundValue = std::variant<std::int64_t, double, std::string_view, std::string>;

/// The value of a literal as the engine stores its own kind: a decimal as units of its own scale.
BoundValue ownValue(const tsql::Literal& literal);

/// The value of a literal as the engine stores the binding's target type. With `assignment` what does not fit the
/// column is refused with SQL Server's words; without, a value between two storable ones is bound as a real that
/// stands between them, so that comparisons come out right.
BoundValue convertedValue(const tsql::Literal& literal, const Binding& binding);

/// The text every match of a LIKE pattern begins with: what stands before its first wildcard.
std::string_view likePrefix(std::string_view pattern);

}  // namespace engine
