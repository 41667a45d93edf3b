#include "sqlite/ConnectionWords.h"

#include <array>
#include <string>

#include "ado/connection/ConnectionString.h"
#include "values/Errore.h"
#include "values/Text.h"

namespace sqlite {
namespace {

using ado::connectionEntry;
using values::Errore;

bool isTrue(const std::string& entry) {
  return values::compareText(entry, "true") == 0 || values::compareText(entry, "yes") == 0 || entry == "1";
}

struct Synchronous {
  std::string_view word;
  const char* statement;
};
/// The usual one first.
constexpr std::array kSynchronous{Synchronous{"Full", "PRAGMA synchronous = FULL"},
                                  Synchronous{"Normal", "PRAGMA synchronous = NORMAL"},
                                  Synchronous{"Off", "PRAGMA synchronous = OFF"}};

const char* synchronous(std::string_view connectionString) {
  const auto text = connectionEntry(connectionString, "Synchronous");
  if (text.empty()) return kSynchronous.front().statement;
  for (const auto& each : kSynchronous)
    if (values::compareText(each.word, text) == 0) return each.statement;
  throw Errore("Synchronous is Full, Normal or Off, not '" + text + "'");
}

}  // namespace

ConnectionWords wordsOf(std::string_view text) {
  ConnectionWords words{{connectionEntry(text, "Data Source"), isTrue(connectionEntry(text, "Create")),
                         values::compareText(connectionEntry(text, "Mode"), "read") == 0},
                        ado::busyTimeout(text),
                        synchronous(text)};
  if (words.file.file.empty()) throw Errore("The connection string names no Data Source");
  return words;
}

}  // namespace sqlite
