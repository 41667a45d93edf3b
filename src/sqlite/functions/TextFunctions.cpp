#include <algorithm>
#include <memory>
#include <random>

#include "sqlite/functions/FunctionSupport.h"
#include "sqlite/functions/SqlLikePattern.h"
#include "values/Text.h"

namespace sqlite {
namespace {

std::size_t count(sqlite3_value* value) {
  const auto number = sqlite3_value_int64(value);
  if (number < 0) throw values::Errore("Invalid length parameter passed to a text function.");
  return static_cast<std::size_t>(number);
}

/// A pattern is read once for all the rows it is tried on.
void like(sqlite3_context* context, sqlite3_value** arguments) {
  auto* pattern = static_cast<SqlLikePattern*>(sqlite3_get_auxdata(context, 0));
  std::unique_ptr<SqlLikePattern> fresh;
  if (pattern == nullptr) {
    fresh = std::make_unique<SqlLikePattern>(textArgument(arguments[0]));
    pattern = fresh.get();
  }
  sqlite3_result_int(context, pattern->matches(textArgument(arguments[1])));
  if (fresh) {
    sqlite3_set_auxdata(context, 0, fresh.release(), [](void* kept) { delete static_cast<SqlLikePattern*>(kept); });
  }
}

void len(sqlite3_context* c, sqlite3_value** a) {
  sqlite3_result_int64(c, static_cast<sqlite3_int64>(values::length(values::rtrim(textArgument(a[0])))));
}
void ltrim(sqlite3_context* c, sqlite3_value** a) {
  const auto text = textArgument(a[0]);
  resultText(c, text.substr(std::min(text.find_first_not_of(' '), text.size())));
}
void rtrim(sqlite3_context* c, sqlite3_value** a) { resultText(c, values::rtrim(textArgument(a[0]))); }

/// ASCII and the accented letters of Latin-1.
std::string cased(std::string_view text, bool upper) {
  std::string result(text);
  for (std::size_t i = 0; i < result.size(); ++i) {
    auto& c = result[i];
    if (upper && c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    if (!upper && c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    if (static_cast<unsigned char>(c) != 0xC3 || i + 1 == result.size()) continue;
    const auto letter = static_cast<unsigned char>(result[++i]);
    const bool lower = letter >= 0xA0 && letter != 0xB7 && letter != 0xBF;
    const bool capital = letter >= 0x80 && letter <= 0x9E && letter != 0x97;
    if (upper && lower) result[i] = static_cast<char>(letter - 0x20);
    if (!upper && capital) result[i] = static_cast<char>(letter + 0x20);
  }
  return result;
}
void upper(sqlite3_context* c, sqlite3_value** a) { resultText(c, cased(textArgument(a[0]), true)); }
void lower(sqlite3_context* c, sqlite3_value** a) { resultText(c, cased(textArgument(a[0]), false)); }

/// Positions count from 1; what lies before the text counts against the length.
void substring(sqlite3_context* c, sqlite3_value** a) {
  const auto start = sqlite3_value_int64(a[1]) - 1;
  const auto end = start + static_cast<std::int64_t>(count(a[2]));
  if (end <= 0) return resultText(c, "");
  const auto from = static_cast<std::size_t>(std::max<std::int64_t>(start, 0));
  resultText(c, values::mid(textArgument(a[0]), from, static_cast<std::size_t>(end) - from));
}
void left(sqlite3_context* c, sqlite3_value** a) { resultText(c, values::left(textArgument(a[0]), count(a[1]))); }
void right(sqlite3_context* c, sqlite3_value** a) {
  const auto text = textArgument(a[0]);
  const auto length = values::length(text);
  const auto wanted = std::min(count(a[1]), length);
  resultText(c, values::mid(text, length - wanted, wanted));
}
void replace(sqlite3_context* c, sqlite3_value** a) {
  const auto what = textArgument(a[1]);
  const auto with = textArgument(a[2]);
  std::string text(textArgument(a[0]));
  if (what.empty()) return resultText(c, text);
  for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size()))
    text.replace(at, what.size(), with);
  resultText(c, text);
}
void replicate(sqlite3_context* c, sqlite3_value** a) {
  constexpr std::size_t kLongest = 1'000'000;
  const auto text = textArgument(a[0]);
  const auto times = count(a[1]);
  if (text.size() * times > kLongest) throw values::Errore("The text that REPLICATE would make is too long");
  std::string result;
  for (std::size_t i = 0; i < times; ++i) result += text;
  resultText(c, result);
}

/// A random identifier in its hyphenated form.
void newId(sqlite3_context* c, sqlite3_value**) {
  static thread_local std::mt19937_64 generator = [] {
    std::random_device device;
    std::seed_seq seed{device(), device(), device(), device(), device(), device()};
    return std::mt19937_64(seed);
  }();
  const auto high = (generator() & ~0xF000ULL) | 0x4000ULL;
  const auto low = (generator() & ~(3ULL << 62)) | (2ULL << 62);
  char text[40];
  std::snprintf(text, sizeof text, "%08X-%04X-%04X-%04X-%012llX", static_cast<unsigned>(high >> 32),
                static_cast<unsigned>(high >> 16 & 0xFFFF), static_cast<unsigned>(high & 0xFFFF),
                static_cast<unsigned>(low >> 48), static_cast<unsigned long long>(low & 0xFFFFFFFFFFFFULL));
  resultText(c, text);
}

constexpr SqlFunction kFunctions[] = {
    {"bk_like", 2, strict<like>},           {"bk_len", 1, strict<len>},
    {"bk_ltrim", 1, strict<ltrim>},         {"bk_rtrim", 1, strict<rtrim>},
    {"bk_upper", 1, strict<upper>},         {"bk_lower", 1, strict<lower>},
    {"bk_substring", 3, strict<substring>}, {"bk_left", 2, strict<left>},
    {"bk_right", 2, strict<right>},         {"bk_replace", 3, strict<replace>},
    {"bk_replicate", 2, strict<replicate>}, {"bk_newid", 0, strict<newId>, false},
};

}  // namespace

std::span<const SqlFunction> textFunctions() { return kFunctions; }

}  // namespace sqlite
