#include "sheet/CellNumber.h"

#include <charconv>
#include <cmath>

#include "dati/import/CsvModel.h"
#include "language/Language.h"
#include "values/Errore.h"

namespace bukorval::sheet {
namespace {

using values::Decimal;

Decimal shortestDecimal(const std::string& text) {
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc{} || end != text.data() + text.size() || !std::isfinite(number))
    throw values::Errore(tr("{} is not a number", dati::shown(text)));
  constexpr double kBeyondEveryMeasure = 1e15;
  if (std::abs(number) >= kBeyondEveryMeasure) throw values::Errore(tr("{} is too large", dati::shown(text)));
  return Decimal::FromDouble(number);
}

Decimal fitting(const std::string& text, const dati::Measure& measure) {
  const auto number = shortestDecimal(text);
  const auto rounded = number.rounded(measure.decimals);
  const auto rest = number - rounded;
  const auto hair = Decimal::FromScaled(1, 9);
  if (rest > hair || -rest > hair)
    throw values::Errore(tr("{} has more than {} decimals", number.toString(), measure.decimals));
  if (rounded.integerDigits() > measure.digits) throw values::Errore(tr("{} is too large", number.toString()));
  return rounded.normalized();
}

}  // namespace

values::Variant cellNumber(const RawCell& cell, const RawTable& table, const dati::Measure& measure) {
  if (!table.lettered) {
    const auto type = measure.kind == bdgValoreImporto ? dati::CsvType::Amount : dati::CsvType::Quantity;
    return dati::parseField(cell.text, {"", type, true, 0, ""}, table.decimalSign);
  }
  switch (cell.kind) {
    case RawKind::Number: return fitting(cell.text, measure);
    case RawKind::Text: throw values::Errore(tr("{} is text, not a number", dati::shown(cell.text)));
    case RawKind::Boolean: throw values::Errore(tr("a truth value is no number"));
    case RawKind::Error: throw values::Errore(tr("the cell shows {}, not a number", dati::shown(cell.text)));
    case RawKind::Unknown: break;
  }
  throw values::Errore(tr("a formula without its value: save the file with a spreadsheet program"));
}

std::optional<Decimal> plainDecimal(std::string_view text) {
  try {
    return Decimal::TryParse(text);
  } catch (const values::Errore&) {
    return {};
  }
}

}  // namespace bukorval::sheet
