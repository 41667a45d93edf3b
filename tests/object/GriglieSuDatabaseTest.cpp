// The grids of a small company's budgets, asked of a real database.

#include "object/SmallBudgets.h"
#include "values/Text.h"

namespace {

using namespace bukorval;
using namespace object_tests;

struct Grids : SmallBudgets {
  /// The given fields of each row, "a,b; c,d": "-" for Null, texts without the blanks that fill them up.
  std::string rows(const ado::RecordsetPtr& set, const std::vector<const char*>& fields) {
    EXPECT_EQ(bo.errore(), "");
    if (!set) return "no set";
    std::string text;
    for (; !set->Eof(); set->MoveNext()) {
      std::vector<Variant> cells;
      for (const char* field : fields) {
        const auto& value = (*set)[field].Value();
        cells.push_back(value.isNothing() ? value : Variant(std::string(values::rtrim(values::toPlainText(value)))));
      }
      text += (text.empty() ? "" : "; ") + shown(cells);
    }
    return text;
  }
  std::string grid(const std::vector<const char*>& fields) { return rows(bo.RecordSetBudget(), fields); }
};

TEST_F(Grids, AddUpTheDetailsOfEachCard) {
  const auto a = card("A1");
  card("B1");
  for (const char* text : {"0 1 100.10 1.5 0.001", "0 2 0.05", "0 3 NULL 2", "1 1 7", "3 1 50", "4 2 -3 -1 -0.5"})
    detail(a, text);
  EXPECT_EQ(grid({"BU65_SCHEDA_BU07", "IMP_BUDGET", "QTA1_BUDGET", "QTA2_BUDGET", "IMP_CONSUNTIVO", "IMP_ORDINI",
                  "IMP_FORECAST2", "QTA1_FORECAST2", "QTA2_FORECAST2", "DELTAIMP_CONS", "FLGESISTECRITPREL"}),
            "A1,100.15,3.500,0.001,7.00,-,-3.00,-1.000,-0.500,-,-; B1,-,-,-,-,-,-,-,-,-,-")
      << "a card without details is there";
}

TEST_F(Grids, TakeTheActualValueOfAPeriodInAForecast) {
  const auto a = card("A1");
  // Period 1 has both, 2 an actual row without an amount, 3 no actual row, 4 an actual that nobody forecast.
  for (const char* text : {"3 1 10 1", "1 1 11 NULL", "3 2 20 2", "1 2 NULL 5", "3 3 30 3", "1 4 44 4"})
    detail(a, text);
  EXPECT_EQ(grid({"IMP_FORECAST1", "QTA1_FORECAST1", "IMP_FORECAST2", "IMP_CONSUNTIVO"}), "61.00,9.000,-,55.00");
}

TEST_F(Grids, ShowTheLatestOrderThatHasAValue) {
  const auto a = card("A1");
  for (const char* text : {"2 1 10 1", "2 1 20 NULL 7", "2 3 NULL 3", "2 2 NULL"}) detail(a, text);
  detail(card("B1"), "2 1 5");
  EXPECT_EQ(grid({"BU65_SCHEDA_BU07", "IMP_ORDINI", "QTA1_ORDINI", "QTA2_ORDINI"}),
            "A1,20.00,3.000,7.000; B1,5.00,-,-");
}

TEST_F(Grids, AreOfOneBudgetOfTheSessionsCompany) {
  card("A1");
  card("N1", "BU65_ANNO=2024");
  card("N2", "BU65_PROGESER=2");
  card("N3", "BU65_SOTTOTIPO_BU01='02'");
  card("N4", "BU65_INDTIPO_BU01=5");
  card("N5", "BU65_DITTA_CG18=2");
  card("R1", "BU65_INDCOSRIC_BU07=1");
  const std::vector<const char*> code = {"BU65_SCHEDA_BU07"};
  EXPECT_EQ(grid(code), "A1");
  bo.BdgTipoScheda = 1;
  EXPECT_EQ(grid(code), "R1");
  bo.BdgTipoScheda = 0;
  bo.CodiceDitta = 2;
  EXPECT_EQ(grid(code), "A1") << "not the property";
  bo.AnnoEsercizio = 2024;
  EXPECT_EQ(grid(code), "N1");
  bo.SottoTipoBudget = "04";
  bo.AnnoEsercizio = 2025;
  card("S1", "BU65_SOTTOTIPO_BU01='04', BU65_CODICE_CG31=1");
  card("S2", "BU65_SOTTOTIPO_BU01='04', BU65_CODICE_CG31=2");
  bo.CodiceSede = 2;
  EXPECT_EQ(grid({"BU65_SCHEDA_BU07", "BU65_CODICE_CG31_DESCR"}), "S2,2 - Sede");
}

TEST_F(Grids, ComeInTheOrderOfTheirColumns) {
  card("B1", "BU65_CONTO_CG24='50010001'");
  card("A1", "BU65_CONTO_CG24='70010001'");
  card("A1", "BU65_CONTO_CG24='50010002'");
  EXPECT_EQ(grid({"BU65_SCHEDA_BU07", "BU65_CONTO_CG24_DESCR"}),
            "A1,50010002 - Servizi; A1,70010001 - Vendite; B1,50010001 - Merci");
}

TEST_F(Grids, OfLedgersTellWhichCardsHaveCriteria) {
  insert(*db, "BU01_ANABUDGET",
         "BU01_INDTIPO=5, BU01_SOTTOTIPO='01', BU01_INDPERIODO=5, BU01_NUMFORECAST=0, BU01_INDTIPOPDC=1");
  bo.TipoBudget = 5;
  const auto a = card("A1", "BU65_INDTIPO_BU01=5"), b = card("B1", "BU65_INDTIPO_BU01=5, BU65_CONTO_CG24='50010002'");
  const auto criterion = [&](std::int64_t card, const std::string& columns) {
    insert(*db, "BU02_TESTADEST",
           "BU02_DITTA_CG18=1, BU02_TIPODEST_BU01=5, BU02_STIPODEST_BU01='01', BU02_ANNO_CG19=2025,"
           " BU02_PROGESER_CG19=1, BU02_IDDESTINAZIONE=" +
               std::to_string(card) + columns);
  };
  criterion(a, ", BU02_ANNO_CG19=2024");
  criterion(a, ", BU02_STIPODEST_BU01='02'");
  criterion(a, ", BU02_DITTA_CG18=2");
  criterion(b, "");
  criterion(b, "");
  EXPECT_EQ(grid({"BU65_CONTO_CG24", "FLGESISTECRITPREL"}), "50010001,0; 50010002,1") << "and each card once";
}

TEST_F(Grids, OfACardHaveARowForEveryPeriod) {
  const auto a = card("A1"), other = card("B1");
  const auto first = detail(a, "0 1 100.10 1.001"), third = detail(a, "0 3 NULL"), actual = detail(a, "1 4 7"),
             forecast = detail(a, "4 2 9 1 2");
  detail(other, "0 2 999");
  const auto periods = bo.RecSetPeriodiBudget(a);
  EXPECT_EQ(rows(periods, {"PERIODO", "ID_BUDGET", "IMP_BUDGET", "QTA1_BUDGET", "ID_CONSUNTIVO", "IMP_CONSUNTIVO",
                           "ID_FORECAST1", "ID_FORECAST2", "IMP_FORECAST2", "QTA2_FORECAST2", "DELTAIMP_FORE2"}),
            "1," + first + ",100.10,1.001,-,-,-,-,-,-,-; 2,-,-,-,-,-,-," + forecast + ",9.00,2.000,-; 3," + third +
                ",-,-,-,-,-,-,-,-,-; 4,-,-,-," + actual + ",7.00,-,-,-,-,-");
  const auto orders = std::vector{detail(a, "2 1 1 0.005"), detail(a, "2 1 2")};
  EXPECT_EQ(rows(bo.RecSetPeriodiBudget(a), {"PERIODO", "ID_ORDINI", "IMP_ORDINI", "QTA1_ORDINI"}).substr(0, 30),
            ("1," + orders[0] + ",1.00,0.01; 1," + orders[1] + ",2.00,-; 2,-").substr(0, 30))
      << "an order a row, its quantity with two decimals";
  bo.SottoTipoBudget = "03";
  EXPECT_EQ(bo.RecSetPeriodiBudget(other)->RecordCount(), 12) << "the periods of the budget that is selected";
  EXPECT_EQ(rows(bo.RecSetPeriodiBudget(99999), {"PERIODO", "IMP_BUDGET"}).substr(0, 8), "1,-; 2,-");
}

TEST_F(Grids, TellTheTermsOfACard) {
  const auto a = card("A1");
  EXPECT_EQ(bo.GetRstBU67(a)->RecordCount(), 0);
  insert(*db, "BU67_BDGCASHFLOW", "BU67_ID_BU65=" + std::to_string(a) + ", BU67_CLIFOR_CG44=77, BU67_NUMRATE=2");
  EXPECT_EQ(rows(bo.GetRstBU67(a), {"BU67_ID_BU65", "BU67_CLIFOR_CG44", "BU67_FLGSCADMAN", "BU67_DATAINIVAL"}),
            std::to_string(a) + ",77,0,-");
}

struct Maintenance : Grids {
  std::string left(std::int64_t card) const {
    std::string text;
    for (const char* count : {"BU65_TESBUDGET WHERE BU65_ID", "BU66_DETBUDGET WHERE BU66_ID_BU65",
                              "BU67_BDGCASHFLOW WHERE BU67_ID_BU65", "BU14_SCADCFLOW WHERE BU14_IDBUDGET",
                              "BU90_TABPERCBUD WHERE BU90_IDBUDGET", "BU63_DETMASTRI WHERE BU63_ID_BU65"})
      text += one("SELECT COUNT(*) FROM " + std::string(count) + " = " + std::to_string(card));
    return text;
  }
  std::int64_t fullCard(const char* code) {
    const auto id = card(code);
    const auto of = std::to_string(id);
    detail(id, "0 1 5");
    insert(*db, "BU67_BDGCASHFLOW", "BU67_ID_BU65=" + of);
    insert(*db, "BU14_SCADCFLOW", "BU14_IDBUDGET=" + of);
    insert(*db, "BU90_TABPERCBUD",
           "BU90_DITTA_CG18=1, BU90_INDTIPO_BU01=4, BU90_SOTTOTIPO_BU01='01', BU90_IDBUDGET=" + of);
    insert(*db, "BU63_DETMASTRI", "BU63_ID_BU65=" + of);
    return id;
  }
};

TEST_F(Maintenance, DeletesWhatABudgetOfTheTypeHas) {
  const auto kept = fullCard("Z1");
  for (const auto& [type, rows] : {std::pair(4, "000001"), {5, "001110"}, {0, "001111"}, {3, "001111"}}) {
    const auto id = fullCard(("A" + std::to_string(type)).c_str());
    bo.TipoBudget = type;
    Variant given = id;
    bo.CancellaRigaBU65(given);
    EXPECT_EQ(bo.Stato(), 0);
    EXPECT_EQ(left(id), rows) << type;
    EXPECT_EQ(given, Variant(id));
  }
  for (Variant none : {Variant(), Variant::Null(), Variant(0), Variant(""), Variant("0")}) {
    bo.CancellaRigaBU65(none);
    EXPECT_EQ(bo.Stato(), 0);
  }
  EXPECT_EQ(left(kept), "111111");
}

TEST_F(Maintenance, MakesCardsWithTheDetailsOfTheirNature) {
  insert(*db, "BU01_ANABUDGET",
         "BU01_INDTIPO=0, BU01_SOTTOTIPO='01', BU01_STRUTTURA='ARE', BU01_INDPERIODO=0, BU01_NUMFORECAST=2");
  const auto make = [&](int type, std::initializer_list<std::pair<const char*, Variant>> entries) {
    const auto columns = std::make_shared<ado::Dictionary>();
    for (const auto& [name, value] : entries) columns->Add(name, value);
    bo.TipoBudget = type;
    bo.InserimentoNuovaSchedaBudget(columns);
    EXPECT_EQ(bo.errore(), "");
    return values::toInt64(bo.SchedaInserita());
  };
  const auto details = [&](std::int64_t card) {
    return one(
        "SELECT COUNT(*), COUNT(DISTINCT BU66_TIPO), COUNT(BU66_IMPORTO) FROM BU66_DETBUDGET WHERE"
        " BU66_ID_BU65 = " +
        std::to_string(card));
  };
  const auto sales = make(0, {{"BU65_AREA_MG08", "NO"}});
  EXPECT_EQ(details(sales), "60 5 0") << "budget, actuals, orders and two forecasts of twelve months";
  EXPECT_EQ(left(sales), "1600000");
  const auto expenses = make(4, {{"BU65_INDCOSRIC_BU07", 0}, {"BU65_CONTO_CG24", "50010001"}});
  EXPECT_EQ(details(expenses), "16 4 0");
  EXPECT_EQ(left(expenses), "1161000") << "with terms";
  EXPECT_EQ(one("SELECT BU65_GRUPPO_CG10, BU65_TIPOCF_CG44, BU65_FLGBUDGET, BU65_FLGCFLOW FROM BU65_TESBUDGET WHERE"
                " BU65_ID = " +
                std::to_string(expenses)),
            "1  1 0");
  EXPECT_EQ(one("SELECT BU65_TIPOCF_CG44, BU65_FLGBUDGET FROM BU65_TESBUDGET WHERE BU65_ID = " + std::to_string(sales)),
            "0 0");
}

TEST_F(Maintenance, ClearsTheValuesOfAKindAndKeepsItsRows) {
  const auto a = card("A1"), b = card("B1");
  for (const auto each : {a, b})
    for (const char* text : {"0 1 5 1 2", "0 2 6", "1 1 7"}) detail(each, text);
  bo.UpdateNullValoriBU66(a, 0);
  EXPECT_EQ(amounts(a, 0) + " " + amounts(a, 0, "BU66_QTA1") + " " + amounts(a, 1), "1: 2: 1: 2: 1:7.00");
  EXPECT_EQ(amounts(b, 0), "1:5.00 2:6.00");
  bo.UpdateNullValoriBU66(a, 99);
  EXPECT_EQ(amounts(a, 1), "1:");
  EXPECT_EQ(one("SELECT BU65_DATAULTAGG FROM BU65_TESBUDGET WHERE BU65_ID = " + std::to_string(a)),
            "01/03/2025 10:00:00")
      << "only single values stamp the card";
}

TEST_F(Maintenance, WritesOneCellAndStampsItsCard) {
  const auto a = card("A1"), b = card("B1");
  const auto first = detail(a, "0 1 5 1 2");
  Variant made = "none";
  bo.AggiornaSingoloValoreBU66(std::stoi(first), a, 0, 1, 1, Variant::Null(), made);
  EXPECT_EQ(one("SELECT BU66_IMPORTO, BU66_QTA1, BU66_QTA2 FROM BU66_DETBUDGET WHERE BU66_ID = " + first),
            "5.00  2.000");
  EXPECT_EQ(made, Variant("none"));
  bo.AggiornaSingoloValoreBU66(Variant::Null(), a, 3, 2, 4, "1.000", made);
  EXPECT_EQ(one("SELECT BU66_ID_BU65, BU66_TIPO, BU66_PERIODO, BU66_IMPORTO, BU66_QTA2 FROM BU66_DETBUDGET WHERE"
                " BU66_ID = " +
                values::toPlainText(made)),
            std::to_string(a) + " 3 4  1.000");
  const auto stamp = [&](std::int64_t card) {
    return values::toDate((*db->Execute("SELECT BU65_DATAULTAGG FROM BU65_TESBUDGET WHERE BU65_ID = " +
                                        std::to_string(card)))["BU65_DATAULTAGG"]
                              .Value());
  };
  EXPECT_GT(stamp(a), Date::FromYmd(2026, 1, 1));
  EXPECT_EQ(stamp(b), Date::FromYmd(2025, 3, 1, 10));
  Variant detail = 5, withoutAmount = "x";
  EXPECT_TRUE(bo.GetBdgDettaglioEsiste(a, 3, 4, detail, withoutAmount));
  EXPECT_EQ(values::toPlainText(detail), values::toPlainText(made));
  EXPECT_EQ(withoutAmount, Variant(true)) << "a quantity is no amount";
  EXPECT_FALSE(bo.GetBdgDettaglioEsiste(a, 3, 3, detail, withoutAmount));
  EXPECT_EQ(detail, Variant(0));
}

}  // namespace
