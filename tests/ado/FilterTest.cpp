#include "Sets.h"

namespace {

using sets::add, sets::column, sets::make;

ado::RecordsetPtr accounts() {
  auto set = make({{"N", ado::adInteger},
                   {"CONTO", ado::adWChar, 8},
                   {"IMPORTO", ado::adDecimal, 15, 2},
                   {"DATA", ado::adDBTimeStamp},
                   {"CHIUSO", ado::adBoolean},
                   {"Nota libera", ado::adVariant},
                   {"PESO", ado::adDouble}});
  const Variant null = Variant::Null();
  const auto cents = [](std::int64_t units) { return Decimal::FromScaled(units, 2); };
  add(*set, {1, "A100", cents(1050), Date::FromYmd(2011, 1, 31), true, "007", 0.1});
  add(*set, {2, "a100", cents(-325), Date::FromYmd(2011, 2, 28, 13, 5, 9), false, 7, 2.5});
  add(*set, {3, "L'OR", null, null, null, null, null});
  add(*set, {4, "Àà 1", cents(999999999999999), Date::FromYmd(2012, 2, 29), true, Date::FromYmd(2011, 1, 31), 1e30});
  add(*set, {5, "12", cents(0), Date::FromYmd(2011, 1, 31), false, "31/01/2011", -1e30});
  return set;
}

/// Rows "filter => the N of the rows shown", or the start of the error after what all errors begin with.
void check(std::initializer_list<std::string_view> cases, const std::string& error = "") {
  const auto set = accounts();
  for (const auto& [filter, expected] : inOut(cases)) {
    const auto found = errorOf([&, &text = filter] { set->Filter(text); });
    const auto start = error + expected;
    EXPECT_EQ(found.empty() ? column(*set, "N") : found.substr(0, start.size()), start) << filter;
    set->Filter("");
  }
}

TEST(Filter, ComparesByTheFieldsType) {
  check({"CONTO = 'a100  ' => 1,2", "conto = 'L''or' => 3", "CONTO = 'àÀ 1' => 4", "CONTO <> 'A100' => 3,4,5",
         "CONTO > 'A100' => 3,4", "CONTO <= '12' => 5", "CONTO = 12 => 5", "CONTO = '' => "});
  check({"IMPORTO = 10.5 => 1", "IMPORTO = '10.500' => 1", "IMPORTO = 10.501 => ", "IMPORTO = 9999999999999.99 => 4",
         "IMPORTO < -3.249 OR IMPORTO > +10.50 => 2,4", "IMPORTO >= .0 AND IMPORTO <= 1.05e1 => 1,5",
         "IMPORTO <> 0 => 1,2,4", "IMPORTO = NULL => 3", "IMPORTO <> null => 1,2,4,5"});
  check({"DATA = #31/01/2011# => 1,5", "DATA > '20110131' => 2,4", "DATA = #2011-02-28 13:05:09# => 2",
         "DATA = #2011-02-28# => ", "CHIUSO = True => 1,4", "CHIUSO = 0 => 2,5", "CHIUSO <> 'true' => 2,5",
         "PESO = 0.1 => 1", "PESO > 2.5 => 4", "PESO < 0 => 5"});
}

TEST(Filter, ComparesAVariantFieldByWhatTheRowHolds) {
  check({"[Nota libera] = 7 => 1,2", "[nota LIBERA] = '7' => 2", "[Nota libera] = '007' => 1,2",
         "[Nota libera] = #20110131# => 4,5", "[Nota libera] = '20110131' => 4", "[Nota libera] < 8 => 1,2",
         "[Nota libera] <> 7 => 4,5", "[Nota libera] LIKE '*0*' => 1,4,5"});
}

TEST(Filter, LikeOpensTheEndsThatHaveAWildcard) {
  check({"CONTO LIKE 'A1*' => 1,2", "CONTO LIKE 'a1%' => 1,2", "CONTO LIKE '*00' => 1,2", "CONTO LIKE '%O%' => 3",
         "CONTO LIKE 'A1*  ' => 1,2", "CONTO LIKE 'A100' => 1,2", "CONTO LIKE 'A' => ", "CONTO LIKE 'àà *' => 4",
         "CONTO LIKE '12  %' => 5", "CONTO LIKE '*' => 1,2,3,4,5",
         "CONTO LIKE 'A*0' => LIKE takes * and % only at the ends", "CONTO LIKE 12 => LIKE takes a text",
         "IMPORTO LIKE '1*' => Field IMPORTO cannot be compared", "N LIKE '1' => LIKE takes a text"});
}

TEST(Filter, JoinsTermsWithAndBeforeOr) {
  check({"N=1 OR N=2 AND CHIUSO=True => 1", "(N=1 OR N=2) AND CHIUSO=True => 1", "(N=1 OR N=2) AND (CHIUSO=False) => 2",
         "N>=2 and N<=4 And CONTO<>'L''OR' => 2,4", "N=1 AND N=2 => ", "((((N=3)))) => 3",
         "CONTO='A100' AND N=1 OR CONTO='A100' AND N=2 OR N=5 => 1,2,5", "    => 1,2,3,4,5"});
}

TEST(Filter, SaysWhereATextDoesNotParse) {
  const std::string deep = std::string(65, '(') + "N=1" + std::string(65, ')') + " => 65, the parentheses";
  check({deep, "CONTO => 6, a comparison is expected: CONTO", "CONTO =  => 9, a value is expected",
         "CONTO = 'abc => 9, a text is not closed", "CONTO = abc => 9, a value is expected, text between quotes",
         "CONTO == 'a' => 8, a value", "= 1 => 1, the name of a field", "N = 1 N = 2 => 7, AND, OR or the end",
         "N = 1 AND => 10, the name of a field", "(N = 1 => 7, a closing parenthesis", "N = 1) => 6",
         "N ! 1 => 3, an unknown sign", "N = 1.2.3 => 5, a number is malformed",
         "N = 99999999999999999999999999999999 => 5, a number", "N = 3x => 5, a number",
         "DATA = #31/02/2011# => 8, a date is malformed", "DATA = #2011 => 8, no # follows",
         "[N = 1 => 1, no ] follows", "N = 1; DELETE => 6, an unknown sign"},
        "Filter does not parse at character ");
  check({"MANCA = 1 => Item cannot be found in the collection: MANCA",
         "N = 'uno' => Field N cannot be compared with a value that is no number",
         "N = #2011-01-31# => Field N cannot be compared",
         "DATA = 5 => Field DATA cannot be compared with a value that is no date",
         "CONTO = #2011-01-31# => Field CONTO cannot be compared with a date",
         "CHIUSO = 'forse' => Field CHIUSO cannot be compared", "N > NULL => Only = and <> can be used with NULL",
         "CONTO LIKE NULL => LIKE takes a text"});
}

TEST(Filter, ABadTextLeavesTheOldFilterAndRow) {
  const auto set = accounts();
  set->Filter("CONTO = 'A100'");
  set->MoveNext();
  EXPECT_NE(errorOf([&] { set->Filter("CONTO ="); }), "");
  EXPECT_EQ(set->Filter(), "CONTO = 'A100'");
  EXPECT_EQ((*set)["N"].Value(), Variant(2));
  EXPECT_EQ(set->RecordCount(), 2);
  set->Filter("");
  EXPECT_EQ(set->Filter(), "");
  EXPECT_EQ((*set)["N"].Value(), Variant(1));
}

TEST(Filter, ARowThatNoLongerPassesStaysCurrentUntilTheNextMove) {
  const auto set = accounts();
  set->Filter("CHIUSO = False");
  auto& closed = (*set)["CHIUSO"];
  closed.Value(true);
  set->Update();
  EXPECT_EQ((*set)["N"].Value(), Variant(2));
  EXPECT_EQ(set->RecordCount(), 1);
  set->MoveNext();
  EXPECT_EQ((*set)["N"].Value(), Variant(5));
  set->MovePrevious();
  EXPECT_TRUE(set->Bof());
  add(*set, {6, "B", Variant::Null(), Variant::Null(), true});
  EXPECT_EQ((*set)["N"].Value(), Variant(6));
  EXPECT_EQ(set->RecordCount(), 1);
  closed.Value(false);
  EXPECT_EQ(column(*set, "N"), "5,6");
}

/// Random cuts, doublings and swaps of good texts: each is either refused with a message or shows a part of the rows.
TEST(Filter, AnyTextIsEitherAnsweredOrRefused) {
  const auto set = accounts();
  const std::vector<std::string> seeds = {"CONTO = 'A100' AND (IMPORTO >= -10.5e0 OR N <> NULL)",
                                          "[Nota libera] LIKE '*0%' OR DATA = #2011-01-31 10:00#",
                                          "CHIUSO = True AND ((N=1) OR (N = '2')) AND PESO < .5"};
  constexpr std::string_view kSigns = "'#[]()<>=*%.-+eE \t\0aZ_9\xC3\xA0\xFF";
  std::mt19937 random(7);
  const auto below = [&](std::size_t n) { return std::uniform_int_distribution<std::size_t>(0, n - 1)(random); };
  int answered = 0;
  for (int i = 0; i < 6'000; ++i) {
    std::string text = seeds[below(seeds.size())];
    for (auto edits = 1 + below(2); edits > 0 && !text.empty(); --edits) {
      const auto at = below(text.size()), length = 1 + below(6);
      switch (below(4)) {
        case 0: text.erase(at, length); break;
        case 1: text.insert(at, 1, kSigns[below(kSigns.size())]); break;
        case 2: text.insert(at, text.substr(below(text.size()), length)); break;
        default: text[at] = kSigns[below(kSigns.size())];
      }
    }
    const std::string before = set->Filter();
    const auto error = errorOf([&] { set->Filter(text); });
    answered += error.empty() ? 1 : 0;
    ASSERT_LE(set->RecordCount(), 5) << text;
    ASSERT_EQ(set->Filter(), error.empty() ? (values::isBlank(text) ? "" : text) : before) << text;
  }
  EXPECT_GT(answered, 200);
  EXPECT_LT(answered, 5'500);
}

struct Account {
  int id;
  std::string account;
  std::optional<int> period;
  bool alive = true;
};

/// A set, the same rows in plain structures, and filters with the predicate that each stands for.
class RandomRows {
 public:
  RandomRows()
      : set_(make({{"ID", ado::adInteger}, {"CONTO", ado::adVarWChar, 10}, {"PERIODO", ado::adDecimal, 4, 0}})) {
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
    const auto samePeriod = [period](const Account& row) { return row.period == period; };
    const std::pair<std::string, std::function<bool(const Account&)>> filters[] = {
        {"", [](const Account&) { return true; }},
        {is, sameAccount},
        {at + ".0", samePeriod},
        {at + " AND " + is, [=](const Account& row) { return sameAccount(row) && samePeriod(row); }},
        {is + " OR " + at, [=](const Account& row) { return sameAccount(row) || samePeriod(row); }},
        {is + " AND PERIODO = NULL", [=](const Account& row) { return sameAccount(row) && !row.period; }},
        {is + " AND PERIODO >= 1 AND PERIODO<=2",
         [=](const Account& row) { return sameAccount(row) && (row.period == 1 || row.period == 2); }}};
    std::tie(view.text, view.passes) = filters[below(std::size(filters))];
    view.set->Filter(view.text);
  }

  std::mt19937 random_{4711};
  ado::RecordsetPtr set_;
  std::vector<View> views_;
  std::vector<Account> rows_;
};

TEST(Filter, AgreesWithAScanWhileRowsChangeAtRandom) {
  RandomRows rows;
  for (int i = 0; i < 4'000; ++i) {
    rows.step();
    if (i % 10 == 0) rows.compare();
    if (testing::Test::HasFatalFailure()) return;
  }
}

}  // namespace
