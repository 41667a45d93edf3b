#include "maintenance/NuovaScheda.h"
#include "maintenance/Stampless.h"
#include "support/Expected.h"
#include "support/TestContext.h"

namespace {

using bukorval::NuovaScheda, testing::IsEmpty, testing_support::expected, testing_support::TestContext;

ado::DictionaryPtr columns(const std::vector<std::pair<Variant, Variant>>& pairs) {
  auto dictionary = std::make_shared<ado::Dictionary>();
  for (const auto& [name, value] : pairs) dictionary->Add(name, value);
  return dictionary;
}

std::string header(const std::string& names, const std::string& values) {
  return " INSERT INTO BU65_TESBUDGET \r\n"
         " (BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01, BU65_DITTA_CG18, BU65_ANNO, BU65_PROGESER, " +
         names + ")\r\nVALUES\r\n (" + values + ")\r\n";
}

std::string detail(int kind, int period) {
  return expected("maintenance/expected/dettaglio.sql",
                  {{"{KIND}", std::to_string(kind)}, {"{PERIOD}", std::to_string(period)}});
}

/// A yearly budget that gives a new card the number 31.
struct NewCard : TestContext {
  explicit NewCard(int type, int forecasts = 0) : TestContext(type) {
    answerNothing();
    answer({""}, {{31}});
    define({{"BU01_INDPERIODO", 5}, {"BU01_NUMFORECAST", forecasts}});
    prop.CodicePdcCoGeDitta = 5;
  }
  std::vector<std::string> make(const std::vector<std::pair<Variant, Variant>>& given) {
    NuovaScheda(ctx).InserimentoNuovaSchedaBudget(columns(given));
    return maintenance_tests::stampless(*db);
  }
};

TEST(NuovaScheda, WritesHeaderThenDetailsThenCashFlow) {
  NewCard budget(4, 1);
  const auto texts = budget.make({{"BU65_INDCOSRIC_BU07", 0}, {"BU65_SCHEDA_BU07", "S1"}});
  EXPECT_EQ(budget.outcome(), "0 ");
  ASSERT_EQ(texts.size(), 7u);
  EXPECT_EQ(texts[1], "SELECT @@IDENTITY");
  EXPECT_THAT(
      std::vector(texts.begin() + 3, texts.end()),
      testing::ElementsAre(detail(0, 1), detail(1, 1), detail(3, 1), expected("maintenance/expected/cash_flow.sql")));
  const std::string procedures[] = {"InserimentoNuovaSchedaBudget",
                                    "InserimentoNuovaSchedaBudget",
                                    "GetPeriodicitaBudget",
                                    "CreazioneBU66NULL",
                                    "CreazioneBU66NULL",
                                    "CreazioneBU66NULL",
                                    "CreazioneBU67NULL"};
  for (std::size_t k = 1; k <= std::size(procedures); ++k) {
    NewCard broken(4, 1);
    broken.failAt(k);
    EXPECT_EQ(broken.make({{"BU65_SCHEDA_BU07", "S1"}}).size(), k);
    EXPECT_EQ(broken.outcome(), "99 boom in " + procedures[k - 1]);
  }
}

TEST(NuovaScheda, WritesWhatTheBudgetTypeAndTheColumnsAsk) {
  const std::string customers = ", BU65_TIPOCF_CG44, BU65_FLGBUDGET , BU65_FLGCFLOW , BU65_DATAULTAGG ";
  const std::string stamp = ", BU65_FLGBUDGET , BU65_FLGCFLOW , BU65_DATAULTAGG ";
  const struct {
    int type;
    std::vector<std::pair<Variant, Variant>> given;
    std::string names, values;
  } rows[] = {{0, {{"BU65_CODICE_CG31", 3}}, "BU65_CODICE_CG31" + customers, "3, 0, 0 , 0 , NOW"},
              {1, {{"BU65_CODICE_CG31", 3}}, "BU65_CODICE_CG31" + customers, "3, 1, 0 , 0 , NOW"},
              {7, {{"BU65_CODICE_CG31", 3}}, "BU65_CODICE_CG31" + customers, "3, 1, 0 , 0 , NOW"},
              {4, {{"BU65_CODICE_CG31", 3}}, "BU65_CODICE_CG31" + stamp, "3, 1 , 0 , NOW"},
              // By the column's type, apostrophes kept.
              {3,
               {{"BU65_SCHEDA_BU07", "L'ALTRA"}, {"BU65_CODICE_CG31", "2"}, {"BU65_AREA_MG08", Variant::Null()}},
               "BU65_SCHEDA_BU07, BU65_CODICE_CG31, BU65_AREA_MG08" + stamp,
               "N'L''ALTRA', 2, NULL, 0 , 0 , NOW"},
              // An account brings the budget's chart code, unless the client gives one.
              {3, {{"BU65_CONTO_CG24", "100"}}, "BU65_CONTO_CG24, BU65_GRUPPO_CG10" + stamp, "N'100', 5, 0 , 0 , NOW"},
              {3, {{"BU65_CODICE_CG23", "R1"}}, "BU65_CODICE_CG23, BU65_CODICE_CG21" + stamp, "N'R1', 5, 0 , 0 , NOW"},
              {3, {{"BU65_CONTO_PC03", "A1"}}, "BU65_CONTO_PC03, BU65_CODICE_PC01" + stamp, "N'A1', 5, 0 , 0 , NOW"},
              {3, {{"BU65_VDS_PC03", "V1"}}, "BU65_VDS_PC03, BU65_PDCVDS_PC01" + stamp, "N'V1', 5, 0 , 0 , NOW"},
              {3,
               {{"BU65_CONTOPDC_PC03", "C1"}, {"BU65_CONTOCONTROPART_PC03", "C2"}},
               "BU65_CONTOPDC_PC03, BU65_PDC_PC01, BU65_CONTOCONTROPART_PC03" + stamp,
               "N'C1', 5, N'C2', 0 , 0 , NOW"},
              {3,
               {{"BU65_CONTO_CG24", "100"}, {"BU65_GRUPPO_CG10", 9}},
               "BU65_CONTO_CG24, BU65_GRUPPO_CG10" + stamp,
               "N'100', 9, 0 , 0 , NOW"}};
  for (const auto& row : rows) {
    NewCard budget(row.type);
    EXPECT_EQ(budget.make(row.given).at(0),
              header(row.names, std::to_string(row.type) + ", 'A1', 7, 2024, 1, " + row.values));
    EXPECT_EQ(budget.outcome(), "0 ");
  }
}

TEST(NuovaScheda, WritesNothingWithoutColumnsOrWithAValueThatItsColumnCannotTake) {
  for (const Variant& value : {Variant("tre"), Variant("1), (2"), Variant(true)}) {
    TestContext budget;
    NuovaScheda(budget.ctx).InserimentoNuovaSchedaBudget(columns({{"BU65_CODICE_CG31", value}}));
    EXPECT_EQ(budget.ctx.stato(), 99);
    EXPECT_THAT(budget.db->texts, IsEmpty());
  }
  for (const auto& none : {ado::DictionaryPtr{}, columns({})}) {
    TestContext budget(4);
    NuovaScheda(budget.ctx).InserimentoNuovaSchedaBudget(none);
    EXPECT_THAT(budget.db->texts, IsEmpty());
    EXPECT_EQ(budget.outcome(), "0 ");
  }
}

TEST(NuovaScheda, CreatesADetailForEachKindAndPeriodOfTheNature) {
  for (const int type : {1, 3}) {
    TestContext budget(type);
    budget.define({{"BU01_INDPERIODO", 0}, {"BU01_NUMFORECAST", 2}});
    NuovaScheda(budget.ctx).CreazioneBU66NULL(31);
    std::vector<std::string> expected;
    for (int kind = 0; kind <= 4; ++kind)
      for (int period = 1; period <= 12; ++period)
        if (kind != 2 || type == 1) expected.push_back(detail(kind, period));
    EXPECT_THAT(std::vector(budget.db->texts.begin() + 1, budget.db->texts.end()), testing::ElementsAreArray(expected));
  }
  TestContext undefined;
  undefined.answer({"BU01_INDPERIODO"}, {});
  NuovaScheda(undefined.ctx).CreazioneBU66NULL(31);
  EXPECT_EQ(undefined.ctx.stato(), 99) << "a budget without periods";
}

TEST(GetNaturaConto, ReadsTheChartOfTheKind) {
  const std::pair<int, std::string> rows[] = {
      {3,
       "SELECT PC03_INDSEGNO FROM   PC03_ANAGPDC WITH (NOLOCK) WHERE  PC03_CODICE_PC01 = 5 AND    PC03_CONTO = 'A1'"},
      {1,
       "SELECT CG24_INDCONTORICAV FROM   CG24_TABPDC WITH (NOLOCK) WHERE  CG24_GRUPPO_CG10 = 5 AND    CG24_CONTO = "
       "'A1'"}};
  for (auto [kind, text] : rows) {
    TestContext budget;
    budget.answer({"NATURA"}, {{2}, {3}});
    budget.answer({"NATURA"}, {});
    Variant code = 5, account = "A1";
    EXPECT_EQ(NuovaScheda(budget.ctx).GetNaturaConto(kind, code, account), Variant(2));
    EXPECT_EQ(budget.db->texts.back(), text);
    EXPECT_TRUE(NuovaScheda(budget.ctx).GetNaturaConto(kind, code, account).isEmpty());
    budget.failAt(3);
    NuovaScheda(budget.ctx).GetNaturaConto(kind, code, account);
    EXPECT_EQ(budget.outcome(), "99 boom in GetNaturaConto");
  }
}

}  // namespace
