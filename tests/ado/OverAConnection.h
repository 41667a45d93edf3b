#pragma once

#include <ostream>

#include "ado/connection/Connection.h"
#include "support/Test.h"

/// A connection of some provider, and short ways to talk to it.
namespace provider_cases {

struct Provider {
  std::string name;
  std::function<ado::ConnectionPtr()> open;
  friend std::ostream& operator<<(std::ostream& out, const Provider& provider) { return out << provider.name; }
};

/// "1|abc|NULL; 2|..." for the rows of a set.
inline std::string shown(const ado::RecordsetPtr& rows) {
  std::string text;
  if (rows->State() == ado::adStateClosed) return "closed";
  for (bool first = true; !rows->Eof(); rows->MoveNext(), first = false) {
    if (!first) text += "; ";
    for (std::size_t i = 0; i < rows->Fields().Count(); ++i) {
      const auto& value = rows->Fields().Item(i).Value();
      if (i > 0) text += "|";
      text += value.isNull() ? "NULL" : values::toPlainText(value);
    }
  }
  return text;
}

/// The rows of a statement, or the text of its error.
inline std::string outcomeOf(ado::Connection& connection, std::string_view text) {
  try {
    return shown(connection.Execute(text));
  } catch (const values::Errore& error) {
    return error.what();
  }
}

class OverAConnection : public testing::TestWithParam<Provider> {
 protected:
  void SetUp() override { connection = GetParam().open(); }

  ado::RecordsetPtr run(std::string_view text) { return connection->Execute(text); }
  std::string rows(std::string_view text) { return shown(run(text)); }
  std::string outcome(std::string_view text) { return outcomeOf(*connection, text); }

  ado::ConnectionPtr connection;
};

}  // namespace provider_cases
