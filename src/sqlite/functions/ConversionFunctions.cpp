#include <cmath>

#include "engine/DateNumber.h"
#include "sqlite/functions/FunctionSupport.h"
#include "values/Conversion.h"
#include "values/Decimal.h"
#include "values/Text.h"

namespace sqlite {
namespace {

std::string inColumn(sqlite3_value* column) {
  const auto name = textArgument(column);
  return name.empty() ? std::string() : " in column '" + std::string(name) + "'";
}

double realOf(Int128 units, int scale) {
  const auto parsed = values::Decimal::TryParse(unitsToPlainText(units, scale));
  return parsed ? parsed->toDouble() : static_cast<double>(units) / std::pow(10.0, scale);
}

void toFloat(sqlite3_context* c, sqlite3_value** a) {
  sqlite3_result_double(c, realOf(unitsArgument(a[0]), sqlite3_value_int(a[1])));
}

void fromFloat(sqlite3_context* c, sqlite3_value** a) {
  const int scale = sqlite3_value_int(a[1]);
  const auto decimal = values::Decimal::FromDouble(sqlite3_value_double(a[0])).rounded(scale);
  const auto parsed = parseScaled(decimal.toString());
  const auto units = parsed ? rescale(parsed->units, parsed->scale, scale) : std::nullopt;
  if (!units) throw values::Errore(kNumericOverflow);
  resultUnits(c, *units);
}

void textToNumber(sqlite3_context* c, sqlite3_value** a) {
  const auto text = textArgument(a[0]);
  const int scale = sqlite3_value_int(a[1]);
  const bool decimal = sqlite3_value_int(a[2]) != 0;
  const bool blank = values::trim(text).empty();
  const auto parsed = parseScaled(text);
  if (decimal) {
    if (!parsed) throw values::Errore("Error converting data type nvarchar to numeric.");
    const auto units = rescale(parsed->units, parsed->scale, scale);
    if (!units) throw values::Errore(kNumericOverflow);
    return resultUnits(c, *units);
  }
  // Blanks count as the whole number 0; a text with decimals is no whole number.
  if (blank) return resultUnits(c, 0);
  if (!parsed || parsed->scale != 0)
    throw values::Errore("Conversion failed when converting the nvarchar value '" + std::string(text) +
                         "' to data type int.");
  resultUnits(c, parsed->units);
}

void textToFloat(sqlite3_context* c, sqlite3_value** a) {
  const auto parsed = values::Decimal::TryParse(values::trim(textArgument(a[0])));
  if (!parsed) throw values::Errore("Error converting data type nvarchar to float.");
  sqlite3_result_double(c, parsed->toDouble());
}

void textToDate(sqlite3_context* c, sqlite3_value** a) { sqlite3_result_int64(c, parseDateNumber(textArgument(a[0]))); }

void numberText(sqlite3_context* c, sqlite3_value** a) {
  resultText(c, unitsToPlainText(unitsArgument(a[0]), sqlite3_value_int(a[1])));
}

void floatText(sqlite3_context* c, sqlite3_value** a) {
  resultText(c, values::toPlainText(sqlite3_value_double(a[0])));
}

void dateText(sqlite3_context* c, sqlite3_value** a) {
  const auto date = fromDateNumber(sqlite3_value_int64(a[0]));
  char text[32];
  switch (sqlite3_value_int(a[1])) {
    case 103: std::snprintf(text, sizeof text, "%02d/%02d/%04d", date.day(), date.month(), date.year()); break;
    case 112: std::snprintf(text, sizeof text, "%04d%02d%02d", date.year(), date.month(), date.day()); break;
    default:
      std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", date.year(), date.month(), date.day(),
                    date.hour(), date.minute(), date.second());
  }
  resultText(c, text);
}

void castText(sqlite3_context* c, sqlite3_value** a) {
  const auto text = textArgument(a[0]);
  const int length = sqlite3_value_int(a[1]);
  if (length == 0) return resultText(c, text);
  const auto width = static_cast<std::size_t>(length);
  if (sqlite3_value_int(a[2]) != 0) return resultText(c, values::padRight(text, width));
  resultText(c, values::left(text, width));
}

void assignDecimal(sqlite3_context* c, sqlite3_value** a) {
  const Int128 units = unitsArgument(a[0]);
  if (digitCount(units) > sqlite3_value_int(a[1])) throw values::Errore(kNumericOverflow + inColumn(a[2]));
  resultUnits(c, units);
}

void assignInteger(sqlite3_context* c, sqlite3_value** a) {
  const Int128 units = unitsArgument(a[0]);
  const Int128 limit = Int128{1} << (sqlite3_value_int(a[1]) - 1);
  if (units >= limit || units < -limit)
    throw values::Errore("Arithmetic overflow error converting expression to data type int" + inColumn(a[2]));
  resultUnits(c, units);
}

void assignText(sqlite3_context* c, sqlite3_value** a) {
  auto text = textArgument(a[0]);
  const auto length = static_cast<std::size_t>(sqlite3_value_int(a[1]));
  if (length > 0 && values::length(text) > length) {
    if (values::length(values::rtrim(text)) > length)
      throw values::Errore("String or binary data would be truncated" + inColumn(a[3]));
    text = values::left(text, length);
  }
  if (sqlite3_value_int(a[2]) != 0) return resultText(c, values::padRight(text, length));
  resultText(c, text);
}

constexpr SqlFunction kFunctions[] = {
    {"bk_to_float", 2, strict<toFloat>},
    {"bk_from_float", 2, strict<fromFloat>},
    {"bk_text_to_number", 3, strict<textToNumber>},
    {"bk_text_to_float", 1, strict<textToFloat>},
    {"bk_text_to_date", 1, strict<textToDate>},
    {"bk_number_text", 2, strict<numberText>},
    {"bk_float_text", 1, strict<floatText>},
    {"bk_date_text", 2, strict<dateText>},
    {"bk_cast_text", 3, strict<castText>},
    {"bk_assign_decimal", 3, strict<assignDecimal>},
    {"bk_assign_integer", 3, strict<assignInteger>},
    {"bk_assign_text", 4, strict<assignText>},
};

}  // namespace

std::span<const SqlFunction> conversionFunctions() { return kFunctions; }

}  // namespace sqlite
