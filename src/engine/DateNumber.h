#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "values/Date.h"

/// Dates as the engine stores them: the integer yyyymmddhhmmss, which orders and compares as the dates do.
namespace engine {

std::int64_t toDateNumber(const values::Date& date);
/// Throws values::Errore when the number stands for no date.
values::Date fromDateNumber(std::int64_t number);

/// Reads a date text that means the same under every language setting: "yyyymmdd", "yyyy-mm-dd", each with an
/// optional " hh:mm[:ss[.fff]]" (or "T"); blanks give 1 January 1900. Fractions of a second are dropped.
/// Throws values::Errore for any other text.
std::int64_t parseDateNumber(std::string_view text);

/// Day `days` counted from 1 January 1900, as a number converted to a date is read.
std::int64_t dateNumberFromDays(std::int64_t days);
/// Days from 1 January 1900 to the date.
std::int64_t daysOfDateNumber(std::int64_t number);

}  // namespace engine
