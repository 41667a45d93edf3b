#pragma once

#include <cstdint>
#include <set>
#include <vector>

#include "dati/WatchedRun.h"
#include "values/Decimal.h"

namespace bukorval::dati {

/// Raises or lowers what a duplication copied: amounts of the details and due dates, in the duplication's
/// transaction. Reads BU65_TESBUDGET, BU66_DETBUDGET, BU14_SCADCFLOW; writes the last two.
///
///   CopyDeviation deviation(budget, run);
///   run(&CLSKORVAL::BdgDupSchede_Duplicazione);
///   deviation.apply(percentage);
class CopyDeviation {
 public:
  /// Before the run: remembers the due dates that the destination has.
  CopyDeviation(CLSKORVAL& budget, WatchedRun& run);

  struct Counts {
    int amounts = 0, dueDates = 0;
  };
  /// After it. Each is rounded to the cent; the due dates of a card and period add up as before.
  /// @param percentage  5 raises 100.00 to 105.00. Throws Failure when an amount no longer fits.
  Counts apply(const values::Decimal& percentage);

 private:
  struct DueDate {
    std::int64_t id;
    values::Decimal amount;
  };
  using DueDates = std::vector<DueDate>;  ///< of one card and period

  std::set<DetailSnapshot::Key> copiedCells() const;
  std::vector<DueDates> copiedDueDates() const;
  int applyToAmounts(const values::Decimal& factor);
  int applyToDueDates(const values::Decimal& factor);
  ado::RecordsetPtr dueDates() const;

  CLSKORVAL& budget_;
  WatchedRun& run_;
  bool sourceSite_ = false, destinationSite_ = false;  ///< kept by site
  std::set<std::int64_t> earlierDueDates_;
};

}  // namespace bukorval::dati
