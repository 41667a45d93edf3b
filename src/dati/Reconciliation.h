#pragma once

#include <atomic>
#include <cstdint>
#include <future>
#include <vector>

#include "ado/connection/Connection.h"
#include "dati/CardAccounts.h"
#include "dati/Landing.h"
#include "dati/Movements.h"
#include "dati/WatchedRun.h"
#include "dati/WrittenPeriods.h"
#include "object/CLSKORVAL.h"
#include "values/Decimal.h"

/// Whether the movements that a card elaboration should have brought to the cards are there, to the cent.
namespace bukorval::dati {

/// Movements of one account and site that landed nowhere for the same reason.
struct Unlanded {
  int cardKind = 0;
  values::Variant account, description, site;
  Reason reason = Reason::NoCard;
  std::int64_t lines = 0;
  values::Decimal amount;
};

/// The movements of one card kind. Amounts have two decimals and the sign that the cards give them.
struct CardKindTotals {
  int cardKind = 0;
  std::int64_t lines = 0, nowhereLines = 0, againLines = 0;
  values::Decimal movements;    ///< of the range, each line once
  values::Decimal landed;       ///< what the cards hold after the run, in the periods that it wrote
  values::Decimal nowhere;      ///< of the lines that no card took
  values::Decimal again;        ///< of the lines that several cards took, all but the first time
  values::Decimal percentages;  ///< what shares and deviations of the cards add
  /// What all of this does not explain: 0 when the run wrote what it should.
  values::Decimal unexplained() const { return movements - (landed + nowhere - again - percentages); }
};

struct CardReconciliation {
  std::vector<Unlanded> unlanded;  ///< by card kind, account, site and reason
  std::vector<CardKindTotals> totals;
  /// Lines beside all of this, on balance sheet accounts of a budget that plans none: debits less credits.
  std::int64_t besideLines = 0;
  values::Decimal beside;
  /// Something landed nowhere, or does not add up.
  bool hasRest() const;
};

/// Follows the runs of a card elaboration, and then compares the movements of their dates with what the cards hold.
/// The cards are those that passed by in the runs, the amounts on them those that a snapshot read.
class CardReconciler {
 public:
  /// What narrows the runs: movements of other sites, or of accounts without a card, are then none of theirs.
  struct Narrowing {
    bool toSites = false, toCards = false;
  };
  /// @param connection  of the runs, in their transaction: no other may change movements meanwhile. Where it has a
  ///                    reader, the movements are read beside the runs.
  CardReconciler(CLSKORVAL& budget, ado::Connection& connection, Narrowing narrowing)
      : budget_(budget), connection_(connection), narrowing_(narrowing), landing_(budget) {}
  ~CardReconciler() { stop_ = true; }
  CardReconciler(const CardReconciler&) = delete;
  CardReconciler& operator=(const CardReconciler&) = delete;

  /// A run of the object begins, for its card kind and dates.
  void beginRun();
  /// The card that the run has just done.
  void addCard(const ado::Recordset& cards);
  /// Reads the movements, once for each range of dates, unless that is done, and the cards' percentages.
  /// @param run  what it has watched is the detail kind written.
  CardReconciliation reconcile(const WatchedRun& run);

 private:
  /// Whether a card that the runs took is on a balance sheet account.
  bool plansBalanceSheet() const;
  struct Range {
    values::Date from, to;
    WrittenPeriods periods;
    std::vector<ElaboratedCard> cards;
    std::future<MovementSums> movements;  ///< being read
  };
  MovementScope scopeOf(const Range& range) const;
  bool byCompetence() const;
  void readBeside(Range& range);
  MovementSums movementsOf(Range& range);

  CLSKORVAL& budget_;
  ado::Connection& connection_;
  Narrowing narrowing_;
  Landing landing_;
  std::atomic<bool> stop_ = false;
  std::vector<int> kinds_;
  std::vector<Range> ranges_;
  std::size_t range_ = 0;  ///< the one under way
};

}  // namespace bukorval::dati
