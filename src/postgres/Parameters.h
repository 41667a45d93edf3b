#pragma once

#include <string>
#include <vector>

#include "engine/LiteralConversion.h"
#include "postgres/emitter/Translate.h"

namespace postgres {

/// A value of a column of that type in the server's words. Throws values::Errore for a text that it cannot store.
std::string serverText(const engine::BoundValue& value, const tsql::Type& type);

/// The parameters of one execution, as libpq takes them.
class Parameters {
 public:
  /// Throws values::Errore in SQL Server's words for a value that its column cannot take.
  Parameters(const std::vector<Parameter>& parameters, const std::vector<tsql::Literal>& literals);

  int count() const { return static_cast<int>(texts_.size()); }
  const char* const* values() const { return pointers_.data(); }

 private:
  std::vector<std::string> texts_;
  std::vector<const char*> pointers_;
};

}  // namespace postgres
