#pragma once

#include <cstddef>
#include <string_view>

namespace tsql {

enum class Function {
  Unknown,
  Sum,
  Count,
  Min,
  Max,
  Avg,
  NewId,
  GetDate,
  DateAdd,
  DateDiff,
  Year,
  Month,
  Day,
  IsNull,
  Coalesce,
  NullIf,
  Len,
  LTrim,
  RTrim,
  Upper,
  Lower,
  Substring,
  Left,
  Right,
  Replace,
  Replicate,
  Round,
  Abs,
  Sign,
  Floor,
  Ceiling,
};

enum class DatePart { Year, Month, Day };

struct FunctionRule {
  std::string_view name;
  Function function = Function::Unknown;
  std::size_t least = 0, most = 0;  ///< arguments
};

/// By name without regard to case. An unknown function has a rule too, with any number of arguments.
const FunctionRule& functionRule(std::string_view name);

constexpr bool isAggregate(Function function) { return function >= Function::Sum && function <= Function::Avg; }

}  // namespace tsql
