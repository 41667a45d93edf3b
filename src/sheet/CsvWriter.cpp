#include "sheet/CsvWriter.h"

#include <algorithm>

#include "values/Conversion.h"
#include "values/Decimal.h"

namespace bukorval::sheet {

std::ostream& CsvWriter::next() {
  if (!first_) out_ << style_.separator;
  first_ = false;
  return out_;
}

void CsvWriter::field(std::string_view text) { next() << quoted(text, style_); }

void CsvWriter::value(const values::Variant& value, int decimals) { field(textOf(value, decimals, style_)); }

void CsvWriter::endLine() {
  out_ << '\n';
  first_ = true;
}

std::string CsvWriter::quoted(std::string_view text, const CsvStyle& style) {
  const char special[] = {style.separator, '"', '\r', '\n'};
  if (text.find_first_of({special, std::size(special)}) == std::string_view::npos) return std::string(text);
  std::string quoted = "\"";
  for (const char c : text) quoted.append(c == '"' ? 2 : 1, c);
  return quoted + '"';
}

std::string CsvWriter::textOf(const values::Variant& value, int decimals, const CsvStyle& style) {
  if (!value.isNumber() || decimals == 0) return values::toPlainText(value);
  auto text = (values::toDecimal(value) + values::Decimal::FromScaled(0, decimals)).toString();
  std::ranges::replace(text, '.', style.decimalSign);
  return text;
}

}  // namespace bukorval::sheet
