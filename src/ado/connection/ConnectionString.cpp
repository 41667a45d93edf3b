#include "ado/connection/ConnectionString.h"

#include <algorithm>
#include <charconv>
#include <system_error>

#include "values/Errore.h"
#include "values/Text.h"

namespace ado {
namespace {

constexpr int kBusyTimeout = 5;           ///< seconds
constexpr int kLongestBusyTimeout = 600;  ///< seconds

/// Reads the entries of a connection string one after the other.
class Entries {
 public:
  explicit Entries(std::string_view text) : rest_(text) {}

  bool next() {
    while (!rest_.empty()) {
      const auto start = rest_;
      const auto stop = rest_.find_first_of("=;");
      key = values::trim(rest_.substr(0, stop));
      const bool hasValue = stop != std::string_view::npos && rest_[stop] == '=';
      rest_.remove_prefix(stop == std::string_view::npos ? rest_.size() : stop + 1);
      if (!hasValue) continue;
      readValue();
      written = start.substr(0, start.size() - rest_.size());
      return true;
    }
    return false;
  }

  std::string_view key;
  std::string value;
  std::string_view written;  ///< the whole entry with the semicolon that ends it, if one does

 private:
  void readValue() {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(' '), rest_.size()));
    const char open = rest_.empty() ? '\0' : rest_.front();
    const char close = open == '{' ? '}' : open;
    value.clear();
    if (close == '"' || close == '\'' || close == '}') readEnclosed(close);
    const auto end = std::min(rest_.find(';'), rest_.size());
    value += values::rtrim(rest_.substr(0, end));
    rest_.remove_prefix(std::min(end + 1, rest_.size()));
  }

  void readEnclosed(char close) {
    std::size_t at = 1;
    for (; at < rest_.size(); ++at) {
      if (rest_[at] == close) {
        if (at + 1 == rest_.size() || rest_[at + 1] != close) break;
        ++at;
      }
      value += rest_[at];
    }
    rest_.remove_prefix(std::min(at + 1, rest_.size()));
  }

  std::string_view rest_;
};

}  // namespace

std::string connectionEntry(std::string_view connectionString, std::string_view key) {
  for (Entries entries(connectionString); entries.next();)
    if (values::compareText(entries.key, key) == 0) return entries.value;
  return {};
}

std::vector<std::pair<std::string, std::string>> connectionEntries(std::string_view connectionString) {
  std::vector<std::pair<std::string, std::string>> found;
  for (Entries entries(connectionString); entries.next();) found.emplace_back(entries.key, entries.value);
  return found;
}

std::string connectionValue(std::string_view value) {
  std::string quoted = "\"";
  for (const char c : value) quoted.append(c == '"' ? 2 : 1, c);
  return quoted + '"';
}

int busyTimeout(std::string_view connectionString) {
  const auto text = connectionEntry(connectionString, "Busy Timeout");
  if (text.empty()) return kBusyTimeout;
  int seconds = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
  if (error != std::errc() || end != text.data() + text.size() || seconds < 0 || seconds > kLongestBusyTimeout)
    throw values::Errore("Busy Timeout is a number of seconds from 0 to " + std::to_string(kLongestBusyTimeout) +
                         ", not '" + text + "'");
  return seconds;
}

std::string withoutEntry(std::string_view connectionString, std::string_view key) {
  std::string rest;
  for (Entries entries(connectionString); entries.next();)
    if (values::compareText(entries.key, key) != 0) rest += entries.written;
  return rest;
}

}  // namespace ado
