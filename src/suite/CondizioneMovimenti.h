#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace suite {

/// Reads a condition that selects movements, before it goes into a statement between parentheses. It may be made of
/// the columns of CG41_PRIMANOTA and CG42_MOVCONT, with or without the table's name before them, constants,
/// comparisons, arithmetic, AND, OR, NOT, IN with a list, BETWEEN, LIKE, IS NULL, CASE, conversions and functions of
/// one row. Anything else could reach beyond the movements: subqueries, other columns, totals, variables, comments,
/// a parenthesis or a statement too many.
/// @return nothing for a condition; otherwise why it is none, to stand behind "condizione non ammessa, ".
std::optional<std::string> rifiutoCondizioneMovimenti(std::string_view condizione);

}  // namespace suite
