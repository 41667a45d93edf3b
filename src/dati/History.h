#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "ado/connection/Connection.h"
#include "values/Variant.h"

/// What commands wrote into cards (BK03_STORICO, BK04_MODIFICHE): who, when, and each row before and after.
namespace bukorval::dati {

/// Who writes, and with which command.
struct Author {
  std::string user, command;
};

struct HistoryEntry {
  std::int64_t number = 0;
  values::Variant when, user, command;
  std::int64_t rows = 0;     ///< that it changed
  values::Variant undoneBy;  ///< number of the entry that took it back; Null
};

/// One value of a card that an entry changed, or, of an entry that cannot be taken back, that changed since: `before`
/// is then what the entry left and `after` what is there now. No column stands for the whole row.
struct CardChange {
  std::int64_t entry = 0;
  std::int64_t card = 0;
  std::string table;
  values::Variant kind, period;  ///< of a detail, the period also of a due date; Null
  std::string column;
  values::Variant before, after;
};

class History {
 public:
  /// Nothing is recorded on an engine that keeps no track of changes.
  History(ado::Connection& connection, values::Variant company);

  /// Makes the tables where they are missing. Not inside a transaction.
  void prepare();
  /// Adds an entry, in the transaction of the changes. @return its number.
  std::int64_t add(const Author& author, const ado::ChangeSet& changes);

  /// Those with a greater number, the newest first.
  std::vector<HistoryEntry> entries(std::int64_t after = 0) const;
  /// Throws Refused when there is none, or when it has been undone. Without a number the newest that has not been.
  HistoryEntry undoable(std::optional<std::int64_t> number) const;
  /// The values of one card, the newest change first.
  std::vector<CardChange> ofCard(std::int64_t card) const { return ofCard(card, entries()); }
  /// Of these entries alone.
  std::vector<CardChange> ofCard(std::int64_t card, const std::vector<HistoryEntry>& among) const;
  /// The cards that an entry's rows belong to.
  std::vector<std::int64_t> cardsOf(const HistoryEntry& entry) const;

  /// Puts every row back as it was before the entry, or writes nothing and gives what has changed since. In the
  /// caller's transaction. Throws Refused when a card that would go has got further rows.
  std::vector<CardChange> takeBack(const HistoryEntry& entry);
  void markUndone(const HistoryEntry& entry, std::int64_t by);

 private:
  void refuseOrphans(const std::vector<std::int64_t>& cards) const;
  std::string changesOf(std::int64_t entry) const;

  ado::Connection& connection_;
  values::Variant company_;
};

}  // namespace bukorval::dati
