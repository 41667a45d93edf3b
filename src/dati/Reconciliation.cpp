#include "dati/Reconciliation.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <tuple>
#include <utility>

#include "dati/Movements.h"
#include "frame/BudgetAnno.h"
#include "frame/TestoSql.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval::dati {
namespace {

using values::Decimal;
using values::Variant;

constexpr int kCost = 0;
constexpr int kRevenue = 1;
// Natures of an account.
constexpr int kBalanceSheetAccount = 0;
constexpr int kRevenueAccount = 1;

std::string keyOf(const Variant& value) { return values::foldText(values::toPlainText(value)); }

/// Puts the movements of the ranges to the account of one card kind or the other.
class Reckoning {
 public:
  Reckoning(const CLSKORVAL& budget, CardReconciler::Narrowing narrowing, const Landing& landing,
            const std::vector<int>& kinds, bool plansBalanceSheet)
      : budget_(budget), narrowing_(narrowing), landing_(landing), plansBalanceSheet_(plansBalanceSheet) {
    for (const int kind : kinds) totals_[kind].cardKind = kind;
  }

  void add(const MovementSums& movements, const CardAccounts& accounts, const WrittenPeriods& periods) {
    movements.forEach([&](const auto& group) { add(group, accounts.cardsOf(group.account), periods); });
  }

  CardReconciliation finish(const WatchedRun& run, const CardPercentages& percentages) {
    // What the run changed on cards that should have had no movement belongs to what landed, too.
    for (const auto& change : run.changes())
      cells_.try_emplace(change.key.card, Cells{totals_.begin()->first, {}, nullptr})
          .first->second.expected.try_emplace(change.key.period);
    for (const auto& [card, cells] : cells_) {
      auto& totals = totals_[cells.kind];
      for (const auto& [period, expected] : cells.expected) {
        if (const auto& amount = run.after().amount({card, period}); !amount.isNothing())
          totals.landed = totals.landed + values::toDecimal(amount);
        totals.again = totals.again + expected;
        totals.percentages = totals.percentages + percentages.apply(card, expected) - expected;
      }
    }
    CardReconciliation result = std::move(beside_);
    for (auto& [kind, totals] : totals_) {
      totals.again = totals.again - (totals.movements - totals.nowhere);
      result.totals.push_back(totals);
    }
    for (auto& [key, unlanded] : unlanded_) result.unlanded.push_back(std::move(unlanded));
    return result;
  }

 private:
  using Cards = Landing::Cards;
  using Inside = Landing::Inside;
  /// What the runs wrote on a card.
  struct Cells {
    int kind;
    std::map<int, Decimal> expected;         ///< by period
    const WrittenPeriods* lately = nullptr;  ///< whose periods are all there
  };

  void add(const MovementGroup& group, const Cards& cards, const WrittenPeriods& periods) {
    if (isOutside(group, cards)) return;
    Cards takers;
    std::ranges::copy_if(cards, std::back_inserter(takers),
                         [&](const auto* card) { return landing_.takes(*card, group); });
    const auto inside = landing_.insideOf(group, periods);
    const auto reason = landing_.reasonOf(group, cards, takers, inside);
    const auto kinds = kindsOf(group, reason || takers.empty() ? cards : takers);
    if (kinds.empty()) addBeside(group, inside);
    for (const int kind : kinds)
      if (totals_.contains(kind)) addTo(kind, group, reason, inside);
    if (!reason) land(group, takers, periods);
  }

  bool isOutside(const MovementGroup& group, const Cards& cards) const {
    if (narrowing_.toCards && cards.empty()) return true;
    return narrowing_.toSites && landing_.perSite() &&
           std::ranges::none_of(budget_.ElencoSedi->Keys(),
                                [&](const auto& site) { return Landing::same(group.site, site); });
  }

  static bool isBalanceSheet(const MovementGroup& group) {
    return !values::isBlank(group.nature) && values::toInt32(group.nature) == kBalanceSheetAccount;
  }

  /// The card kinds that a line counts for: those of its cards, else that of its account.
  std::set<int> kindsOf(const MovementGroup& group, const Cards& cards) const {
    std::set<int> kinds;
    for (const auto* card : cards) kinds.insert(card->kind);
    if (!kinds.empty()) return kinds;
    // The counterparts of costs and revenues belong to no budget that plans none of them.
    if (isBalanceSheet(group) && !plansBalanceSheet_) return {};
    return {!values::isBlank(group.nature) && values::toInt32(group.nature) == kRevenueAccount ? kRevenue : kCost};
  }

  void addTo(int kind, const MovementGroup& group, std::optional<Reason> reason, const Inside& inside) {
    auto& totals = totals_[kind];
    const auto amount = Landing::withSign(inside.amount, group, kind);
    totals.lines += group.lines;
    totals.movements = totals.movements + amount;
    if (!reason) return;
    totals.nowhereLines += group.lines;
    totals.nowhere = totals.nowhere + amount;
    auto& unlanded =
        unlanded_
            .try_emplace(
                {kind, keyOf(group.account), values::isBlank(group.site) ? 0 : values::toInt32(group.site), *reason},
                Unlanded{kind, group.account, group.description, group.site, *reason, 0, Decimal()})
            .first->second;
    unlanded.lines += group.lines;
    unlanded.amount = unlanded.amount + amount;
  }

  void addBeside(const MovementGroup& group, const Inside& inside) {
    beside_.besideLines += group.lines;
    beside_.beside = beside_.beside + Landing::withSign(inside.amount, group, kCost);
  }

  /// A card that takes a line has all its periods written.
  void land(const MovementGroup& group, const Cards& takers, const WrittenPeriods& periods) {
    std::map<int, int> takersOfKind;
    for (const auto* card : takers) {
      if (++takersOfKind[card->kind] > 1) totals_[card->kind].againLines += group.lines;
      auto& cells = cells_.try_emplace(card->id, Cells{card->kind, {}, nullptr}).first->second;
      if (std::exchange(cells.lately, &periods) != &periods)
        for (const int period : periods.all()) cells.expected.try_emplace(period);
      for (std::size_t month = 1; month < group.amounts.size(); ++month) {
        if (group.amounts[month].isZero() || periods.ofMonth(month) == 0) continue;
        auto& expected = cells.expected.at(periods.ofMonth(month));
        expected = expected + Landing::withSign(group.amounts[month], group, card->kind);
      }
    }
  }

  const CLSKORVAL& budget_;
  CardReconciler::Narrowing narrowing_;
  const Landing& landing_;
  bool plansBalanceSheet_;     ///< there are cards on balance sheet accounts
  CardReconciliation beside_;  ///< only that part of it
  std::map<int, CardKindTotals> totals_;
  std::map<std::int64_t, Cells> cells_;  ///< by card
  std::map<std::tuple<int, std::string, int, Reason>, Unlanded> unlanded_;
};

}  // namespace

bool CardReconciliation::hasRest() const {
  return !unlanded.empty() ||
         std::ranges::any_of(totals, [](const auto& kind) { return !kind.unexplained().isZero(); });
}

bool CardReconciler::plansBalanceSheet() const {
  TestoSql sql;
  sql.riga(" SELECT BU65_ID ")
      .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .riga(" INNER JOIN CG24_TABPDC WITH (NOLOCK) ON CG24_GRUPPO_CG10 = BU65_GRUPPO_CG10 ")
      .riga("    AND CG24_CONTO = BU65_CONTO_CG24 ")
      .testo(condizioniSchede({budget_.CodiceDitta, budget_.TipoBudget, budget_.SottoTipoBudget, budget_.AnnoEsercizio,
                               budget_.ProgressivoEsercizio}))
      .riga(" AND    CG24_INDCONTORICAV = ", numero(kBalanceSheetAccount));
  const auto found = connection_.Execute(sql);
  std::set<std::int64_t> onBalanceSheet;
  for (; !found->Eof(); found->MoveNext()) onBalanceSheet.insert(values::toInt64((*found)["BU65_ID"].Value()));
  return std::ranges::any_of(ranges_, [&](const auto& range) {
    return std::ranges::any_of(range.cards, [&](const auto& card) { return onBalanceSheet.contains(card.id); });
  });
}

void CardReconciler::beginRun() {
  const auto from = values::toDate(budget_.DaData), to = values::toDate(budget_.AData);
  const auto found = std::ranges::find_if(ranges_, [&](const auto& r) { return r.from == from && r.to == to; });
  range_ = static_cast<std::size_t>(found - ranges_.begin());
  if (found == ranges_.end()) {
    ranges_.push_back({from, to, WrittenPeriods(budget_, from, to), {}, {}});
    readBeside(ranges_.back());
  }
  const int kind = values::toInt32(budget_.BdgTipoScheda);
  if (std::ranges::find(kinds_, kind) == kinds_.end()) kinds_.push_back(kind);
}

void CardReconciler::addCard(const ado::Recordset& cards) {
  ranges_[range_].cards.push_back({values::toInt64(cards["BU65_ID"].Value()), values::toInt32(budget_.BdgTipoScheda),
                                   cards["BU65_CONTO_CG24"].Value(), cards["BU65_CODICE_CG31"].Value(),
                                   cards["BU67_CLIFOR_CG44"].Value()});
}

MovementScope CardReconciler::scopeOf(const Range& range) const {
  return {budget_.CodiceDitta,
          budget_.AnnoEsercizioMovimenti,
          budget_.ProgressivoEsercizioMovimenti,
          budget_.TipoMovimenti,
          range.from,
          range.to};
}

bool CardReconciler::byCompetence() const { return budget_.TipoDataMovimenti == 1; }

/// The pass over all lines costs as much as the runs: a second core takes it. Where no connection or thread is to be
/// had, it is read after them.
void CardReconciler::readBeside(Range& range) {
  try {
    const auto reader = connection_.reader();
    if (!reader) return;
    range.movements = std::async(std::launch::async, [this, reader, scope = scopeOf(range), how = byCompetence()] {
      return MovementSums(*reader, scope, how, &stop_);
    });
  } catch (const std::runtime_error&) {
  }
}

MovementSums CardReconciler::movementsOf(Range& range) {
  if (range.movements.valid()) return range.movements.get();
  return MovementSums(connection_, scopeOf(range), byCompetence());
}

CardReconciliation CardReconciler::reconcile(const WatchedRun& run) {
  Reckoning reckoning(budget_, narrowing_, landing_, kinds_, plansBalanceSheet());
  for (auto& range : ranges_)
    reckoning.add(movementsOf(range), CardAccounts(range.cards, *budget_.ActiveInterface), range.periods);
  return reckoning.finish(run, CardPercentages(budget_, connection_));
}

}  // namespace bukorval::dati
