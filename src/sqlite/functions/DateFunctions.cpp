#include "engine/DateNumber.h"
#include "sqlite/functions/FunctionSupport.h"

namespace sqlite {
namespace {

values::Date dateArgument(sqlite3_value* value) { return fromDateNumber(sqlite3_value_int64(value)); }
char part(sqlite3_value* value) { return textArgument(value).front(); }

void now(sqlite3_context* c, sqlite3_value**) { sqlite3_result_int64(c, toDateNumber(values::Date::Now())); }

void dateAdd(sqlite3_context* c, sqlite3_value** a) {
  const int number = sqlite3_value_int(a[1]);
  const auto date = dateArgument(a[2]);
  const auto moved =
      part(a[0]) == 'd' ? date.addDays(number) : date.addMonths(part(a[0]) == 'y' ? 12 * number : number);
  sqlite3_result_int64(c, toDateNumber(moved));
}

void dateDiff(sqlite3_context* c, sqlite3_value** a) {
  const auto from = dateArgument(a[1]);
  const auto to = dateArgument(a[2]);
  switch (part(a[0])) {
    case 'd': return sqlite3_result_int(c, values::daysBetween(from, to));
    case 'm': return sqlite3_result_int(c, values::monthsBetween(from, to));
    default: return sqlite3_result_int(c, to.year() - from.year());
  }
}

constexpr SqlFunction kFunctions[] = {
    {"bk_now", 0, strict<now>, false},
    {"bk_dateadd", 3, strict<dateAdd>},
    {"bk_datediff", 3, strict<dateDiff>},
};

}  // namespace

std::span<const SqlFunction> dateFunctions() { return kFunctions; }

}  // namespace sqlite
