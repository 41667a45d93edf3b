#include "postgres/RowReader.h"

#include <algorithm>
#include <charconv>

#include "engine/ResultSet.h"
#include "postgres/Handle.h"
#include "values/Errore.h"

namespace postgres {
namespace {

using engine::put;
using tsql::Type;
using tsql::TypeKind;
using values::Decimal;
using values::Variant;

/// Signs that surely fit 64 bits.
constexpr std::size_t kShortDigits = 18;

[[noreturn]] void refuse(std::string_view text) {
  throw values::Errore("A column holds '" + std::string(text) + "', which its type does not allow");
}

template <class Integer>
Integer integer(std::string_view text) {
  Integer value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc::result_out_of_range)
    throw values::Errore("Arithmetic overflow error converting expression to data type int");
  if (error != std::errc() || end != text.data() + text.size()) refuse(text);
  return value;
}

/// The digits with as many behind the point as the type has.
std::string unitsText(std::string_view text, int scale) {
  const auto point = text.find('.');
  std::string digits(text.substr(0, point));
  auto fraction = point == std::string_view::npos ? std::string_view() : text.substr(point + 1);
  const auto wanted = static_cast<std::size_t>(scale);
  // What the server keeps behind the type's last decimal is zeros.
  fraction = fraction.substr(0, wanted);
  digits.append(fraction).append(wanted - fraction.size(), '0');
  return digits;
}

Decimal decimal(std::string_view text, int scale) {
  // Most come as they are to be: digits around one point.
  std::int64_t units = 0;
  std::size_t digits = 0, behind = 0;
  bool point = false;
  const bool negative = text.starts_with('-');
  for (const char c : text.substr(negative ? 1 : 0)) {
    if (c == '.') {
      point = true;
      continue;
    }
    if (c < '0' || c > '9') refuse(text);
    if (++digits > kShortDigits) return engine::wideDecimal(unitsText(text, scale), scale);
    units = units * 10 + (c - '0');
    behind += point ? 1U : 0U;
  }
  if (behind == static_cast<std::size_t>(scale)) return Decimal::FromScaled(negative ? -units : units, scale);
  return engine::wideDecimal(unitsText(text, scale), scale);
}

int number(std::string_view text, std::size_t at, std::size_t count) { return integer<int>(text.substr(at, count)); }

/// "2011-01-31 13:05:09"
values::Date date(std::string_view text) {
  if (text.size() != 19) refuse(text);
  return values::Date::FromYmd(number(text, 0, 4), number(text, 5, 2), number(text, 8, 2), number(text, 11, 2),
                               number(text, 14, 2), number(text, 17, 2));
}

double real(std::string_view text) {
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) refuse(text);
  return value;
}

void readValue(std::string_view text, const Type& type, Variant& cell) {
  switch (type.kind) {
    case TypeKind::Integer:
      if (type.precision == 16) return put(cell, integer<std::int16_t>(text));
      if (type.precision == 32) return put(cell, integer<std::int32_t>(text));
      return put(cell, integer<std::int64_t>(text));
    case TypeKind::Decimal: return put(cell, decimal(text, type.scale));
    case TypeKind::Float: return put(cell, real(text));
    case TypeKind::Bit: return put(cell, text.starts_with('t'));
    case TypeKind::DateTime: return put(cell, date(text));
    case TypeKind::Text:
    case TypeKind::Unknown: break;
  }
  put(cell, text);
}

}  // namespace

RowReader::RowReader(const std::vector<tsql::ResultColumn>& columns) : results_(columns) {
  for (const auto& column : columns) columns_.push_back({column.type, {}, {}});
}

ado::RecordsetPtr RowReader::readAll(const PGresult* result) {
  auto set = engine::emptySet(results_);
  const int rows = PQntuples(result);
  for (int row = 0; row < rows; ++row) readRow(result, row, set->AppendRow());
  if (rows > 0) set->MoveFirst();
  return set;
}

void RowReader::readEach(const PGresult* result, const ado::RowVisitor& visit) {
  const auto set = engine::emptySet(results_);
  const auto cells = set->AppendRow();
  set->MoveFirst();
  const auto each = visit(*set);
  set->Fields().KeepLookedUp();
  const int rows = PQntuples(result);
  for (int row = 0; row < rows; ++row) {
    std::ranges::fill(cells, Variant::Null());
    readRow(result, row, cells);
    each();
  }
}

void RowReader::readRow(const PGresult* result, int row, std::span<Variant> cells) {
  int position = 0;
  for (auto& column : columns_) {
    if (PQgetisnull(result, row, position) == 0)
      read(column, cell(result, row, position), cells[static_cast<std::size_t>(position)]);
    ++position;
  }
}

void RowReader::read(Column& column, std::string_view text, Variant& cell) {
  if (column.type.kind != TypeKind::DateTime) return readValue(text, column.type, cell);
  if (text != column.lastText) {
    column.lastDate = date(text);
    column.lastText = text;
  }
  put(cell, column.lastDate);
}

Variant parsedValue(std::string_view text, const Type& type) {
  Variant value;
  readValue(text, type, value);
  return value;
}

}  // namespace postgres
