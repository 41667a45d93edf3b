// What a controller must be able to count on: nothing is lost, stranded or misread without a word.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "demo/DemoAzienda.h"
#include "object/CLSKORVAL.h"
#include "schema/Schema.h"
#include "sqlite/Provider.h"
#include "suite/Sessione.h"
#include "suite/Suite.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval {
namespace {

using testing::ElementsAre;
using values::Date;
using values::Variant;

/// The demo company, fresh for each test.
class SafeMonth : public testing::Test {
 protected:
  void SetUp() override {
    ado::sqlite::registerSqlite();
    suite::registraServiziSuite();
    db_ = ado::createConnection();
    db_->ConnectionString = "Provider=SQLite;Data Source=:memory:";
    db_->Open();
    schema::create(*db_);
    demo::creaDemo(*db_);
    session_ = std::make_shared<suite::Sessione>(db_);
  }

  std::unique_ptr<CLSKORVAL> object(BdgTipo type, const char* subtype, int year = 2025) const {
    auto bo = std::make_unique<CLSKORVAL>();
    bo->ActiveInterface = session_;
    bo->Connessione(db_);
    bo->CodiceDitta = session_->CodiceDitta();
    bo->CodicePdcCoGeDitta = session_->CodicePdcCoGe();
    bo->TipoBudget = type;
    bo->SottoTipoBudget = subtype;
    bo->AnnoEsercizio = year;
    bo->ProgressivoEsercizio = 1;
    bo->AnnoEsercizioMovimenti = 2025;
    bo->ProgressivoEsercizioMovimenti = 1;
    bo->DaData = Date::FromYmd(2025, 1, 1);
    bo->AData = Date::FromYmd(2025, 12, 31);
    bo->TipoMovimenti = "1 = 1";
    bo->TipoScostamento = bdgScostamentoNessuno;
    bo->BdgTipoScheda = 0;
    return bo;
  }

  /// A duplication of site 1's FIERE card of the general expenses into the next year.
  std::unique_ptr<CLSKORVAL> duplication() const {
    auto bo = object(4, "01");
    bo->CodiceSede = 1;
    bo->DaScheda = bo->AScheda = "FIERE";
    bo->BdgDestinazioneSottoTipo = "01";
    bo->BdgDestinazioneAnnoEsercizio = 2026;
    bo->BdgDestinazioneProgressivoEsercizio = 1;
    bo->BdgDestinazioneCodiceSede = 1;
    bo->IsDuplicaScadenzeCashFlow = true;
    return bo;
  }

  std::vector<std::string> list(const std::string& sql) const {
    std::vector<std::string> rows;
    const auto set = db_->Execute(sql);
    for (; !set->Eof(); set->MoveNext()) {
      std::string row;
      for (std::size_t i = 0; i < set->Fields().Count(); ++i)
        row += (i ? " " : "") + values::toPlainText(set->Fields().Item(i).Value());
      rows.push_back(row);
    }
    return rows;
  }
  std::string one(const std::string& sql) const { return list(sql).at(0); }
  std::string card(int year) const {
    return one(
        "SELECT BU65_ID FROM BU65_TESBUDGET WHERE BU65_SCHEDA_BU07 = 'FIERE' AND BU65_CODICE_CG31 = 1"
        " AND BU65_SOTTOTIPO_BU01 = '01' AND BU65_ANNO = " +
        std::to_string(year));
  }
  std::vector<std::string> dueDates(const std::string& card) const {
    return list(
        "SELECT CONVERT(NVARCHAR(8), BU14_DATASCAD, 112), BU14_IMPORTO, BU14_FLGMANUAL FROM BU14_SCADCFLOW"
        " WHERE BU14_IDBUDGET = " +
        card + " ORDER BY BU14_DATASCAD, BU14_ID");
  }
  void dueDate(const std::string& card, const char* day, const char* amount, int manual) const {
    db_->Execute(
        "INSERT INTO BU14_SCADCFLOW (BU14_IDBUDGET, BU14_PERIODO, BU14_DATASCAD, BU14_IMPORTO, BU14_FLGMANUAL)"
        " VALUES (" +
        card + ", 1, '" + day + "', " + amount + ", " + std::to_string(manual) + ")");
  }
  static std::string outcome(const CLSKORVAL& bo) { return std::to_string(bo.Stato()) + " " + bo.errore(); }

  ado::ConnectionPtr db_;
  std::shared_ptr<suite::Sessione> session_;
};

TEST_F(SafeMonth, AnotherKindOfTheSameCardKeepsItsTermsAndDueDates) {
  const auto id = card(2025);
  dueDate(id, "20250131", "10.00", 0);
  const auto terms = list("SELECT * FROM BU67_BDGCASHFLOW ORDER BY BU67_ID_BU65");
  const auto dates = list("SELECT * FROM BU14_SCADCFLOW ORDER BY BU14_ID");
  auto bo = duplication();
  bo->BdgDestinazioneAnnoEsercizio = 2025;
  bo->TipoDettaglioDestinazione = 4;
  bo->IsSovrascriviEsistenti = true;
  bo->DaScheda = bo->AScheda = {};
  bo->BdgDupSchede_Duplicazione();
  ASSERT_EQ(outcome(*bo), "0 ");
  EXPECT_EQ(list("SELECT * FROM BU67_BDGCASHFLOW ORDER BY BU67_ID_BU65"), terms);
  EXPECT_EQ(list("SELECT * FROM BU14_SCADCFLOW ORDER BY BU14_ID"), dates);
  const auto values = [&](int kind) {
    return list("SELECT BU66_PERIODO, BU66_IMPORTO FROM BU66_DETBUDGET WHERE BU66_ID_BU65 = " + id +
                " AND BU66_TIPO = " + std::to_string(kind) + " ORDER BY BU66_PERIODO");
  };
  EXPECT_EQ(values(4), values(0));
}

TEST_F(SafeMonth, DueDatesAreCopiedAndReplacedOnlyWhenAsked) {
  const auto source = card(2025);
  db_->Execute("DELETE FROM BU14_SCADCFLOW");
  dueDate(source, "20250131", "10.00", 0);
  dueDate(source, "20250228", "20.00", 0);
  dueDate(source, "20250315", "5.00", 1);
  auto bo = duplication();
  bo->BdgDupSchede_Duplicazione();
  ASSERT_EQ(outcome(*bo), "0 ");
  const auto destination = card(2026);
  EXPECT_THAT(dueDates(destination), ElementsAre("20260131 10.00 0", "20260228 20.00 0"));

  db_->Execute("UPDATE BU14_SCADCFLOW SET BU14_IMPORTO = 11 WHERE BU14_IDBUDGET = " + destination +
               " AND BU14_DATASCAD = '20260131'");
  bo->IsDuplicaScadenzeManualiCashFlow = true;
  bo->BdgDupSchede_Duplicazione();
  EXPECT_THAT(dueDates(destination), ElementsAre("20260131 11.00 0", "20260228 20.00 0", "20260315 5.00 1"));
  bo->IsSovrascriviEsistenti = true;
  bo->BdgDupSchede_Duplicazione();
  EXPECT_THAT(dueDates(destination), ElementsAre("20260131 10.00 0", "20260228 20.00 0", "20260315 5.00 1"));
}

TEST_F(SafeMonth, DueDatesAreMadeOnlyWhereTheTermsAskForThem) {
  const auto source = card(2025);
  db_->Execute("DELETE FROM BU14_SCADCFLOW");
  db_->Execute(
      "UPDATE BU66_DETBUDGET SET BU66_IMPORTO = CASE WHEN BU66_PERIODO = 1 THEN 100 WHEN BU66_PERIODO = 2"
      " THEN 0.05 ELSE NULL END WHERE BU66_TIPO = 0 AND BU66_ID_BU65 = " +
      source);
  const auto made = [&](const char* terms) {
    db_->Execute(std::string("UPDATE BU67_BDGCASHFLOW SET ") + terms + " WHERE BU67_ID_BU65 = " + source);
    auto bo = duplication();
    bo->IsSovrascriviEsistenti = true;
    bo->BdgDupSchede_Duplicazione();
    EXPECT_EQ(outcome(*bo), "0 ");
    return dueDates(card(2026));
  };
  EXPECT_THAT(made("BU67_FLGSCADMAN = 0, BU67_NUMRATE = NULL, BU67_MESIRATA = NULL, BU67_GIORNISCAD = NULL,"
                   " BU67_DATAINIVAL = NULL"),
              ElementsAre());
  EXPECT_THAT(made("BU67_FLGSCADMAN = 1, BU67_NUMRATE = 3"), ElementsAre());
  // A month's end stays one; the last instalment takes the cents that do not divide.
  EXPECT_THAT(made("BU67_FLGSCADMAN = 0, BU67_NUMRATE = 3, BU67_MESIRATA = 1"),
              ElementsAre("20260131 33.33 0", "20260228 33.33 0", "20260228 0.02 0", "20260331 33.34 0",
                          "20260331 0.02 0", "20260430 0.01 0"));
  EXPECT_THAT(made("BU67_NUMRATE = 1, BU67_GIORNISCAD = 15"), ElementsAre("20260215 100.00 0", "20260315 0.05 0"));
}

TEST_F(SafeMonth, DuplicationRefusesWhatItCannotCopy) {
  db_->Execute(
      "INSERT INTO BU01_ANABUDGET (BU01_INDTIPO, BU01_SOTTOTIPO, BU01_FLGSEDI, BU01_INDPERIODO,"
      " BU01_INDPERFISO, BU01_NUMFORECAST) VALUES (4, 'FI', 1, 0, 0, 2), (4, 'TR', 1, 2, 1, 2)");
  const auto refused = [&](const std::function<void(CLSKORVAL&)>& change) {
    auto bo = duplication();
    change(*bo);
    const auto before = one("SELECT COUNT(*) FROM BU65_TESBUDGET");
    bo->BdgDupSchede_Duplicazione();
    EXPECT_EQ(one("SELECT COUNT(*) FROM BU65_TESBUDGET"), before);
    return outcome(*bo);
  };
  const std::string suffix = " in BdgDupSchede_Duplicazione";
  EXPECT_EQ(refused([](auto& bo) { bo.BdgDestinazioneSottoTipo = "ZZ"; }),
            "1 Il budget di destinazione 4/ZZ non è definito " + suffix);
  EXPECT_EQ(refused([](auto& bo) { bo.BdgDestinazioneAnnoEsercizio = 2031; }),
            "1 L'esercizio di destinazione 2031/1 non esiste " + suffix);
  EXPECT_EQ(refused([](auto& bo) { bo.BdgDestinazioneSottoTipo = "TR"; }),
            "1 I budget di origine e di destinazione hanno periodicità diverse " + suffix);
  // July 2022 to June 2023: the fiscal budget's first period is July, the calendar one's January.
  EXPECT_EQ(refused([](auto& bo) {
              bo.BdgDestinazioneSottoTipo = "FI";
              bo.BdgDestinazioneAnnoEsercizio = 2022;
            }),
            "1 I budget di origine e di destinazione contano i mesi da mesi diversi " + suffix);
  auto bo = duplication();
  bo->BdgDestinazioneSottoTipo = "FI";  // 2026 begins in January: both count from it
  bo->BdgDupSchede_Duplicazione();
  EXPECT_EQ(outcome(*bo), "0 ");
}

TEST_F(SafeMonth, DatesGivenAsTextAreReadByOneRule) {
  const auto actuals = [&](const Variant& from, const Variant& to) {
    db_->Execute("UPDATE BU66_DETBUDGET SET BU66_IMPORTO = 7 WHERE BU66_TIPO = 1");
    auto bo = object(4, "01");
    bo->ElencoSedi = std::make_shared<ado::Dictionary>();
    bo->ElencoSedi->Add(1, 1);
    bo->TipoDettaglioDestinazione = 1;
    bo->DaData = from;
    bo->AData = to;
    bo->BdgElaSchede_Elaborazione();
    EXPECT_EQ(outcome(*bo), "0 ");
    return list(
        "SELECT BU66_PERIODO, SUM(BU66_IMPORTO) FROM BU66_DETBUDGET WHERE BU66_TIPO = 1"
        " GROUP BY BU66_PERIODO ORDER BY BU66_PERIODO");
  };
  const auto expected = actuals(Date::FromYmd(2025, 2, 1), Date::FromYmd(2025, 3, 9));
  EXPECT_EQ(actuals(" 01/02/2025", "09/03/2025 "), expected);
  EXPECT_EQ(actuals("1/2/2025", "9/3/2025"), expected);
  EXPECT_EQ(actuals("2025-2-1", "20250309"), expected);
  EXPECT_EQ(actuals(45689, 45725.0), expected);
}

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
  db_->Execute(
      "INSERT INTO CG19_ANADITTAESER (CG19_DITTA_CG18, CG19_ANNO, CG19_PROGESER, CG19_DATAINIZIO,"
      " CG19_DATAFINE) VALUES (2, 2026, 1, '20260101', '20261231')");
  bo->CodiceDitta = 2;
  bo->BdgElaEco_ScriviBudget_DaRstSaldiElaEco();
  EXPECT_EQ(outcome(*bo), "1 La ditta 2 non è quella della sessione, 1 ");
  EXPECT_EQ(one("SELECT COUNT(*) FROM BU65_TESBUDGET WHERE BU65_ANNO = 2026"), "0");
}

TEST_F(SafeMonth, ACardMadeFromABalanceIsFoundAgainOrNotMade) {
  // The account alone does not tell the cards of a budget by account and project apart.
  db_->Execute("UPDATE BU01_ANABUDGET SET BU01_STRUTTURA = 'PRO' WHERE BU01_INDTIPO = 5 AND BU01_SOTTOTIPO = '01'");
  auto bo = object(5, "01", 2026);
  bo->DaConto = bo->AConto = "62050001";
  bo->BdgElaEco_PopolaRstSaldiElaEco();
  bo->BdgElaEco_ScriviBudget_DaRstSaldiElaEco();
  ASSERT_EQ(outcome(*bo), "0 ");
  EXPECT_EQ(one("SELECT COUNT(*) FROM BU65_TESBUDGET WHERE BU65_ANNO = 2026"), "0");
  ASSERT_EQ(bo->RstContiNonPresentiInStruttura->RecordCount(), 1);
  EXPECT_EQ(values::toPlainText((*bo->RstContiNonPresentiInStruttura)["CONTO"].Value()), "62050001");

  // Alignment: a card without its kind, or without a site, would be in no grid.
  db_->Execute("DELETE FROM BU61_STRUTTELEM WHERE BU61_CAMPO = 'BU65_INDCOSRIC_BU07' AND BU61_ELEMENTO = 1");
  auto align = object(4, "02");
  align->BdgTipoScheda = {};
  align->AllineaBU65_A_StrutturaBU60();
  EXPECT_EQ(outcome(*align), "1 BdgTipoScheda  : Dato non definito nel BO ");
  db_->Execute("DELETE FROM CG31_SEDI");
  align->BdgTipoScheda = 0;
  align->AllineaBU65_A_StrutturaBU60();
  EXPECT_EQ(outcome(*align), "1 CodiceSede  : Dato non definito nel BO ");
  EXPECT_EQ(one("SELECT COUNT(*) FROM BU65_TESBUDGET WHERE BU65_SOTTOTIPO_BU01 = '02' AND BU65_INDTIPO_BU01 = 4"), "0");
}

TEST_F(SafeMonth, AnAccountOfZerosTakesNoMovements) {
  const auto id = card(2025);
  const auto values = "SELECT BU66_TIPO, BU66_PERIODO, BU66_IMPORTO FROM BU66_DETBUDGET WHERE BU66_ID_BU65 = " + id +
                      " ORDER BY BU66_ID";
  for (const char* account : {"00000000", "00000000   "}) {
    db_->Execute("UPDATE BU65_TESBUDGET SET BU65_CONTO_CG24 = '" + std::string(account) + "' WHERE BU65_ID = " + id);
    const auto before = list(values);
    auto bo = object(4, "01");
    bo->DaScheda = bo->AScheda = "FIERE";
    bo->ElencoSedi = std::make_shared<ado::Dictionary>();
    bo->ElencoSedi->Add(1, 1);
    bo->TipoDettaglioDestinazione = 1;
    bo->BdgElaSchede_Elaborazione();
    EXPECT_EQ(outcome(*bo), "0 ");
    EXPECT_EQ(list(values), before);
  }
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
  db_->Execute(
      "INSERT INTO CG39_PRSDESPDC (CG39_DITTA_CG18, CG39_GRUPPO_CG10, CG39_CONTO_CG24, CG39_DESCR) VALUES"
      " (1, 1, '62040002', 'Saloni'), (2, 1, '62040002', 'Altri')");
  EXPECT_EQ(description(), "62040002 - Saloni");
  EXPECT_EQ(values::toPlainText(bo->GetDescrizioneConto(1, bdgPdcCoGe, 1, "62040002")), "Saloni");
}

TEST_F(SafeMonth, NumbersGoBySessionAndNullWins) {
  db_->Execute("UPDATE CG18_ANADITTE SET CG18_SEGNODEC = '.'");
  auto bo = object(4, "01");
  EXPECT_EQ(bo->CDecN("1.000"), Variant(values::Decimal::FromScaled(1000)));
  bo->ActiveInterface = std::make_shared<suite::Sessione>(db_);
  EXPECT_EQ(bo->CDecN("1.000"), Variant(values::Decimal::FromScaled(1000, 3)));
  EXPECT_EQ(values::toText(bo->BFill(1.5, 5)), "1.5  ");
  EXPECT_EQ(values::toText(bo->RTrimN(1.5)), "1.5");
  bo->ActiveInterface = session_;
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
}  // namespace bukorval
