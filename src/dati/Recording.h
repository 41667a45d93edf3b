#pragma once

#include <cstdint>
#include <optional>

#include "dati/History.h"

namespace bukorval::dati {

/// Records for the history what is changed in cards on a connection, from now until it ends.
class Recording {
 public:
  /// Makes the history's tables where they are missing: not inside a transaction.
  /// @param author  without one nothing is recorded, nor on an engine that keeps no track of changes.
  Recording(ado::Connection& connection, values::Variant company, std::optional<Author> author);
  ~Recording();
  Recording(const Recording&) = delete;
  Recording& operator=(const Recording&) = delete;

  /// Writes the entry, in the transaction of the changes.
  /// @param undone  the entry that they take back.
  /// @return its number, 0 when nothing has changed.
  std::int64_t finish(const std::optional<HistoryEntry>& undone = std::nullopt);

 private:
  ado::Connection& connection_;
  values::Variant company_;
  std::optional<Author> author_;  ///< as long as it records
};

}  // namespace bukorval::dati
