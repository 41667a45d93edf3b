#include <cmath>

#include "sqlite/functions/FunctionSupport.h"

namespace sqlite {
namespace {

constexpr const char* kDivideByZero = "Divide by zero error encountered.";

Int128 checked(const std::optional<Int128>& value) {
  if (!value || digitCount(*value) > kMaxDigits) throw values::Errore(kNumericOverflow);
  return *value;
}

int intArgument(sqlite3_value* value) { return sqlite3_value_int(value); }

void add(sqlite3_context* c, sqlite3_value** a) {
  resultUnits(c, checked(addChecked(unitsArgument(a[0]), unitsArgument(a[1]))));
}
void subtract(sqlite3_context* c, sqlite3_value** a) {
  resultUnits(c, checked(addChecked(unitsArgument(a[0]), -unitsArgument(a[1]))));
}
void multiply(sqlite3_context* c, sqlite3_value** a) {
  resultUnits(c, checked(multiplyChecked(unitsArgument(a[0]), unitsArgument(a[1]))));
}

/// Long division, digit by digit, so that no intermediate needs more than 128 bits.
void divide(sqlite3_context* c, sqlite3_value** a) {
  const int scaleA = intArgument(a[1]), scaleB = intArgument(a[3]), scale = intArgument(a[4]);
  Int128 numerator = unitsArgument(a[0]);
  Int128 denominator = unitsArgument(a[2]);
  if (denominator == 0) throw values::Errore(kDivideByZero);
  const bool negative = (numerator < 0) != (denominator < 0);
  if (numerator < 0) numerator = -numerator;
  if (denominator < 0) denominator = -denominator;
  Int128 quotient = numerator / denominator;
  Int128 rest = numerator % denominator;
  int step = scale + scaleB - scaleA;
  for (; step > 0; --step) {
    const auto tenfold = multiplyChecked(rest, 10);
    if (!tenfold) throw values::Errore(kNumericOverflow);
    quotient = checked(addChecked(checked(multiplyChecked(quotient, 10)), *tenfold / denominator));
    rest = *tenfold % denominator;
  }
  for (; step < 0; ++step) quotient /= 10;
  resultUnits(c, negative ? -quotient : quotient);
}

void wholeDivide(sqlite3_context* c, sqlite3_value** a) {
  const Int128 denominator = unitsArgument(a[1]);
  if (denominator == 0) throw values::Errore(kDivideByZero);
  resultUnits(c, unitsArgument(a[0]) / denominator);
}
void modulo(sqlite3_context* c, sqlite3_value** a) {
  const Int128 denominator = unitsArgument(a[1]);
  if (denominator == 0) throw values::Errore(kDivideByZero);
  resultUnits(c, unitsArgument(a[0]) % denominator);
}
void average(sqlite3_context* c, sqlite3_value** a) {
  const Int128 count = unitsArgument(a[1]);
  if (count != 0) resultUnits(c, unitsArgument(a[0]) / count);
}
void floatDivide(sqlite3_context* c, sqlite3_value** a) {
  const double denominator = sqlite3_value_double(a[1]);
  if (denominator == 0) throw values::Errore(kDivideByZero);
  sqlite3_result_double(c, sqlite3_value_double(a[0]) / denominator);
}
void floatModulo(sqlite3_context* c, sqlite3_value** a) {
  const double denominator = sqlite3_value_double(a[1]);
  if (denominator == 0) throw values::Errore(kDivideByZero);
  sqlite3_result_double(c, std::fmod(sqlite3_value_double(a[0]), denominator));
}
void compare(sqlite3_context* c, sqlite3_value** a) {
  const Int128 left = unitsArgument(a[0]), right = unitsArgument(a[1]);
  sqlite3_result_int(c, left < right ? -1 : left > right ? 1 : 0);
}
void changeScale(sqlite3_context* c, sqlite3_value** a) {
  resultUnits(c, checked(rescale(unitsArgument(a[0]), intArgument(a[1]), intArgument(a[2]))));
}
void truncate(sqlite3_context* c, sqlite3_value** a) {
  resultUnits(c, unitsArgument(a[0]) / powerOfTen(intArgument(a[1])));
}
void absolute(sqlite3_context* c, sqlite3_value** a) {
  const Int128 units = unitsArgument(a[0]);
  resultUnits(c, units < 0 ? -units : units);
}
/// Rounds at a digit before or after the point; the scale stays.
void roundAt(sqlite3_context* c, sqlite3_value** a) {
  const int scale = intArgument(a[1]), digits = intArgument(a[2]);
  const Int128 units = unitsArgument(a[0]);
  if (digits >= scale) return resultUnits(c, units);
  const int cut = scale - digits;
  if (cut > kMaxDigits) return resultUnits(c, 0);
  const Int128 unit = powerOfTen(cut);
  resultUnits(c, checked(multiplyChecked(divideRounded(units, unit), unit)));
}
void whole(sqlite3_context* c, sqlite3_value** a, int direction) {
  const Int128 unit = powerOfTen(intArgument(a[1]));
  const Int128 units = unitsArgument(a[0]);
  const Int128 part = units / unit;
  const Int128 rest = units % unit;
  const bool step = direction < 0 ? rest < 0 : rest > 0;
  resultUnits(c, step ? part + direction : part);
}
void floorOf(sqlite3_context* c, sqlite3_value** a) { whole(c, a, -1); }
void ceilingOf(sqlite3_context* c, sqlite3_value** a) { whole(c, a, 1); }

constexpr SqlFunction kFunctions[] = {
    {"bk_add", 2, strict<add>},
    {"bk_sub", 2, strict<subtract>},
    {"bk_mul", 2, strict<multiply>},
    {"bk_div", 5, strict<divide>},
    {"bk_int_div", 2, strict<wholeDivide>},
    {"bk_mod", 2, strict<modulo>},
    {"bk_average", 2, strict<average>},
    {"bk_float_div", 2, strict<floatDivide>},
    {"bk_float_mod", 2, strict<floatModulo>},
    {"bk_cmp", 2, strict<compare>},
    {"bk_rescale", 3, strict<changeScale>},
    {"bk_truncate", 2, strict<truncate>},
    {"bk_abs", 1, strict<absolute>},
    {"bk_round", 3, strict<roundAt>},
    {"bk_floor", 2, strict<floorOf>},
    {"bk_ceiling", 2, strict<ceilingOf>},
};

/// The engine aligns what it hands out to 8 bytes only.
using LooseInt128 [[gnu::aligned(8)]] = Int128;

/// The state of one sum; the engine hands it out zeroed.
struct Sum {
  LooseInt128 total;
  bool any;
};

void sumStep(sqlite3_context* context, int, sqlite3_value** arguments) noexcept {
  if (isNull(arguments[0])) return;
  auto* sum = static_cast<Sum*>(sqlite3_aggregate_context(context, sizeof(Sum)));
  if (sum == nullptr) return sqlite3_result_error_nomem(context);
  sum->any = true;
  if (sqlite3_value_type(arguments[0]) == SQLITE_INTEGER) {
    // 2^63 times 2^63 values fit 128 bits.
    sum->total += sqlite3_value_int64(arguments[0]);
    return;
  }
  answer(context, [&] { sum->total = checked(addChecked(sum->total, unitsArgument(arguments[0]))); });
}

void sumFinal(sqlite3_context* context) noexcept {
  const auto* sum = static_cast<Sum*>(sqlite3_aggregate_context(context, 0));
  if (sum == nullptr || !sum->any) return sqlite3_result_null(context);
  answer(context, [&] { resultUnits(context, sum->total); });
}

/// The least or greatest number so far; `Sum::total` is that number.
template <bool least>
void extremeStep(sqlite3_context* context, int, sqlite3_value** arguments) noexcept {
  if (isNull(arguments[0])) return;
  auto* extreme = static_cast<Sum*>(sqlite3_aggregate_context(context, sizeof(Sum)));
  if (extreme == nullptr) return sqlite3_result_error_nomem(context);
  answer(context, [&] {
    const Int128 units = unitsArgument(arguments[0]);
    if (!extreme->any || (least ? units < extreme->total : extreme->total < units)) extreme->total = units;
    extreme->any = true;
  });
}

}  // namespace

std::span<const SqlFunction> numberFunctions() { return kFunctions; }

void registerSums(sqlite3* database) {
  constexpr int kFlags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
  using Step = void (*)(sqlite3_context*, int, sqlite3_value**) noexcept;
  for (const auto& [name, step] :
       {std::pair<const char*, Step>{"bk_sum", sumStep}, {"bk_min", extremeStep<true>}, {"bk_max", extremeStep<false>}})
    sqlite3_create_function_v2(database, name, 1, kFlags, nullptr, nullptr, step, sumFinal, nullptr);
}

}  // namespace sqlite
