#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "ado/connection/Connection.h"
#include "dati/Recording.h"
#include "object/CLSKORVAL.h"

namespace bukorval::dati {

enum class RunMode {
  Write,
  Trial  ///< taken back at the end, so that nothing of it stays
};

/// Makes everything the object does on its connection one transaction, those it opens itself among it. What is not
/// ended is taken back with the scope.
///
///   Transaction transaction(budget, connection);
///   budget.CancellaRigaBU65(card);
///   requireSuccess(budget);
///   transaction.end(RunMode::Write);
class Transaction {
 public:
  /// @param connection  the object's own; it has it back afterwards, whatever happens.
  /// @param author      for the history of what is changed in cards; without one none is kept.
  Transaction(CLSKORVAL& budget, ado::ConnectionPtr connection, std::optional<Author> author = std::nullopt);
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  /// For statements beside the object's, in the same transaction.
  ado::Connection& connection() const;
  /// Keeps the work, or takes it back after a trial. Throws when the database refuses.
  /// @return number of the history's entry, 0 when there is none.
  /// @param undone  the entry that this work takes back.
  std::int64_t end(RunMode mode, const std::optional<HistoryEntry>& undone = std::nullopt);

 private:
  class Shared;
  CLSKORVAL& budget_;
  ado::ConnectionPtr own_;
  Recording recording_;
  std::shared_ptr<Shared> shared_;
};

}  // namespace bukorval::dati
