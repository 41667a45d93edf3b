#include "ado/recordset/RowKey.h"

#include "values/Errore.h"
#include "values/Text.h"

namespace ado {
namespace {

using values::Date;
using values::Decimal;
using values::Kind;
using values::Variant;

constexpr Key kNullKey = 0x6e756c6cU;
constexpr Key kOtherKey = 0x6f74686572U;

Key mix(Key key) {
  key = (key ^ key >> 30) * 0xbf58476d1ce4e5b9U;
  key = (key ^ key >> 27) * 0x94d049bb133111ebU;
  return key ^ key >> 31;
}

Key keyOfWhole(std::int64_t value) { return mix(static_cast<Key>(value)); }

Key keyOfBytes(std::string_view text) {
  Key key = 0xcbf29ce484222325U;
  for (const char c : text) key = (key ^ static_cast<unsigned char>(c)) * 0x100000001b3U;
  return mix(key);
}

Key keyOfNumber(const Decimal& value) {
  const Decimal number = value.normalized();
  if (const auto units = number.toScaled(number.scale()))
    return number.scale() == 0 ? keyOfWhole(*units) : combine(keyOfWhole(*units), static_cast<Key>(number.scale()));
  return keyOfBytes(number.toString());
}

Key keyOfDay(const Date& date) { return keyOfWhole(date.year() * 10'000 + date.month() * 100 + date.day()); }

Key keyOfText(const std::string& text) {
  // All from the folded form, so that equal texts have one key whatever they look like.
  const std::string folded = values::foldText(text);
  if (const auto number = numberIn(folded)) return keyOfNumber(*number);
  if (const auto date = Date::TryParse(folded)) return keyOfDay(*date);
  return keyOfBytes(folded);
}

Key keyOfDouble(double value) {
  try {
    return keyOfNumber(Decimal::FromDouble(value));
  } catch (const values::Errore&) {
    return kOtherKey;
  }
}

}  // namespace

Key combine(Key so_far, Key next) { return mix(so_far * 0x9e3779b97f4a7c15U + next); }

std::optional<Decimal> numberIn(std::string_view text) {
  text = values::trim(text);
  constexpr std::string_view kNumberStarts = "+-.0123456789";
  if (text.empty() || kNumberStarts.find(text.front()) == std::string_view::npos) return std::nullopt;
  try {
    return Decimal::TryParse(text);
  } catch (const values::Errore&) {
    return std::nullopt;  // too large for an amount: a text like any other
  }
}

Key keyOf(const Variant& value) {
  switch (value.kind()) {
    case Kind::Empty:
    case Kind::Null: return kNullKey;
    case Kind::Int16: return keyOfWhole(value.as<std::int16_t>());
    case Kind::Int32: return keyOfWhole(value.as<std::int32_t>());
    case Kind::Boolean: return keyOfWhole(value.as<bool>() ? 1 : 0);
    case Kind::Double: return keyOfDouble(value.as<double>());
    case Kind::Decimal: return keyOfNumber(value.as<Decimal>());
    case Kind::Date: return keyOfDay(value.as<Date>());
    case Kind::String: return keyOfText(value.as<std::string>());
    case Kind::Object: break;
  }
  return kOtherKey;
}

}  // namespace ado
