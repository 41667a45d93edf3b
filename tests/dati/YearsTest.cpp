#include "dati/Ledger.h"
#include "dati/Locks.h"
#include "dati/SmallBudgets.h"
#include "dati/Years.h"

namespace {

using namespace dati_tests;

struct Years : SmallBudgets {
  std::string days() const {
    return shown(
        list("SELECT CG19_ANNO, CG19_PROGESER, CG19_DATAINIZIO, CG19_DATAFINE FROM CG19_ANADITTAESER"
             " WHERE CG19_DITTA_CG18 = 1 ORDER BY CG19_DATAINIZIO, CG19_PROGESER"));
  }
  std::string add(int number, const Variant& begin, int months) {
    std::string text;
    const auto failure = failureOf([&] {
      const auto added = dati::addAccountingYear(*db, 1, number, begin, months);
      text = shown(std::vector<Variant>{added.year, added.progressive, added.begin, added.end});
    });
    return failure.empty() ? text : failure;
  }
};

TEST_F(Years, ComeInTheOrderOfTheirFirstDaysAndAreFoundByNumber) {
  // 2024 runs into 2025: only what is asked by number can tell them apart.
  insert(*db, "CG19_ANADITTAESER",
         "CG19_DITTA_CG18=1, CG19_ANNO=2024, CG19_PROGESER=2, CG19_DATAINIZIO='20230101', CG19_DATAFINE='20240630',"
         " CG19_FLGCHIUSO=1");
  insert(*db, "CG19_ANADITTAESER",
         "CG19_DITTA_CG18=2, CG19_ANNO=2020, CG19_PROGESER=1, CG19_DATAINIZIO='20200101', CG19_DATAFINE='20201231'");
  std::string years;
  for (const auto& year : dati::accountingYears(*db, 1))
    years += values::toPlainText(year.year) + "/" + values::toPlainText(year.progressive) + (year.closed ? "c " : " ");
  EXPECT_EQ(years, "2024/2c 2024/1 2025/1 ");
  EXPECT_EQ(dati::findYear(*db, 1, 2024)->progressive, Variant(Decimal::FromScaled(2))) << "the first that begins";
  EXPECT_EQ(dati::findYear(*db, 1, 2024, 1)->begin, Variant(Date::FromYmd(2024, 7, 1)));
  EXPECT_EQ(dati::findYear(*db, 1, "2025", "1")->end, Variant(Date::FromYmd(2025, 12, 31)));
  EXPECT_FALSE(dati::findYear(*db, 1, 2025, 2));
  EXPECT_FALSE(dati::findYear(*db, 1, 2020));
  EXPECT_FALSE(dati::findYear(*db, 3, 2025));
}

TEST_F(Years, AreWholeMonthsThatShareNoDayWithAnother) {
  db->Execute("DELETE FROM CG19_ANADITTAESER WHERE CG19_ANNO = 2024");
  const struct {
    int number;
    Variant begin;
    int months;
    const char* outcome;
  } kRows[] = {
      {2026, {}, 12, "2026,1,01/01/2026,31/12/2026"},
      {2027, Variant::Null(), 18, "2027,1,01/01/2027,30/06/2028"},
      {2028, "", 6, "2028,1,01/07/2028,31/12/2028"},
      {2028, Date::FromYmd(2029, 1, 1), 2, "2028,2,01/01/2029,28/02/2029"},
      {2028, "01/03/2029", 1, "2028,3,01/03/2029,31/03/2029"},
      {2023, {}, 24, "2023,1,01/01/2023,31/12/2024"},
      {2022, Date::FromYmd(2022, 1, 1), 13, "1 There is an accounting year 2023 from 01/01/2023 to 31/12/2024 already"},
      {2030, Date::FromYmd(2029, 3, 1), 1,
       "1 There is an accounting year 2028/3 from 01/03/2029 to 31/03/2029 already"},
      {2022, Date::FromYmd(2020, 1, 1), 24, "2022,1,01/01/2020,31/12/2021"},
      {2040, Date::FromYmd(2040, 1, 2), 12, "1 An accounting year begins with the first day of a month"},
      {2039, Date::FromYmd(2039, 12, 31), 1, "1 An accounting year begins with the first day of a month"},
      {2041, {}, 12, "2041,1,01/01/2041,31/12/2041"},
      {2052, Date::FromYmd(2052, 2, 1), 1, "2052,1,01/02/2052,29/02/2052"}};
  for (const auto& row : kRows) {
    const auto before = days();
    EXPECT_EQ(add(row.number, row.begin, row.months), row.outcome);
    EXPECT_EQ(days() == before, std::string_view(row.outcome).starts_with("1 ")) << row.outcome;
  }
  EXPECT_EQ(one("SELECT COUNT(*) FROM CG19_ANADITTAESER WHERE CG19_FLGCHIUSO <> 0"), "0");
}

TEST_F(Years, OfOtherProgramsMayBeginAndEndOnAnyDay) {
  insert(*db, "CG19_ANADITTAESER",
         "CG19_DITTA_CG18=1, CG19_ANNO=2030, CG19_PROGESER=1, CG19_DATAINIZIO='20300131', CG19_DATAFINE='20300401'");
  EXPECT_EQ(add(2029, Date::FromYmd(2030, 1, 1), 1),
            "1 There is an accounting year 2030 from 31/01/2030 to 01/04/2030 already");
  EXPECT_EQ(add(2031, Date::FromYmd(2030, 4, 1), 12),
            "1 There is an accounting year 2030 from 31/01/2030 to 01/04/2030 already");
  EXPECT_EQ(add(2031, Date::FromYmd(2030, 5, 1), 12), "2031,1,01/05/2030,30/04/2031");
}

TEST_F(Years, BeginWhereTheYearBeforeThemEnds) {
  // 2024 ends in June: the next one of 2025 would begin in July, amid the one that is there.
  EXPECT_EQ(add(2025, {}, 12), "1 There is an accounting year 2025 from 01/01/2025 to 31/12/2025 already");
  db->Execute("DELETE FROM CG19_ANADITTAESER WHERE CG19_ANNO = 2025");
  EXPECT_EQ(add(2025, {}, 6), "2025,1,01/07/2025,31/12/2025");
  EXPECT_EQ(add(2030, {}, 12), "2030,1,01/01/2030,31/12/2030") << "without a year before it in January";
}

TEST_F(Years, AreAskedForWithTheCommandThatHelps) {
  const auto asked = [&](const Variant& number, const Variant& progressive) {
    return failureOf([&] { dati::requireYear(*db, 1, number, progressive); });
  };
  for (const Variant& fine : {Variant(2025), Variant("2024"), Variant(), Variant::Null(), Variant(" ")})
    EXPECT_EQ(asked(fine, {}), "");
  EXPECT_EQ(asked(2025, 1), "");
  EXPECT_EQ(asked(2025, 2),
            "1 The company has no accounting year 2025/2; `bukorval years add 2025` adds it; did you "
            "mean 2025 or 2024?");
  EXPECT_EQ(asked(2052, {}),
            "1 The company has no accounting year 2052; `bukorval years add 2052` adds it; did you "
            "mean 2025?");
  EXPECT_EQ(asked(1999, 0), "1 The company has no accounting year 1999; `bukorval years add 1999` adds it");
}

TEST_F(Years, AreWrittenIntoUntilTheyAreClosed) {
  const auto open = [&](const Variant& number, const Variant& progressive) {
    return failureOf([&] { dati::requireOpenYear(*db, 1, number, progressive); });
  };
  EXPECT_EQ(open(2025, 1), "");
  EXPECT_EQ(add(2025, Date::FromYmd(2026, 1, 1), 6), "2025,2,01/01/2026,30/06/2026");
  dati::setYearClosed(*db, 1, *dati::findYear(*db, 1, 2025), true);
  EXPECT_EQ(open(2025, 2), "") << "another one of the same number";
  EXPECT_EQ(open(2025, 1),
            "1 The accounting year 2025 is closed; `bukorval years reopen 2025` opens it, --force writes "
            "all the same");
  EXPECT_EQ(open(2025, {}).substr(0, 33), "1 The accounting year 2025 is clo");
  EXPECT_EQ(open(2024, 1), "") << "the other year stays open";
  EXPECT_EQ(open({}, {}), "");
  EXPECT_EQ(open(2033, 1).substr(0, 36), "1 The company has no accounting year");
  EXPECT_TRUE(bo.GetIsEsercizioChiuso(1, 2025, 1)) << "the object sees it, too";
  dati::setYearClosed(*db, 1, *dati::findYear(*db, 1, 2025), false);
  EXPECT_EQ(open(2025, 1), "");
}

struct Locks : SmallBudgets {
  std::string locked(const bukorval::BudgetAnno& budget) {
    return failureOf([&] { dati::requireUnlocked(*db, budget); });
  }
};

TEST_F(Locks, HoldOneBudgetOfOneYear) {
  EXPECT_EQ(locked(year("01", 2025)), "");
  dati::lockBudget(*db, year("01", 2025), "anna", "approvato il 3");
  EXPECT_THAT(locked(year("01", 2025)),
              testing::MatchesRegex("1 Budget 4/01@2025 is locked by anna since ../../.... ..:..:.. "
                                    ".approvato il 3.; `bukorval unlock 4/01@2025` opens it"));
  EXPECT_NE(locked({1, 4, "01", "2025", {}}), "") << "the first progressive, when none is said";
  for (const auto& other :
       {year("02", 2025), year("01", 2024), year("01", 2025, 2), {2, 4, "01", 2025, 1}, {1, 5, "01", 2025, 1}})
    EXPECT_EQ(locked(other), "") << dati::nameOf(other);
}

TEST_F(Locks, AreTakenAndGivenBackOnce) {
  dati::lockBudget(*db, year("02", 2025), "anna", "");
  dati::lockBudget(*db, year("01", 2025), "bruno", "x");
  EXPECT_THAT(failureOf([&] { dati::lockBudget(*db, year("02", 2025), "carla", "y"); }),
              testing::StartsWith("1 Budget 4/02@2025 is locked by anna since "));
  std::string locks;
  for (const auto& lock : dati::budgetLocks(*db, 1))
    locks += dati::nameOf(lock.budget) + " " + values::toPlainText(lock.user) + (lock.reason.isNull() ? "; " : " x; ");
  EXPECT_EQ(locks, "4/01@2025 bruno x; 4/02@2025 anna; ");
  EXPECT_TRUE(dati::budgetLocks(*db, 2).empty());
  dati::unlockBudget(*db, year("01", 2025));
  EXPECT_EQ(locked(year("01", 2025)), "");
  EXPECT_NE(locked(year("02", 2025)), "");
  EXPECT_EQ(failureOf([&] { dati::unlockBudget(*db, year("01", 2025)); }), "1 Budget 4/01@2025 is not locked");
}

TEST_F(Locks, NeedNoTableBeforeTheFirstOne) {
  db->Execute("DROP TABLE BK05_BLOCCHI");
  EXPECT_TRUE(dati::budgetLocks(*db, 1).empty());
  EXPECT_EQ(locked(year("01", 2025)), "");
  EXPECT_EQ(failureOf([&] { dati::unlockBudget(*db, year("01", 2025)); }), "1 Budget 4/01@2025 is not locked");
  dati::lockBudget(*db, year("01", 2025), "anna", "");
  EXPECT_EQ(dati::budgetLocks(*db, 1).size(), 1U);
}

}  // namespace
