#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

#include "Sets.h"

/// The indexes behind Filter: against a plain scan while rows change at random, and by the work they save.
namespace {

using sets::add;
using sets::column;
using sets::make;
using values::Variant;

struct Account {
  int id;
  std::string account;
  std::optional<int> period;
  bool alive = true;
};

/// A set, the same rows in plain structures, and filters with the predicate that each stands for.
class Oracle {
 public:
  Oracle() : set_(make({{"ID", ado::adInteger}, {"CONTO", ado::adVarWChar, 10}, {"PERIODO", ado::adDecimal, 4, 0}})) {
    for (int i = 0; i < 3; ++i) views_.push_back({set_->Clone(), {}, [](const Account&) { return true; }});
  }

  void step() {
    const auto what = below(100);
    if (what < 30 || rows_.empty()) {
      append();
    } else if (what < 60) {
      edit();
    } else if (what < 67) {
      remove();
    } else {
      filter(views_[below(views_.size())]);
    }
  }

  void compare() {
    for (auto& view : views_) {
      std::string expected;
      for (const auto& row : rows_)
        if (row.alive && view.passes(row)) expected += (expected.empty() ? "" : ",") + std::to_string(row.id);
      ASSERT_EQ(column(*view.set, "ID"), expected) << view.text;
      if (view.set->RecordCount() == 0) continue;
      std::string last;
      for (view.set->MoveLast(); !view.set->Bof(); view.set->MovePrevious())
        last = sets::shown((*view.set)["ID"].Value()) + (last.empty() ? "" : "," + last);
      ASSERT_EQ(last, expected) << view.text;
    }
  }

  std::uint64_t rowsTested() const { return set_->RowsTested(); }

 private:
  struct View {
    ado::RecordsetPtr set;
    std::string text;
    std::function<bool(const Account&)> passes;
  };

  std::size_t below(std::size_t n) { return std::uniform_int_distribution<std::size_t>(0, n - 1)(random_); }
  std::string account() { return (below(2) != 0 ? "c" : "C") + std::to_string(below(6)) + (below(3) == 0 ? " " : ""); }
  std::optional<int> period() { return below(5) == 0 ? std::nullopt : std::optional(static_cast<int>(below(4))); }
  static Variant cell(const std::optional<int>& period) { return period ? Variant(*period) : Variant::Null(); }
  static std::string key(const std::string& account) { return account.substr(1, 1); }

  void append() {
    rows_.push_back({static_cast<int>(rows_.size()), account(), period()});
    const auto& row = rows_.back();
    if (below(2) == 0) {
      const auto cells = set_->AppendRow();
      cells[0] = row.id;
      cells[1] = row.account;
      if (row.period) cells[2] = values::Decimal::FromScaled(*row.period);
    } else {
      add(*views_[below(views_.size())].set, {row.id, row.account, cell(row.period)});
    }
  }

  /// Stands a view's set on some row, and says on which; nothing when the view shows none.
  Account* standAnywhere(View& view) {
    if (view.set->RecordCount() == 0) return nullptr;
    view.set->MoveFirst();
    for (auto steps = below(static_cast<std::size_t>(view.set->RecordCount())); steps > 0; --steps)
      view.set->MoveNext();
    return &rows_[static_cast<std::size_t>((*view.set)["ID"].Value().as<std::int32_t>())];
  }

  void edit() {
    auto& view = views_[below(views_.size())];
    auto* row = standAnywhere(view);
    if (row == nullptr) return;
    if (below(2) == 0) (*view.set)["CONTO"].Value(row->account = account());
    if (below(2) == 0) (*view.set)["PERIODO"].Value(cell(row->period = period()));
    view.set->Update();
  }

  void remove() {
    auto& view = views_[below(views_.size())];
    if (auto* row = standAnywhere(view)) {
      view.set->Delete();
      row->alive = false;
    }
  }

  void filter(View& view) {
    const std::string account = this->account();
    const auto wanted = key(account);
    const int period = static_cast<int>(below(4));
    const std::string is = "CONTO = '" + account + "'", at = "PERIODO = " + std::to_string(period);
    const auto sameAccount = [wanted](const Account& row) { return key(row.account) == wanted; };
    switch (below(7)) {
      case 0: view = {view.set, "", [](const Account&) { return true; }}; break;
      case 1: view = {view.set, is, sameAccount}; break;
      case 2: view = {view.set, at + ".0", [=](const Account& row) { return row.period == period; }}; break;
      case 3:
        view = {view.set, at + " AND " + is,
                [=](const Account& row) { return sameAccount(row) && row.period == period; }};
        break;
      case 4:
        view = {view.set, is + " AND PERIODO = NULL",
                [=](const Account& row) { return sameAccount(row) && !row.period; }};
        break;
      case 5:
        view = {view.set, is + " OR " + at,
                [=](const Account& row) { return sameAccount(row) || row.period == period; }};
        break;
      default:
        view = {view.set, is + " AND PERIODO >= 1 AND PERIODO<=2", [=](const Account& row) {
                  return sameAccount(row) && row.period && *row.period >= 1 && *row.period <= 2;
                }};
    }
    view.set->Filter(view.text);
  }

  std::mt19937 random_{4711};
  ado::RecordsetPtr set_;
  std::vector<View> views_;
  std::vector<Account> rows_;
};

TEST(FilterIndex, AgreesWithAScanWhileRowsChangeAtRandom) {
  Oracle oracle;
  for (int i = 0; i < 4'000; ++i) {
    oracle.step();
    if (i % 10 == 0) oracle.compare();
    if (testing::Test::HasFatalFailure()) return;
  }
}

/// Rows looked at by the loops "for each account, for each period" over a set of `accounts` × 12 rows.
std::uint64_t workOf(int accounts, const std::function<void(ado::Recordset&, int account)>& loop) {
  const auto set = make({{"CONTO", ado::adVarWChar, 10}, {"MESE", ado::adInteger}, {"IMPORTO", ado::adDecimal, 15, 2}});
  for (int month = 1; month <= 12; ++month)
    for (int account = 0; account < accounts; ++account) add(*set, {"C" + std::to_string(account), month, 1});
  for (int account = 0; account < accounts; ++account) loop(*set, account);
  return set->RowsTested();
}

TEST(FilterIndex, LoopsOverAccountsAndPeriodsLookAtEachRowAFewTimes) {
  const auto conto = [](int account) { return "CONTO = 'c" + std::to_string(account) + "'"; };
  const auto fillEachPeriod = [&](ado::Recordset& set, int account) {
    for (int month = 1; month <= 12; ++month) {
      set.Filter(conto(account) + " AND MESE = " + std::to_string(month));
      ASSERT_EQ(set.RecordCount(), 1);
      set["IMPORTO"].Value(month);
      set.Update();
      set.Filter("");
    }
  };
  const auto sumQuarters = [&](ado::Recordset& set, int account) {
    for (int month = 1; month <= 12; month += 3) {
      const std::string from = std::to_string(month), to = std::to_string(month + 2);
      set.Filter(conto(account) + " AND  MESE>=" + from + " AND MESE<=" + to + " ");
      ASSERT_EQ(set.GetRows("IMPORTO").front().size(), 3U);
    }
    set.Filter("");
  };
  const auto emptyIt = [&](ado::Recordset& set, int account) {
    set.Filter(conto(account));
    ASSERT_EQ(set.RecordCount(), 12);
    for (; set.RecordCount() > 0; set.Update()) {
      set.MoveFirst();
      set["CONTO"].Value("X");
    }
  };
  constexpr int kAccounts = 1'000;
  constexpr std::uint64_t kRows = 12 * kAccounts;
  EXPECT_LE(workOf(kAccounts, fillEachPeriod), 5 * kRows);
  EXPECT_LE(workOf(kAccounts, sumQuarters), 7 * kRows);
  EXPECT_LE(workOf(kAccounts, emptyIt), 10 * kRows);
}

TEST(FilterIndex, FindOrAddLooksAtEachRowAFewTimes) {
  const auto set = make({{"CONTO", ado::adVarWChar, 10}, {"N", ado::adInteger}});
  for (int i = 0; i < 6'000; ++i) {
    set->Filter("CONTO = 'C" + std::to_string(i % 3'000) + "'");
    if (set->RecordCount() == 0) {
      set->AddNew();
      (*set)["CONTO"].Value("C" + std::to_string(i));
    }
    (*set)["N"].Value(i);
    set->Update();
  }
  EXPECT_LE(set->RowsTested(), 6U * 6'000);
  set->Filter("");
  EXPECT_EQ(set->RecordCount(), 3'000);
}

}  // namespace
