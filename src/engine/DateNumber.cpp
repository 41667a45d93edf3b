#include "engine/DateNumber.h"

#include "values/Errore.h"
#include "values/Text.h"

namespace engine {
namespace {

constexpr std::int64_t kTime = 1'000'000;
constexpr const char* kNoDate = "Conversion failed when converting date and/or time from character string";
constexpr const char* kOutOfRange = "The conversion to a date and time resulted in an out-of-range value";

/// Takes digits, separators and blanks off the front of a text.
class Reader {
 public:
  explicit Reader(std::string_view text) : rest_(text) {}
  bool done() const { return rest_.empty(); }
  bool take(char c) {
    if (rest_.empty() || rest_.front() != c) return false;
    rest_.remove_prefix(1);
    return true;
  }
  int number(std::size_t digits) {
    if (rest_.size() < digits) throw values::Errore(kNoDate);
    int value = 0;
    for (std::size_t i = 0; i < digits; ++i) {
      const char c = rest_[i];
      if (c < '0' || c > '9') throw values::Errore(kNoDate);
      value = value * 10 + (c - '0');
    }
    rest_.remove_prefix(digits);
    return value;
  }
  void skipDigits() {
    while (!rest_.empty() && rest_.front() >= '0' && rest_.front() <= '9') rest_.remove_prefix(1);
  }

 private:
  std::string_view rest_;
};

std::int64_t compose(int year, int month, int day, int hour, int minute, int second) {
  return ((year * 100LL + month) * 100 + day) * kTime + (hour * 100LL + minute) * 100 + second;
}

std::int64_t checked(int year, int month, int day, int hour, int minute, int second) {
  try {
    return toDateNumber(values::Date::FromYmd(year, month, day, hour, minute, second));
  } catch (const values::Errore&) {
    throw values::Errore(kOutOfRange);
  }
}

values::Date firstDay() { return values::Date::FromYmd(1900, 1, 1); }

}  // namespace

std::int64_t toDateNumber(const values::Date& date) {
  return compose(date.year(), date.month(), date.day(), date.hour(), date.minute(), date.second());
}

values::Date fromDateNumber(std::int64_t number) {
  const auto day = static_cast<int>(number / kTime);
  const auto time = static_cast<int>(number % kTime);
  return values::Date::FromYmd(day / 10000, day / 100 % 100, day % 100, time / 10000, time / 100 % 100, time % 100);
}

std::int64_t parseDateNumber(std::string_view text) {
  text = values::trim(text);
  if (text.empty()) return compose(1900, 1, 1, 0, 0, 0);
  Reader reader(text);
  const int year = reader.number(4);
  const bool dashes = reader.take('-');
  const int month = reader.number(2);
  if (dashes && !reader.take('-')) throw values::Errore(kNoDate);
  const int day = reader.number(2);
  if (reader.done()) return checked(year, month, day, 0, 0, 0);
  if (!reader.take(' ') && !(dashes && reader.take('T'))) throw values::Errore(kNoDate);
  const int hour = reader.number(2);
  if (!reader.take(':')) throw values::Errore(kNoDate);
  const int minute = reader.number(2);
  const int second = reader.take(':') ? reader.number(2) : 0;
  if (reader.take('.')) reader.skipDigits();
  if (!reader.done()) throw values::Errore(kNoDate);
  return checked(year, month, day, hour, minute, second);
}

std::int64_t dateNumberFromDays(std::int64_t days) {
  if (days < -60'000 || days > 3'000'000) throw values::Errore(kOutOfRange);
  try {
    return toDateNumber(firstDay().addDays(static_cast<int>(days)));
  } catch (const values::Errore&) {
    throw values::Errore(kOutOfRange);
  }
}

std::int64_t daysOfDateNumber(std::int64_t number) { return values::daysBetween(firstDay(), fromDateNumber(number)); }

}  // namespace engine
