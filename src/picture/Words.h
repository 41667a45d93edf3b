#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "values/Decimal.h"

/// The language of pictures and pages.
namespace bukorval::picture {

/// What is written beside the figures of a report.
struct Phrases {
  std::string_view language;  ///< of the page: "it"
  std::string_view budget, actual, forecast;
  std::string_view trend;   ///< heads the picture by period
  std::string_view deltas;  ///< heads that of the greatest deltas
  std::string_view worse, better;
  std::string_view others, total, none, whole;
  std::string_view upTo;           ///< before the last month that counts
  std::string_view brokenAxis;     ///< that an axis does not begin at zero
  std::string_view withoutActual;  ///< the step of periods that have a budget alone
  std::string_view incomplete;     ///< before the names of such periods
  std::string_view sortHint;
};

struct Words {
  Phrases phrases;
  char separator;  ///< decimal sign
  /// What heads a column, by the field of an axis or a value.
  std::function<std::string(std::string_view field)> titleOf;

  std::string number(const values::Decimal& number, int decimals) const;
  /// With its sign, a plus too.
  std::string difference(const values::Decimal& number, int decimals) const;
};

/// In the language that the program speaks.
Phrases phrases();

}  // namespace bukorval::picture
