#include "tsql/Functions.h"

#include <algorithm>

#include "tsql/Names.h"

namespace tsql {
namespace {

constexpr std::size_t kMany = 99;

constexpr FunctionRule kRules[] = {
    {"SUM", Function::Sum, 1, 1},
    {"COUNT", Function::Count, 1, 1},
    {"COUNT_BIG", Function::Count, 1, 1},
    {"MIN", Function::Min, 1, 1},
    {"MAX", Function::Max, 1, 1},
    {"AVG", Function::Avg, 1, 1},
    {"NEWID", Function::NewId, 0, 0},
    {"GETDATE", Function::GetDate, 0, 0},
    {"DATEADD", Function::DateAdd, 3, 3},
    {"DATEDIFF", Function::DateDiff, 3, 3},
    {"YEAR", Function::Year, 1, 1},
    {"MONTH", Function::Month, 1, 1},
    {"DAY", Function::Day, 1, 1},
    {"ISNULL", Function::IsNull, 2, 2},
    {"COALESCE", Function::Coalesce, 1, kMany},
    {"NULLIF", Function::NullIf, 2, 2},
    {"LEN", Function::Len, 1, 1},
    {"LTRIM", Function::LTrim, 1, 1},
    {"RTRIM", Function::RTrim, 1, 1},
    {"UPPER", Function::Upper, 1, 1},
    {"LOWER", Function::Lower, 1, 1},
    {"SUBSTRING", Function::Substring, 3, 3},
    {"LEFT", Function::Left, 2, 2},
    {"RIGHT", Function::Right, 2, 2},
    {"REPLACE", Function::Replace, 3, 3},
    {"REPLICATE", Function::Replicate, 2, 2},
    {"ROUND", Function::Round, 2, 2},
    {"ABS", Function::Abs, 1, 1},
    {"SIGN", Function::Sign, 1, 1},
    {"FLOOR", Function::Floor, 1, 1},
    {"CEILING", Function::Ceiling, 1, 1},
};
constexpr FunctionRule kUnknown{"", Function::Unknown, 0, kMany};

}  // namespace

const FunctionRule& functionRule(std::string_view name) {
  const auto* known =
      std::find_if(std::begin(kRules), std::end(kRules), [&](const auto& rule) { return sameName(rule.name, name); });
  return known == std::end(kRules) ? kUnknown : *known;
}

}  // namespace tsql
