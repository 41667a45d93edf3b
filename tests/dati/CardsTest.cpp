#include "dati/Budgets.h"
#include "dati/CardDetails.h"
#include "dati/CardWriter.h"
#include "dati/Cards.h"
#include "dati/NewCard.h"
#include "dati/SmallBudgets.h"

namespace {

using namespace dati_tests;

ado::DictionaryPtr columns(std::initializer_list<std::pair<const char*, Variant>> entries) {
  auto columns = std::make_shared<ado::Dictionary>();
  for (const auto& [name, value] : entries) columns->Add(name, value);
  return columns;
}

struct Cards : SmallBudgets {
  std::string selection() const {
    return shown(std::vector<Variant>{bo.CodiceDitta, bo.TipoBudget, bo.SottoTipoBudget, bo.AnnoEsercizio,
                                      bo.ProgressivoEsercizio, bo.CodiceSede, bo.BdgTipoScheda});
  }
  std::string cards() const { return one("SELECT COUNT(*) FROM BU65_TESBUDGET"); }
  /// The outcome of making a card: "" or why not.
  std::string create(const ado::DictionaryPtr& columns, const Variant& companyChart = 1) {
    return failureOf([&] { dati::createCard(bo, *db, columns, companyChart); });
  }
};

TEST_F(Cards, SelectTheirBudget) {
  const auto id = card("A1",
                       "BU65_SOTTOTIPO_BU01='04', BU65_ANNO=2024, BU65_PROGESER=2, BU65_CODICE_CG31=2,"
                       " BU65_INDCOSRIC_BU07=1");
  EXPECT_FALSE(dati::selectBudgetOfCard(bo, *db, id + 1));
  EXPECT_EQ(selection(), "1,4,01,2025,1,-,0") << "nothing is set";
  EXPECT_TRUE(dati::selectBudgetOfCard(bo, *db, id));
  EXPECT_EQ(selection(), "1,4,04,2024,2,2,1");
  dati::selectBudget(bo, year("02", 2025));
  EXPECT_EQ(selection(), "1,4,02,2025,1,-,-");
}

TEST_F(Cards, AreFoundByTheirColumns) {
  const auto a = card("A1"), b = card("B1", "BU65_CODICE_CG31=2"), c = card("B1", "BU65_CONTO_CG24=NULL");
  card("A1", "BU65_ANNO=2024");
  card("A1", "BU65_SOTTOTIPO_BU01='02'");
  const auto found = [&](const dati::CardKey& key) {
    std::string text;
    for (const auto& card : dati::findCards(*db, year("01", 2025), key))
      text += values::toInt64(card) == a ? "a" : values::toInt64(card) == b ? "b" : "c";
    std::ranges::sort(text);
    return text;
  };
  EXPECT_EQ(found({}), "abc");
  EXPECT_EQ(found({{"BU65_SCHEDA_BU07", "A1"}}), "a");
  EXPECT_EQ(found({{"BU65_SCHEDA_BU07", "b1"}}), "bc");
  EXPECT_EQ(found({{"BU65_SCHEDA_BU07", "B1"}, {"BU65_CODICE_CG31", 2}}), "b");
  EXPECT_EQ(found({{"BU65_CODICE_CG31", Variant::Null()}}), "ac");
  EXPECT_EQ(found({{"BU65_CONTO_CG24", Variant()}}), "c");
  EXPECT_EQ(found({{"BU65_SCHEDA_BU07", "x' OR '1'='1"}}), "");
  EXPECT_EQ(values::toPlainText(dati::lastCardCode(*db, year("01", 2025))), "B1");
  EXPECT_TRUE(dati::lastCardCode(*db, year("03", 2025)).isNull());
  EXPECT_EQ(shown(dati::sitesWithCards(*db, year("01", 2025))->Keys()), "2");
  std::multiset<std::string> budgets;
  for (const auto& budget : dati::budgetsOfCards(*db, {a, b, c + 1, c + 2, 99999}))
    budgets.insert(values::toPlainText(budget.sottoTipo) + "@" + values::toPlainText(budget.anno));
  EXPECT_EQ(shown(budgets), "01@2024,01@2025,02@2025") << "each once";
}

TEST_F(Cards, HaveOneValueACellAndKindAndMeasure) {
  const auto id = card("A1");
  detail(id, "0 1 100");
  const auto write = [&](int kind, int period, int measure, const Variant& value) {
    return failureOf([&] { dati::writeCardValue(bo, id, kind, period, measure, value); });
  };
  EXPECT_EQ(write(0, 1, 0, "1234,56"), "");
  EXPECT_EQ(write(0, 3, 0, Variant::Null()), "") << "makes the detail";
  EXPECT_EQ(write(0, 3, 1, 2.5), "");
  EXPECT_EQ(write(1, 1, 0, 7), "");
  EXPECT_EQ(amounts(id, 0), "1:1234.56 3:");
  EXPECT_EQ(amounts(id, 0, "BU66_QTA1"), "1: 3:2.500");
  EXPECT_EQ(amounts(id, 1), "1:7.00");
  EXPECT_EQ(dati::countDetails(*db, id), 3);
  EXPECT_EQ(write(0, 1, 0, "many"), "99 Type mismatch: \"many\" is no number in AggiornaSingoloValoreBU66");
  EXPECT_EQ(write(0, 1, 3, 1).substr(0, 2), "99");
  EXPECT_EQ(amounts(id, 0), "1:1234.56 3:");
  std::string held;
  for (const auto& [period, amount] : dati::amountsOfCard(*db, id, 0))
    held += std::to_string(period) + (amount.isNothing() ? "- " : " ");
  EXPECT_EQ(held, "1 3- ");
}

TEST_F(Cards, HaveSeveralOrdersOfWhichTheLatestCounts) {
  const auto id = card("A1"), other = card("B1");
  const auto first = detail(id, "2 1 10 1"), second = detail(id, "2 1 20"), third = detail(id, "2 2 NULL");
  const auto latest = [&](const char* measure) {
    return values::toPlainText(dati::latestOrderOf(*db, id, *dati::findMeasure(measure)));
  };
  EXPECT_EQ(latest("amount"), "20.00") << "the third one has no amount";
  EXPECT_EQ(latest("qty1"), "1.000");
  EXPECT_TRUE(dati::latestOrderOf(*db, id, dati::kMeasures[2]).isNull());
  EXPECT_TRUE(dati::latestOrderOf(*db, other, dati::kMeasures[0]).isNull());
  const auto write = [&](std::int64_t card, int kind, int period, const std::string& detail) {
    return failureOf([&] { dati::writeDetailValue(bo, *db, card, kind, period, std::stoi(detail), 0, 5); });
  };
  EXPECT_EQ(write(id, 2, 1, first), "");
  EXPECT_EQ(shown(list("SELECT BU66_IMPORTO FROM BU66_DETBUDGET WHERE BU66_PERIODO = 1 ORDER BY BU66_ID")),
            "5.00,20.00");
  for (const auto& [card, kind, period] : {std::tuple(other, 2, 1), std::tuple(id, 0, 1), std::tuple(id, 2, 2)})
    EXPECT_EQ(write(card, kind, period, second),
              "1 The card has no detail " + second + " of this kind in period " + std::to_string(period));
  EXPECT_EQ(one("SELECT BU66_IMPORTO FROM BU66_DETBUDGET WHERE BU66_ID = " + second), "20.00");
  EXPECT_EQ(write(id, 2, 2, third), "");
}

TEST_F(Cards, HaveWhatHangsOnThem) {
  const auto id = card("A1");
  EXPECT_EQ(dati::termsOf(*db, id).written, Variant(Date::FromYmd(2025, 3, 1, 10)));
  EXPECT_TRUE(dati::termsOf(*db, id).byHand.isNothing());
  EXPECT_TRUE(dati::termsOf(*db, id + 1).written.isNothing());
  const auto of = std::to_string(id);
  insert(*db, "BU67_BDGCASHFLOW",
         "BU67_ID_BU65=" + of +
             ", BU67_FLGSCADMAN=1, BU67_TIPOCF_CG44=1, BU67_CLIFOR_CG44=77,"
             " BU67_DATAINIVAL='20250401', BU67_NUMRATE=3, BU67_MESIRATA=2, BU67_GIORNISCAD=30");
  const auto terms = dati::termsOf(*db, id);
  EXPECT_EQ(shown(std::vector<Variant>{terms.byHand, terms.partyKind, terms.party, terms.validFrom, terms.instalments,
                                       terms.monthsBetween, terms.daysToFirst}),
            "1,1,77,01/04/2025,3,2,30");
  for (const char* row : {"2, BU90_PERCRIP=50", "1, BU90_PERCSCO=-2.5"})
    insert(*db, "BU90_TABPERCBUD",
           "BU90_DITTA_CG18=1, BU90_INDTIPO_BU01=4, BU90_SOTTOTIPO_BU01='01', BU90_IDBUDGET=" + of +
               ", BU90_PROGR=" + row);
  std::string percentages;
  for (const auto& each : dati::percentagesOf(*db, id))
    percentages += shown(std::vector<Variant>{each.number, each.share, each.deviation}) + "; ";
  EXPECT_EQ(percentages, "1,-,-2.50; 2,50.00,-; ");
  for (const char* row : {"'20250630', BU14_IMPORTO=1, BU14_PERIODO=2", "'20250331', BU14_IMPORTO=2, BU14_FLGMANUAL=1",
                          "'20250630', BU14_IMPORTO=3, BU14_PERIODO=1"})
    insert(*db, "BU14_SCADCFLOW", "BU14_IDBUDGET=" + of + ", BU14_DATASCAD=" + row);
  std::string dates;
  for (const auto& due : dati::dueDatesOf(*db, id))
    dates += shown(std::vector<Variant>{due.date, due.period, due.amount, due.byHand}) + "; ";
  EXPECT_EQ(dates, "31/03/2025,-,2.00,1; 30/06/2025,2,1.00,0; 30/06/2025,1,3.00,0; ");
}

TEST_F(Cards, ShowTheWordsOfTheirCodes) {
  insert(*db, "BU07_SCHEDECOSGEN", "BU07_DITTA_CG18=1, BU07_INDCOSRIC=0, BU07_SCHEDA='A1', BU07_DESCR='Prima'");
  const auto a = card("A1", "BU65_CONTO_CG24='50010002'");
  card("B1");
  const auto codes = dati::codesOf(bo, *db, a);
  EXPECT_EQ(codes->RecordCount(), 1);
  EXPECT_EQ(values::toPlainText((*codes)["BU65_SCHEDA_BU07_DESCR"].Value()), "A1 - Prima");
  EXPECT_EQ(values::toPlainText((*codes)["BU65_CONTO_CG24_DESCR"].Value()), "50010002 - Servizi");
  EXPECT_TRUE(dati::codesOf(bo, *db, 99999)->Eof());
  EXPECT_EQ(dati::firstCodes(bo, *db, 1)->RecordCount(), 1);
  EXPECT_EQ(dati::firstCodes(bo, *db, 5)->RecordCount(), 2);
  bo.BdgTipoScheda = 1;
  EXPECT_EQ(dati::firstCodes(bo, *db, 5)->RecordCount(), 0);
}

TEST_F(Cards, AreMadeOfCodesThatExist) {
  const struct {
    ado::DictionaryPtr columns;
    const char* outcome;
  } kRows[] = {{columns({{"BU65_INDCOSRIC_BU07", 0}, {"BU65_SCHEDA_BU07", "N1"}, {"BU65_CONTO_CG24", "50010001"}}), ""},
               {columns({{"BU65_INDCOSRIC_BU07", 0}, {"BU65_SCHEDA_BU07", "N2"}, {"bu65_codice_cg31", 2}}), ""},
               {columns({{"BU65_INDCOSRIC_BU07", 0}, {"BU65_SCHEDA_BU07", "N3"}, {"BU65_CODICE_CG31", 3}}),
                "1 The company has no site 3; there are 1, 2"},
               {columns({{"BU65_INDCOSRIC_BU07", 0}, {"BU65_CODICE_CG31", "1 OR 1=1"}}),
                "1 The company has no site 1 OR 1=1; there are 1, 2"},
               {columns({{"BU65_INDCOSRIC_BU07", 0}, {"BU65_CODICE_CG31", -1}}),
                "1 The company has no site -1; did you mean 1?"},
               {columns({{"BU65_INDCOSRIC_BU07", 0}, {"bu65_conto_cg24", "50010003"}}),
                "1 The chart of accounts 1 has no account 50010003; did you mean 50010001, 50010002 or 70010001?"},
               {columns({{"BU65_INDCOSRIC_BU07", 0}, {"BU65_GRUPPO_CG10", 2}, {"BU65_CONTO_CG24", "50010001"}}),
                "1 The chart of accounts 2 has no account 50010001"},
               {columns({{"BU65_INDCOSRIC_BU07", 0}, {"BU65_CODICE_CG21", 9}, {"BU65_CODICE_CG23", "C01"}}),
                "1 The chart of accounts 9 has no account C01; did you mean A01?"},
               {columns({{"BU65_INDCOSRIC_BU07", 0}, {"BU65_CODICE_PC01", 8}, {"BU65_CONTO_PC03", "margini"}}),
                "1 The chart of accounts 8 has no account margini; did you mean MARGINE?"},
               {columns({{"BU65_SCHEDA_BU07", "N4"}}),
                "1 BU65_INDCOSRIC_BU07 is needed: the budget is kept by card kind, 0 cost or 1 revenue"},
               {columns({{"BU65_INDCOSRIC_BU07", " "}, {"BU65_SCHEDA_BU07", "N4"}}),
                "1 BU65_INDCOSRIC_BU07 is needed: the budget is kept by card kind, 0 cost or 1 revenue"}};
  for (const auto& row : kRows) {
    const auto before = std::stoi(cards());
    EXPECT_EQ(create(row.columns), row.outcome);
    EXPECT_EQ(std::stoi(cards()), before + (std::string_view(row.outcome).empty() ? 1 : 0)) << row.outcome;
  }
  bo.SottoTipoBudget = "04";
  EXPECT_EQ(create(columns({{"BU65_INDCOSRIC_BU07", 0}, {"BU65_SCHEDA_BU07", "N4"}})),
            "1 BU65_CODICE_CG31 is needed: the budget is kept by site");
}

TEST_F(Cards, AreMadeOnce) {
  const auto n1 = columns({{"BU65_INDCOSRIC_BU07", 0}, {"BU65_SCHEDA_BU07", "N1"}, {"BU65_CONTO_CG24", "50010001"}});
  EXPECT_EQ(create(n1), "");
  const auto made = values::toInt64(bo.SchedaInserita());
  const auto twin = "1 Card " + std::to_string(made) + " of this budget has the same columns already";
  EXPECT_EQ(create(n1), twin);
  EXPECT_EQ(create(columns({{"bu65_scheda_bu07", "n1"}, {"BU65_CONTO_CG24", "50010001"}, {"BU65_INDCOSRIC_BU07", 0}})),
            twin);
  EXPECT_EQ(create(columns({{"BU65_INDCOSRIC_BU07", 0}, {"BU65_SCHEDA_BU07", "N1"}})), "") << "without its account";
  EXPECT_EQ(create(columns({{"BU65_INDCOSRIC_BU07", 1}, {"BU65_SCHEDA_BU07", "N1"}, {"BU65_CONTO_CG24", "50010001"}})),
            "");
  bo.AnnoEsercizio = 2024;
  EXPECT_EQ(create(n1), "") << "in another year";
}

TEST_F(Cards, AreFilledByAnImportThatLooksForEachOnce) {
  const auto a = card("A1");
  card("B1");
  card("B1", "BU65_FLGBUDGET=1");
  dati::CardWriter writer(bo, *db);
  const dati::CardKey keyOfA = {
      {"BU65_INDCOSRIC_BU07", 0}, {"BU65_SCHEDA_BU07", "A1"}, {"BU65_CONTO_CG24", "50010001"}};
  EXPECT_EQ(values::toInt64(writer.findOrCreate(keyOfA)), a);
  const dati::CardKey keyOfNew = {
      {"BU65_INDCOSRIC_BU07", 0}, {"BU65_SCHEDA_BU07", "N1"}, {"BU65_CONTO_CG24", Variant::Null()}};
  const auto made = writer.findOrCreate(keyOfNew);
  EXPECT_EQ(writer.findOrCreate(keyOfNew), made);
  EXPECT_EQ(writer.created(), 1);
  bo.AnnoEsercizio = 2024;
  EXPECT_NE(writer.findOrCreate(keyOfNew), made) << "another year's card";
  EXPECT_EQ(writer.created(), 2);
  bo.AnnoEsercizio = 2025;
  EXPECT_EQ(failureOf([&] {
              writer.findOrCreate({{"BU65_SCHEDA_BU07", "B1"}});
            }),
            "1 Several cards have BU65_SCHEDA_BU07 = B1");
  EXPECT_EQ(failureOf([&] {
              writer.findOrCreate({{"BU65_SCHEDA_BU07", "N2"}});
            }),
            "1 BU65_INDCOSRIC_BU07 is needed: the budget is kept by card kind, 0 cost or 1 revenue");
  EXPECT_EQ(cards(), "5");
  EXPECT_EQ(one("SELECT COUNT(BU65_GRUPPO_CG10) FROM BU65_TESBUDGET WHERE BU65_ID = " + values::toPlainText(made)), "0")
      << "no account, no chart";
  writer.write(made, 3, 2, 0, 9);
  EXPECT_EQ(amounts(values::toInt64(made), 3), "1: 2:9.00 3: 4:");
}

TEST_F(Cards, CountInTheirBudgets) {
  card("A1");
  card("B1");
  card("A1", "BU65_ANNO=2024");
  card("A1", "BU65_SOTTOTIPO_BU01='04'");
  card("A1", "BU65_DITTA_CG18=2");
  std::string budgets;
  for (const auto& budget : dati::definedBudgets(*db, 1)) {
    budgets += std::to_string(budget.type) + "/" + values::toPlainText(budget.subtype) + ":";
    for (const auto& [number, cards] : budget.years)
      budgets += " " + values::toPlainText(number) + "=" + values::toPlainText(cards);
    budgets += "; ";
  }
  EXPECT_EQ(budgets, "4/01: 2024=1 2025=2; 4/02:; 4/03:; 4/04: 2025=1; ");
  EXPECT_TRUE(dati::isBudgetDefined(*db, 4, "03"));
  EXPECT_FALSE(dati::isBudgetDefined(*db, 5, "03"));
  EXPECT_FALSE(dati::isBudgetDefined(*db, 4, "05"));
  dati::defineBudget(*db, {.type = 0, .subtype = "N", .description = "l'anno", .structure = "ART", .periodicity = 4});
  EXPECT_EQ(one("SELECT BU01_DESCR, BU01_STRUTTURA, BU01_INDPERIODO, BU01_INDPERFISO, BU01_FLGSEDI, BU01_NUMFORECAST"
                " FROM BU01_ANABUDGET WHERE BU01_INDTIPO = 0"),
            "l'anno ART 4 1 0 0");
}

}  // namespace
