#include "values/Date.h"

#include <chrono>
#include <ctime>

#include "values/Errore.h"
#include "values/Text.h"

namespace values {

namespace {

namespace chr = std::chrono;

constexpr chr::sys_days kDayZero = chr::year{1899} / 12 / 30;
constexpr std::int32_t kFirstDay = (chr::sys_days{chr::year{1753} / 1 / 1} - kDayZero).count();
constexpr std::int32_t kLastDay = (chr::sys_days{chr::year{9999} / 12 / 31} - kDayZero).count();

chr::year_month_day calendar(std::int32_t days) { return kDayZero + chr::days{days}; }

std::int32_t dayNumberOf(const chr::year_month_day& date) {
  return static_cast<std::int32_t>((chr::sys_days{date} - kDayZero).count());
}

chr::year_month_day ymd(int year, int month, int day) {
  return chr::year{year} / chr::month{static_cast<unsigned>(month)} / chr::day{static_cast<unsigned>(day)};
}

bool inRange(std::int64_t days) { return days >= kFirstDay && days <= kLastDay; }

/// The day number of a calendar day; nothing when there is no such day.
std::optional<std::int32_t> findDay(int year, int month, int day) {
  if (year < 1753 || year > 9999 || month < 1 || month > 12 || day < 1 || day > 31) return std::nullopt;
  const chr::year_month_day date = ymd(year, month, day);
  if (!date.ok()) return std::nullopt;
  return dayNumberOf(date);
}

bool isTime(int hour, int minute, int second) {
  return hour >= 0 && hour < 24 && minute >= 0 && minute < 60 && second >= 0 && second < 60;
}

/// Reads exactly `count` digits and moves past them; -1 when they are not there.
int takeNumber(std::string_view& text, std::size_t count) {
  if (text.size() < count) return -1;
  int value = 0;
  for (std::size_t i = 0; i < count; ++i) {
    if (text[i] < '0' || text[i] > '9') return -1;
    value = value * 10 + (text[i] - '0');
  }
  text.remove_prefix(count);
  return value;
}

bool takeSign(std::string_view& text, char sign) {
  if (text.empty() || text.front() != sign) return false;
  text.remove_prefix(1);
  return true;
}

void putNumber(std::string& out, int value, int width) {
  const std::string digits = std::to_string(value);
  out.append(static_cast<std::size_t>(width) - digits.size(), '0').append(digits);
}

void putTime(std::string& out, const Date& date) {
  if (!date.hasTime()) return;
  out += ' ';
  putNumber(out, date.hour(), 2);
  out += ':';
  putNumber(out, date.minute(), 2);
  out += ':';
  putNumber(out, date.second(), 2);
}

struct Parts {
  int year, month, day, hour = 0, minute = 0, second = 0;
};

/// A day or a month before a sign: one digit or two.
int takeShort(std::string_view& text) {
  const bool two = text.size() > 1 && text[1] >= '0' && text[1] <= '9';
  return takeNumber(text, two ? 2 : 1);
}

/// Takes the day in one of its three notations.
std::optional<Parts> takeDay(std::string_view& text) {
  Parts p{};
  if (text.substr(0, 3).find('/') != std::string_view::npos) {
    p.day = takeShort(text);
    if (!takeSign(text, '/')) return std::nullopt;
    p.month = takeShort(text);
    if (!takeSign(text, '/')) return std::nullopt;
    p.year = takeNumber(text, 4);
    return p;
  }
  p.year = takeNumber(text, 4);
  const bool dashes = takeSign(text, '-');
  p.month = dashes ? takeShort(text) : takeNumber(text, 2);
  if (dashes && !takeSign(text, '-')) return std::nullopt;
  p.day = dashes ? takeShort(text) : takeNumber(text, 2);
  return p;
}

bool takeTime(std::string_view& text, Parts& p) {
  if (!takeSign(text, ' ') && !takeSign(text, 'T')) return false;
  p.hour = takeNumber(text, 2);
  if (!takeSign(text, ':')) return false;
  p.minute = takeNumber(text, 2);
  if (takeSign(text, ':')) p.second = takeNumber(text, 2);
  return text.empty() && isTime(p.hour, p.minute, p.second);
}

}  // namespace

Date Date::FromYmd(int year, int month, int day, int hour, int minute, int second) {
  const std::optional<std::int32_t> days = findDay(year, month, day);
  if (!days || !isTime(hour, minute, second))
    throw Errore("Invalid date " + std::to_string(day) + "/" + std::to_string(month) + "/" + std::to_string(year));
  Date date;
  date.days_ = *days;
  date.seconds_ = (hour * 60 + minute) * 60 + second;
  return date;
}

Date Date::Serial(int year, int month, int day) {
  const std::int64_t months = std::int64_t{year} * 12 + month - 1;
  if (months < 0 || months >= 12 * 10'001) throw Errore("Overflow");
  const std::int32_t first = dayNumberOf(ymd(static_cast<int>(months / 12), static_cast<int>(months % 12) + 1, 1));
  const std::int64_t days = std::int64_t{first} + day - 1;
  if (!inRange(days)) throw Errore("Overflow");
  Date date;
  date.days_ = static_cast<std::int32_t>(days);
  return date;
}

Date Date::Now() {
  const std::time_t now = std::time(nullptr);
  const std::tm local = *std::localtime(&now);
  // A leap second counts as the last second of its minute.
  return FromYmd(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                 local.tm_sec < 60 ? local.tm_sec : 59);
}

std::optional<Date> Date::TryParse(std::string_view text) {
  text = trim(text);
  std::optional<Parts> parts = takeDay(text);
  if (!parts || (!text.empty() && !takeTime(text, *parts))) return std::nullopt;
  const std::optional<std::int32_t> days = findDay(parts->year, parts->month, parts->day);
  if (!days) return std::nullopt;
  Date date;
  date.days_ = *days;
  date.seconds_ = (parts->hour * 60 + parts->minute) * 60 + parts->second;
  return date;
}

int Date::year() const { return static_cast<int>(calendar(days_).year()); }
int Date::month() const { return static_cast<int>(static_cast<unsigned>(calendar(days_).month())); }
int Date::day() const { return static_cast<int>(static_cast<unsigned>(calendar(days_).day())); }

Date Date::dateOnly() const {
  Date date = *this;
  date.seconds_ = 0;
  return date;
}

Date Date::addDays(int days) const {
  const std::int64_t moved = std::int64_t{days_} + days;
  if (!inRange(moved)) throw Errore("Overflow");
  Date date = *this;
  date.days_ = static_cast<std::int32_t>(moved);
  return date;
}

Date Date::addMonths(int months) const {
  const int wanted = day();
  Date date = firstOfMonth();
  const std::int64_t target = std::int64_t{date.month()} + months;
  if (target < -12 * 10'000 || target > 12 * 10'000) throw Errore("Overflow");
  date = Serial(date.year(), static_cast<int>(target), 1).lastOfMonth();
  if (date.day() > wanted) date.days_ -= date.day() - wanted;
  date.seconds_ = seconds_;
  return date;
}

Date Date::firstOfMonth() const {
  Date date = dateOnly();
  date.days_ -= day() - 1;
  return date;
}

Date Date::lastOfMonth() const {
  const chr::year_month_day today = calendar(days_);
  Date date;
  date.days_ = dayNumberOf(chr::year_month_day{today.year() / today.month() / chr::last});
  return date;
}

std::string Date::toSql() const {
  std::string out;
  putNumber(out, year(), 4);
  putNumber(out, month(), 2);
  putNumber(out, day(), 2);
  putTime(out, *this);
  return out;
}

std::string Date::toText() const {
  std::string out;
  putNumber(out, day(), 2);
  out += '/';
  putNumber(out, month(), 2);
  out += '/';
  putNumber(out, year(), 4);
  putTime(out, *this);
  return out;
}

int monthsBetween(const Date& from, const Date& to) {
  return (to.year() - from.year()) * 12 + to.month() - from.month();
}

int daysBetween(const Date& from, const Date& to) { return to.dayNumber() - from.dayNumber(); }

}  // namespace values
