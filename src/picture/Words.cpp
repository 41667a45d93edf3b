#include "picture/Words.h"

#include "language/Language.h"
#include "values/NumberText.h"

namespace bukorval::picture {

std::string Words::number(const values::Decimal& number, int decimals) const {
  return values::groupedNumber(number, decimals, separator);
}

std::string Words::difference(const values::Decimal& number, int decimals) const {
  const bool positive = !number.isZero() && !number.isNegative();
  return (positive ? "+" : "") + this->number(number, decimals);
}

Phrases phrases() {
  return {.language = chosenLanguage() == Language::Italian ? "it" : "en",
          .budget = translated("Budget"),
          .actual = translated("Actual"),
          .forecast = translated("Forecast"),
          .trend = translated("Budget and actual by period"),
          .deltas = translated("From budget to actual: the largest deltas"),
          .worse = translated("unfavourable"),
          .better = translated("favourable"),
          .others = translated("Others"),
          .total = translated("Total"),
          .none = translated("(none)"),
          .whole = translated("Year"),
          .upTo = translated("up to"),
          .brokenAxis = translated("The axis does not begin at zero."),
          .withoutActual = translated("without actuals"),
          .incomplete = translated("The budget has periods without actuals, too:"),
          .sortHint = translated("A heading sorts the rows; the third time brings back their first order.")};
}

}  // namespace bukorval::picture
