#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dati/History.h"
#include "frame/BudgetAnno.h"
#include "values/Date.h"

/// A guard against lost edits: who has seen a card can have it written only as long as nobody has changed it since.
namespace bukorval::dati {

/// When a card was changed last: the later of its stamp (BU65_DATAULTAGG) and its newest entry in the history, which
/// knows also what leaves the stamp alone, elaborations among it.
struct LastChange {
  std::optional<values::Date> when;  ///< nothing for a card that was never stamped
  std::int64_t entry = 0;            ///< that entry; 0 without one, then changes in one second are told as one
};

/// "2025-10-06 09:30:00", with " #17" for an entry; "-" for no date.
std::string textOf(const LastChange& change);
/// Reads such a text, with the date in any form that dates have. Nothing when it is none.
std::optional<LastChange> parseLastChange(std::string_view text);

/// Of these cards (BU65_ID), those that are there. Reads the whole history.
std::map<std::int64_t, LastChange> lastChanges(ado::Connection& connection, const values::Variant& company,
                                               const std::vector<std::int64_t>& cards);

/// What others have made of a card since it was seen.
struct ChangesSince {
  LastChange last;
  std::vector<HistoryEntry> entries;  ///< the newest first; of a client that keeps no history there are none
  std::vector<CardChange> changes;    ///< theirs
};
/// Nothing when the card is still what was seen. In the transaction that writes it, before it does.
std::optional<ChangesSince> changesSince(ado::Connection& connection, const values::Variant& company, std::int64_t card,
                                         const LastChange& seen);

/// From when on changes are asked for.
struct Moment {
  LastChange last;        ///< the last change that was there
  std::int64_t rows = 0;  ///< of an engine whose rows tell when they were committed: ado::Connection::rowMark
};
/// "2025-10-06 09:30:00 #17 @731"
std::string textOf(const Moment& moment);
/// Reads such a text, or that of a last change. Nothing when it is none.
std::optional<Moment> parseMoment(std::string_view text);

struct BudgetChanges {
  Moment now;                                               ///< to ask with the next time
  std::map<std::int64_t, std::optional<LastChange>> cards;  ///< nothing for a card that is gone
};
/// The cards of a budget that were changed after that moment, none of them when there is no moment. What no history
/// knows is told by the rows of the cards where the engine can, otherwise by their stamps: these count seconds, so
/// `now` is never the second that still runs, and what was changed in it may be told once more.
BudgetChanges changedSince(ado::Connection& connection, const BudgetAnno& budget, const std::optional<Moment>& since);

}  // namespace bukorval::dati
