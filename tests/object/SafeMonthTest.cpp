// What a controller must be able to count on: nothing is lost, stranded or misread without a word.

#include "object/DemoCompany.h"
#include "values/Text.h"

namespace {

using namespace bukorval;
using SafeMonth = object_tests::DemoCompany;

TEST_F(SafeMonth, AYearThatTheCalendarLacksIsRefused) {
  auto bo = object(5, "01", 2031);
  bo->BdgElaEco_PopolaRstSaldiElaEco();
  EXPECT_EQ(outcome(*bo), "1 L'esercizio 2031/1 non esiste ");
  bo->BdgElaEco_ScriviBudget_DaRstSaldiElaEco();
  EXPECT_EQ(outcome(*bo), "1 L'esercizio 2031/1 non esiste ");
  auto align = object(4, "01", 2031);
  align->AllineaBU65_A_StrutturaBU60();
  EXPECT_EQ(outcome(*align), "1 L'esercizio 2031/1 non esiste ");
}

TEST_F(SafeMonth, OneCompanysFiguresNeverGoIntoAnother) {
  auto bo = object(5, "01", 2026);
  bo->BdgElaEco_PopolaRstSaldiElaEco();
  ASSERT_GT(bo->RstSaldiElaEco->RecordCount(), 0);
  db->Execute(
      "INSERT INTO CG19_ANADITTAESER (CG19_DITTA_CG18, CG19_ANNO, CG19_PROGESER, CG19_DATAINIZIO,"
      " CG19_DATAFINE) VALUES (2, 2026, 1, '20260101', '20261231')");
  bo->CodiceDitta = 2;
  bo->BdgElaEco_ScriviBudget_DaRstSaldiElaEco();
  EXPECT_EQ(outcome(*bo), "1 La ditta 2 non è quella della sessione, 1 ");
  EXPECT_EQ(one("SELECT COUNT(*) FROM BU65_TESBUDGET WHERE BU65_ANNO = 2026"), "0");
}

TEST_F(SafeMonth, ACardMadeFromABalanceIsFoundAgainOrNotMade) {
  // The account alone does not tell the cards of a budget by account and project apart.
  db->Execute("UPDATE BU01_ANABUDGET SET BU01_STRUTTURA = 'PRO' WHERE BU01_INDTIPO = 5 AND BU01_SOTTOTIPO = '01'");
  auto bo = object(5, "01", 2026);
  bo->DaConto = bo->AConto = "62050001";
  bo->BdgElaEco_PopolaRstSaldiElaEco();
  bo->BdgElaEco_ScriviBudget_DaRstSaldiElaEco();
  ASSERT_EQ(outcome(*bo), "0 ");
  EXPECT_EQ(one("SELECT COUNT(*) FROM BU65_TESBUDGET WHERE BU65_ANNO = 2026"), "0");
  ASSERT_EQ(bo->RstContiNonPresentiInStruttura->RecordCount(), 1);
  EXPECT_EQ(values::toPlainText((*bo->RstContiNonPresentiInStruttura)["CONTO"].Value()), "62050001");

  // Alignment: a card without its kind, or without a site, would be in no grid.
  db->Execute("DELETE FROM BU61_STRUTTELEM WHERE BU61_CAMPO = 'BU65_INDCOSRIC_BU07' AND BU61_ELEMENTO = 1");
  auto align = object(4, "02");
  align->BdgTipoScheda = {};
  align->AllineaBU65_A_StrutturaBU60();
  EXPECT_EQ(outcome(*align), "1 BdgTipoScheda  : Dato non definito nel BO ");
  db->Execute("DELETE FROM CG31_SEDI");
  align->BdgTipoScheda = 0;
  align->AllineaBU65_A_StrutturaBU60();
  EXPECT_EQ(outcome(*align), "1 CodiceSede  : Dato non definito nel BO ");
  EXPECT_EQ(one("SELECT COUNT(*) FROM BU65_TESBUDGET WHERE BU65_SOTTOTIPO_BU01 = '02' AND BU65_INDTIPO_BU01 = 4"), "0");
}

TEST_F(SafeMonth, TheGridCallsAnAccountAsTheCompanyDoes) {
  auto bo = object(4, "01");
  bo->CodiceSede = 1;
  const auto description = [&] {
    const auto grid = bo->RecordSetBudget();
    EXPECT_EQ(outcome(*bo), "0 ");
    for (; !grid->Eof(); grid->MoveNext())
      if (values::toPlainText((*grid)["BU65_CONTO_CG24"].Value()).starts_with("62040002"))
        return std::string(values::rtrim(values::toPlainText((*grid)["BU65_CONTO_CG24_DESCR"].Value())));
    return std::string("none");
  };
  const std::string general = values::toPlainText(bo->GetDescrizioneConto(1, bdgPdcCoGe, 1, "62040002"));
  EXPECT_EQ(description(), "62040002 - " + general);
  db->Execute(
      "INSERT INTO CG39_PRSDESPDC (CG39_DITTA_CG18, CG39_GRUPPO_CG10, CG39_CONTO_CG24, CG39_DESCR) VALUES"
      " (1, 1, '62040002', 'Saloni'), (2, 1, '62040002', 'Altri')");
  EXPECT_EQ(description(), "62040002 - Saloni");
  EXPECT_EQ(values::toPlainText(bo->GetDescrizioneConto(1, bdgPdcCoGe, 1, "62040002")), "Saloni");
}

TEST_F(SafeMonth, NumbersGoBySessionAndNullWins) {
  db->Execute("UPDATE CG18_ANADITTE SET CG18_SEGNODEC = '.'");
  auto bo = object(4, "01");
  EXPECT_EQ(bo->CDecN("1.000"), Variant(values::Decimal::FromScaled(1000)));
  bo->ActiveInterface = std::make_shared<suite::Sessione>(db);
  EXPECT_EQ(bo->CDecN("1.000"), Variant(values::Decimal::FromScaled(1000, 3)));
  EXPECT_EQ(values::toText(bo->BFill(1.5, 5)), "1.5  ");
  EXPECT_EQ(values::toText(bo->RTrimN(1.5)), "1.5");
  bo->ActiveInterface = session;
  EXPECT_EQ(values::toText(bo->BFill(1.5, 5)), "1,5  ");
  bo->CDecN("1.5");
  EXPECT_EQ(outcome(*bo), "99 Type mismatch: \"1.5\" is no number in CDecN");
  EXPECT_TRUE(bo->CalcolaDelta(Variant::Null(), "abc").isNull());
  EXPECT_TRUE(bo->CalcolaDelta("abc", Variant::Null()).isNull());
  EXPECT_TRUE(bo->CalcolaDeltaPercentuale("abc", Variant::Null()).isNull());
  EXPECT_EQ(outcome(*bo), "0 ");
  // A single value keeps the rule of its statement: every comma is a point.
  Variant none;
  bo->AggiornaSingoloValoreBU66(0, card(2025), 3, 0, 1, "1.000", none);
  EXPECT_EQ(one("SELECT BU66_IMPORTO FROM BU66_DETBUDGET WHERE BU66_ID = " + values::toPlainText(none)), "1.00");
}

}  // namespace
