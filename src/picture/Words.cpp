#include "picture/Words.h"

#include "values/NumberText.h"

namespace bukorval::picture {
namespace {

constexpr Phrases kItalian{.language = "it",
                           .budget = "Budget",
                           .actual = "Consuntivo",
                           .forecast = "Forecast",
                           .trend = "Budget e consuntivo per periodo",
                           .deltas = "Dal budget al consuntivo: gli scostamenti maggiori",
                           .worse = "sfavorevole",
                           .better = "favorevole",
                           .others = "Altri",
                           .total = "Totale",
                           .none = "(nessuno)",
                           .whole = "Anno",
                           .upTo = "fino a",
                           .brokenAxis = "L'asse non parte da zero.",
                           .withoutActual = "senza consuntivo",
                           .incomplete = "Nel budget anche periodi senza consuntivo:",
                           .sortHint = "Un'intestazione ordina le righe; la terza volta torna l'ordine iniziale."};
constexpr Phrases kEnglish{.language = "en",
                           .budget = "Budget",
                           .actual = "Actual",
                           .forecast = "Forecast",
                           .trend = "Budget and actual by period",
                           .deltas = "From budget to actual: the largest deltas",
                           .worse = "unfavourable",
                           .better = "favourable",
                           .others = "Others",
                           .total = "Total",
                           .none = "(none)",
                           .whole = "Year",
                           .upTo = "up to",
                           .brokenAxis = "The axis does not begin at zero.",
                           .withoutActual = "without actuals",
                           .incomplete = "The budget has periods without actuals, too:",
                           .sortHint = "A heading sorts the rows; the third time brings back their first order."};

}  // namespace

std::string Words::number(const values::Decimal& number, int decimals) const {
  return values::groupedNumber(number, decimals, separator);
}

std::string Words::difference(const values::Decimal& number, int decimals) const {
  const bool positive = !number.isZero() && !number.isNegative();
  return (positive ? "+" : "") + this->number(number, decimals);
}

const Phrases& phrasesFor(Language language) { return language == Language::Italian ? kItalian : kEnglish; }

}  // namespace bukorval::picture
