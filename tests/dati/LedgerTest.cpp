#include "dati/Codes.h"
#include "dati/Company.h"
#include "dati/Ledger.h"
#include "dati/SmallBudgets.h"
#include "support/FaultConnection.h"

namespace {

using namespace dati_tests;
using bukorval::colonnaBU65;

struct Ledger : SmallBudgets {
  dati::Ledger ledger{*db, 1, 1};
  std::string account(const char* code) const {
    return one(
        "SELECT CG24_DESCR, CG24_INDCONTORICAV, CG24_INDTIPOCONTO FROM CG24_TABPDC WHERE CG24_GRUPPO_CG10 = 1"
        " AND CG24_CONTO = '" +
        std::string(code) + "'");
  }
};

TEST_F(Ledger, PutsAccountsAndSitesNewOrAnew) {
  ledger.putAccount("60010001", "Salari e l'IRAP", 2, 2);
  EXPECT_EQ(account("60010001"), "Salari e l'IRAP 2 2");
  ledger.putAccount("50010001", "Merci varie", 0, 1);
  EXPECT_EQ(account("50010001"), "Merci varie 0 1");
  EXPECT_EQ(account("50010002"), "Servizi 0 2") << "another account";
  EXPECT_EQ(one("SELECT COUNT(*) FROM CG24_TABPDC"), "4");
  dati::Ledger(*db, 1, 2).putAccount("50010001", "Altro piano", 1, 2);
  EXPECT_EQ(account("50010001"), "Merci varie 0 1") << "another chart";
  ledger.putSite(1, "Torino");
  ledger.putSite(3, "Bari");
  EXPECT_EQ(shown(list("SELECT CG31_CODICE, CG31_DESCR FROM CG31_SEDI ORDER BY CG31_CODICE")),
            "1 Torino,2 Sede,3 Bari");
  dati::Ledger(*db, 2, 1).putSite(1, "Roma");
  EXPECT_EQ(shown(ledger.sites()).size(), 5U);
  EXPECT_EQ(one("SELECT CG31_DESCR FROM CG31_SEDI WHERE CG31_DITTA_CG18 = 1 AND CG31_CODICE = 1"), "Torino");
  ledger.addCardCode(0, "A1", "Prima");
  ledger.addCardCode(0, "A1", "Seconda");
  ledger.addCardCode(1, "A1", "Ricavo");
  EXPECT_EQ(shown(list("SELECT BU07_INDCOSRIC, BU07_DESCR FROM BU07_SCHEDECOSGEN ORDER BY BU07_INDCOSRIC")),
            "0 Prima,1 Ricavo");
}

TEST_F(Ledger, KnowsWhatIsThere) {
  EXPECT_TRUE(ledger.hasAccounts() && ledger.hasYear(2025));
  EXPECT_FALSE(ledger.hasMovements() || ledger.hasYear(2026));
  const dati::Ledger other(*db, 2, 3);
  EXPECT_FALSE(other.hasAccounts() || other.hasYear(2025) || other.hasMovements());
  EXPECT_EQ(ledger.lastRegistration(), 0);
  EXPECT_EQ(ledger.accounts().size(), 3U);
  EXPECT_EQ(values::toPlainText(ledger.years().front().year), "2024");
  ledger.setAccountStructure(4);
  EXPECT_EQ(one("SELECT CG18_STRUTTCONTI FROM CG18_ANADITTE WHERE CG18_CODICE = 1"), "4");
}

TEST_F(Ledger, WritesAndRemovesRegistrationsWithTheirLines) {
  auto writer = ledger.movementWriter(true);
  for (const int number : {7, 9, 12})
    writer.add(dati::Registration{number, Date::FromYmd(2025, 3, number), 2025, 1, 2, 1, Variant::Null(), "fattura",
                                  number == 9});
  const Variant null = Variant::Null();
  const auto cents = *Decimal::TryParse("1234567890123.45");
  writer.add(dati::MovementLine{7, 1, "50010001", null, null, null, false, cents});
  writer.add(dati::MovementLine{7, 2, "70010001", 1, Date::FromYmd(2025, 1, 1), Date::FromYmd(2025, 6, 30), true, 1});
  writer.add(dati::MovementLine{9, 1, "50010001", null, null, null, false, 5});
  writer.finish();
  EXPECT_EQ(shown(list("SELECT CG41_NUMREG, CG41_DATAREG, CG41_CODICE_CG31, CG41_INDTIPOMOV, CG41_INDPROVREG,"
                       " CG41_FLGRETTIF FROM CG41_PRIMANOTA ORDER BY CG41_NUMREG")),
            "7 07/03/2025 2 1 0 0,9 09/03/2025 2 1 0 1,12 12/03/2025 2 1 0 0");
  EXPECT_EQ(shown(list("SELECT CG42_NUMREG_CG41, CG42_NUMRIGACONT, CG42_INDDAAV, CG42_IMPTOTALE, CG42_FLGCOMP,"
                       " CG42_DATAFINCOMP, CG42_CODICE_CG31 FROM CG42_MOVCONT ORDER BY 1, 2")),
            "7 1 1 1234567890123.45 0  ,7 2 2 1.00 1 30/06/2025 1,9 1 1 5.00 0  ");
  EXPECT_TRUE(ledger.hasMovements());
  EXPECT_EQ(ledger.lastRegistration(), 12);
  auto taken = ledger.registrations(7, 11);
  std::ranges::sort(taken);
  EXPECT_EQ(shown(taken), "7,9") << "both ends included";
  EXPECT_EQ(ledger.registrations(12, 12).size(), 1U);
  EXPECT_TRUE(ledger.registrations(10, 11).empty());
  ledger.removeRegistration(7);
  EXPECT_EQ(one("SELECT COUNT(*) FROM CG42_MOVCONT"), "1");
  EXPECT_TRUE(ledger.registrations(7, 7).empty());
}

TEST_F(Ledger, BeginsANewCompanyWithOneYearOrNotAtAll) {
  dati::createCompany(*db, {.code = 5, .name = "Nuova", .accountStructure = 4, .year = 2028});
  EXPECT_EQ(one("SELECT CG18_RAGSOC, CG18_STRUTTCONTI, CG18_GRUPPO_CG10 FROM CG18_ANADITTE WHERE CG18_CODICE = 5"),
            "Nuova 4 1");
  EXPECT_EQ(one("SELECT CG19_PROGESER, CG19_DATAINIZIO, CG19_DATAFINE FROM CG19_ANADITTAESER WHERE CG19_ANNO = 2028"),
            "1 01/01/2028 31/12/2028");
  const auto companies = one("SELECT COUNT(*) FROM CG18_ANADITTE");
  db->Execute("DELETE FROM CG10_GRUPPIPDC");
  testing_support::FaultConnection broken(db);
  for (broken.failAt = 2; broken.failAt <= 6; ++broken.failAt) {
    broken.calls = 0;
    EXPECT_NE(errorOf([&] { dati::createCompany(broken, {.code = 6, .name = "x", .year = 2025}); }), "")
        << broken.failAt;
    EXPECT_EQ(one("SELECT COUNT(*) FROM CG18_ANADITTE"), companies) << broken.failAt;
    EXPECT_EQ(one("SELECT COUNT(*) FROM CG10_GRUPPIPDC"), "0") << broken.failAt;
  }
}

struct Codes : SmallBudgets {
  /// The codes of a column, "code description parent; …".
  std::string codes(const char* column, const dati::Chart& chart = {}) {
    std::string text;
    for (const auto& [code, description, parent] : dati::codesOf(*db, 1, colonnaBU65(column), chart))
      text += shown(std::vector<Variant>{code, description, parent}) + "; ";
    return text;
  }
};

TEST_F(Codes, AreThoseOfTheChartAndOfTheCompany) {
  insert(*db, "CG24_TABPDC", "CG24_GRUPPO_CG10=2, CG24_CONTO='1', CG24_DESCR='Altro', CG24_INDTIPOCONTO=2");
  insert(*db, "CG39_PRSDESPDC",
         "CG39_DITTA_CG18=1, CG39_GRUPPO_CG10=1, CG39_CONTO_CG24='50010002', CG39_DESCR='I nostri servizi'");
  insert(*db, "CG39_PRSDESPDC", "CG39_DITTA_CG18=2, CG39_GRUPPO_CG10=1, CG39_CONTO_CG24='50010001', CG39_DESCR='Loro'");
  insert(*db, "CG31_SEDI", "CG31_DITTA_CG18=2, CG31_CODICE=9, CG31_DESCR='Loro'");
  EXPECT_EQ(codes("BU65_CONTO_CG24", {bukorval::bdgPdcCoGe, 1}),
            "50010001,Merci,-; 50010002,I nostri servizi,-; 70010001,Vendite,-; ");
  EXPECT_EQ(codes("BU65_CONTO_CG24", {bukorval::bdgPdcCoGe, 2}), "1,Altro,-; ");
  EXPECT_EQ(codes("BU65_CONTO_CG24", {bukorval::bdgPdcAnalitico, 8}).substr(0, 10), "50010001,M")
      << "a chart of another kind shows all";
  EXPECT_EQ(codes("BU65_CODICE_CG31"), "1,Sede,-; 2,Sede,-; ");
  EXPECT_EQ(codes("BU65_INDNATCONTO"), "") << "no table has them";
  EXPECT_EQ(dati::accountsOf(*db, 1, {bukorval::bdgPdcRiclassificato, 9}).size(), 2U);
  EXPECT_EQ(dati::accountsOf(*db, 1, {bukorval::bdgPdcAnalitico, 8}).size(), 1U);
  EXPECT_TRUE(dati::accountsOf(*db, 1, {bukorval::bdgPdcAnalitico, 9}).empty());
}

TEST_F(Codes, ArePutBelowTheCodeTheyBelongTo) {
  const auto put = [&](const char* column, const Variant& code, const char* description, const Variant& parent = {}) {
    dati::putCode(*db, 1, colonnaBU65(column), {code, description, parent});
  };
  put("BU65_AREA_MG08", "NO", "Nord");
  put("BU65_AREA_MG08", "NO", "Nord ovest");
  put("BU65_AREA_MG08", "S'", "Sud d'Italia");
  EXPECT_EQ(codes("BU65_AREA_MG08"), "NO,Nord ovest,-; S',Sud d'Italia,-; ");
  put("BU65_SFAM_MG54", "X", "della A", "A");
  put("BU65_SFAM_MG54", "X", "della B", "B");
  put("BU65_SFAM_MG54", "X", "ancora della A", "A");
  EXPECT_EQ(codes("BU65_SFAM_MG54"), "X,ancora della A,A; X,della B,B; ");
  put("BU65_CODART_MG66", "ART1", "Sedia");
  put("BU65_CODART_MG66", "ART1", "Sedia rossa");
  insert(*db, "MG66_ANAGART", "MG66_DITTA_CG18=1, MG66_CODART='ART2'");
  EXPECT_EQ(codes("BU65_CODART_MG66"), "ART1,Sedia rossa,-; ART2,,-; ") << "an article needs no description";
  put("BU65_CLIFOR_CG44", 77, "Rossi", 1);
  put("BU65_CLIFOR_CG44", 77, "Bianchi", 0);
  EXPECT_EQ(codes("BU65_CLIFOR_CG44"), "77,Bianchi,0; 77,Rossi,1; ");
  put("BU65_COMMESSA_PD25", "C1", "Ponte");
  put("BU65_SCOMMESSA_PD25", "1", "Pila", "C1");
  EXPECT_EQ(codes("BU65_COMMESSA_PD25"), "C1,Ponte,-; ");
  EXPECT_THAT(codes("BU65_SCOMMESSA_PD25"), testing::HasSubstr("1,Pila,C1; "));
  for (const auto& [column, parent] :
       inOut({"BU65_OPZIONE_MG5E => BU65_CODART_MG66", "BU65_CLIFOR_CG44 => BU65_TIPOCF_CG44", "BU65_AREA_MG08 => ",
              "BU65_CODICE_CG31 => ", "BU65_SPROGETTO_PD69 => BU65_PROGETTO_PD68", "BU65_COMMESSA_PD25 => "}))
    EXPECT_EQ(dati::parentColumn(colonnaBU65(column)), parent) << column;
}

TEST_F(Codes, TellTheChartOfABudget) {
  const auto chart = [&](const char* subtype) {
    const auto found = (bo.SottoTipoBudget = subtype, dati::chartOf(bo, 1));
    return std::to_string(found.kind) + " " + values::toPlainText(found.code);
  };
  EXPECT_EQ(chart("01"), "1 1");
  bo.TipoBudget = 5;
  for (const char* row : {"'01', BU01_INDTIPOPDC=3, BU01_CODICE_PC01=8, BU01_CODICE_CG21=7",
                          "'02', BU01_INDTIPOPDC=2, BU01_CODICE_CG21=9", "'03', BU01_INDTIPOPDC=2"})
    insert(*db, "BU01_ANABUDGET", "BU01_INDTIPO=5, BU01_SOTTOTIPO=" + std::string(row));
  EXPECT_EQ(chart("01"), "3 8");
  EXPECT_EQ(chart("02"), "2 9");
  EXPECT_EQ(chart("03"), "1 1") << "one that names none";
}

TEST_F(Codes, OfCardsStandOnce) {
  insert(*db, "BU07_SCHEDECOSGEN", "BU07_DITTA_CG18=1, BU07_INDCOSRIC=0, BU07_SCHEDA='A1', BU07_DESCR='Prima'");
  card("B1", "BU65_CONTO_CG24='50010002'");
  card("A1");
  card("A1", "BU65_CONTO_CG24='50010002'");
  card("Z1", "BU65_ANNO=2024");
  std::string cards;
  for (const auto& code : dati::cardCodes(*db, year("01", 2025)))
    cards += shown(std::vector<Variant>{code.code, code.description}) + "; ";
  EXPECT_EQ(cards, "A1,Prima; B1,-; ");
  EXPECT_EQ(shown(dati::textsOf({{"A1  ", {}, {}}, {7, {}, {}}})), "A1,7");
}

}  // namespace
