#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "values/Export.h"

namespace values {

/// A calendar date with a time of day to the second, years 1753 to 9999, no time zone.
class BUKORVAL_API Date {
 public:
  constexpr Date() = default;

  /// Throws Errore when the day does not exist.
  static Date FromYmd(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);
  /// As date construction does: a month or day out of range rolls over (month 13, day 0, 30 February).
  static Date Serial(int year, int month, int day);
  static Date Now();
  /// Reads "dd/mm/yyyy", "yyyymmdd", "yyyy-mm-dd", each with an optional " hh:mm[:ss]" (or "T").
  static std::optional<Date> TryParse(std::string_view text);

  int year() const;
  int month() const;
  int day() const;
  int hour() const { return seconds_ / 3600; }
  int minute() const { return seconds_ / 60 % 60; }
  int second() const { return seconds_ % 60; }
  bool hasTime() const { return seconds_ != 0; }
  /// Days since 30 December 1899; the time of day is not counted.
  std::int32_t dayNumber() const { return days_; }
  Date dateOnly() const;

  /// DateAdd("d") and DateAdd("m"): a month step keeps the day or takes the last of the month.
  Date addDays(int days) const;
  Date addMonths(int months) const;
  Date firstOfMonth() const;
  Date lastOfMonth() const;

  /// "20110131", with " hh:mm:ss" only when there is a time: SQL Server reads it alike in any language.
  std::string toSql() const;
  /// "31/01/2011", with " hh:mm:ss" only when there is a time.
  std::string toText() const;

  friend auto operator<=>(const Date&, const Date&) = default;

 private:
  std::int32_t days_ = 0;
  std::int32_t seconds_ = 0;
};

/// DateDiff("m"): month boundaries between two dates, negative when `to` is earlier.
BUKORVAL_API int monthsBetween(const Date& from, const Date& to);
/// DateDiff("d").
BUKORVAL_API int daysBetween(const Date& from, const Date& to);

}  // namespace values
