#include "postgres/ConnectionWords.h"

#include <libpq-fe.h>

#include <algorithm>
#include <memory>

#include "ado/connection/ConnectionString.h"
#include "tsql/Names.h"
#include "values/Errore.h"

namespace postgres {
namespace {

struct Alias {
  std::string_view entry, word;
};
constexpr Alias kAliases[] = {
    {"SERVER", "host"},  {"DATA SOURCE", "host"}, {"DATABASE", "dbname"}, {"INITIAL CATALOG", "dbname"},
    {"USER ID", "user"}, {"UID", "user"},         {"USERNAME", "user"},   {"PWD", "password"}};

/// Words that the provider answers for.
constexpr std::string_view kPreset[] = {"client_encoding", "replication"};

struct FreeOptions {
  void operator()(PQconninfoOption* options) const { PQconninfoFree(options); }
};

bool isLibpqWord(std::string_view word) {
  const std::unique_ptr<PQconninfoOption, FreeOptions> known(PQconndefaults());
  for (const auto* each = known.get(); each && each->keyword; ++each)
    if (each->keyword == word) return true;
  return false;
}

std::string wordOf(std::string_view entry) {
  const auto upper = tsql::upperName(entry);
  const auto* alias = std::ranges::find(kAliases, upper, &Alias::entry);
  if (alias != std::end(kAliases)) return std::string(alias->word);
  std::string word(entry);
  for (char& c : word)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  if (!isLibpqWord(word) || std::ranges::find(kPreset, word) != std::end(kPreset))
    throw values::Errore("The connection string has an entry that PostgreSQL does not know: " + std::string(entry));
  return word;
}

}  // namespace

ConnectionWords wordsOf(std::string_view connectionString, std::string_view user, std::string_view password) {
  ConnectionWords words;
  words.busyTimeout = ado::busyTimeout(connectionString);
  const auto add = [&](std::string word, std::string value) {
    words.names.push_back(std::move(word));
    words.values.push_back(std::move(value));
  };
  add("client_encoding", "UTF8");
  add("fallback_application_name", "bukorval");
  for (const auto& [name, value] : ado::connectionEntries(connectionString)) {
    if (tsql::sameName(name, "Provider") || tsql::sameName(name, "Busy Timeout")) continue;
    if (tsql::sameName(name, "Mode")) {
      if (!tsql::sameName(value, "Read")) throw values::Errore("Mode is Read or left out, not '" + value + "'");
      words.readOnly = true;
      continue;
    }
    add(wordOf(name), value);
  }
  if (!user.empty()) {
    add("user", std::string(user));
    add("password", std::string(password));
  }
  return words;
}

}  // namespace postgres
