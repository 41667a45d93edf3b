// Cards copied into another budget, year or site, on the demo company.

#include "object/FaultSweep.h"

namespace {

using namespace bukorval;
using testing::ElementsAre;

class Duplicazione : public object_tests::FaultSweep {
 protected:
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
  /// "day period amount manual" of a card's due dates.
  std::vector<std::string> dueDates(const std::string& card) const {
    return list(
        "SELECT CONVERT(NVARCHAR(8), BU14_DATASCAD, 112), BU14_PERIODO, BU14_IMPORTO, BU14_FLGMANUAL"
        " FROM BU14_SCADCFLOW WHERE BU14_IDBUDGET = " +
        card + " ORDER BY BU14_DATASCAD, BU14_ID");
  }
  void dueDate(const std::string& card, const std::string& day, const std::string& amount, int manual) const {
    testing_support::insert(*db, "BU14_SCADCFLOW",
                            "BU14_IDBUDGET=" + card + ", BU14_PERIODO=1, BU14_DATASCAD='" + day +
                                "', BU14_IMPORTO=" + amount + ", BU14_FLGMANUAL=" + std::to_string(manual));
  }
  /// Every row of the budget's tables.
  std::vector<std::string> everything() const {
    std::vector<std::string> rows;
    for (const std::string table : {"BU65_TESBUDGET", "BU66_DETBUDGET", "BU67_BDGCASHFLOW", "BU14_SCADCFLOW"})
      for (const auto& row : list("SELECT * FROM " + table + " ORDER BY 1, 2")) rows.push_back(row);
    return rows;
  }
};

TEST_F(Duplicazione, SurvivesAFaultInAnyStatementAndThenCopiesEveryValue) {
  dueDate(card(2025), "20250315", "5.00", 1);
  const auto prepare = [&] {
    auto bo = duplication();
    bo->AScheda = "FORMAZIONE";
    bo->BdgDestinazioneSottoTipo = "02";
    bo->BdgDestinazioneAnnoEsercizio = 2025;
    bo->BdgDestinazioneCodiceSede = 2;
    bo->IsForzoDuplicazioneContoCliFor = true;
    bo->IsDuplicaScadenzeManualiCashFlow = true;
    return bo;
  };
  EXPECT_GT(sweep(prepare, [](CLSKORVAL& bo) { bo.BdgDupSchede_Duplicazione(); }), 50);
  const auto sum = [&](const std::string& subtype, int site) {
    return one(
        "SELECT SUM(BU66_IMPORTO) FROM BU66_DETBUDGET INNER JOIN BU65_TESBUDGET ON BU65_ID = BU66_ID_BU65 WHERE"
        " BU66_TIPO = 0 AND BU65_INDTIPO_BU01 = 4 AND BU65_ANNO = 2025 AND BU65_SCHEDA_BU07 BETWEEN 'FIERE' AND"
        " 'FORMAZIONE' AND BU65_SOTTOTIPO_BU01 = '" +
        subtype + "' AND BU65_CODICE_CG31 = " + std::to_string(site));
  };
  EXPECT_EQ(sum("02", 2), sum("01", 1));
  EXPECT_NE(sum("02", 2), "");
  // Twice onto the same destination, and onto itself: nothing changes.
  for (const bool ontoItself : {false, true}) {
    const auto before = everything();
    const auto bo = prepare();
    if (ontoItself) {
      bo->BdgDestinazioneSottoTipo = "01";
      bo->BdgDestinazioneCodiceSede = 1;
    }
    bo->BdgDupSchede_Duplicazione();
    EXPECT_EQ(outcome(*bo), "0 ");
    EXPECT_EQ(everything(), before) << ontoItself;
  }
}

TEST_F(Duplicazione, AnotherKindOfTheSameCardKeepsItsTermsAndDueDates) {
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

TEST_F(Duplicazione, ValuesOfTheDestinationAreReplacedOnlyWhenAsked) {
  const auto source = card(2025);
  auto bo = duplication();
  bo->BdgDupSchede_Duplicazione();
  const auto destination = card(2026);
  const auto update = [&](const std::string& card, const std::string& cells) {
    db->Execute("UPDATE BU66_DETBUDGET SET " + cells +
                " WHERE BU66_TIPO = 0 AND BU66_PERIODO = 1 AND BU66_ID_BU65 = " + card);
  };
  update(source, "BU66_IMPORTO = 1, BU66_QTA1 = 2, BU66_QTA2 = 3");
  update(destination, "BU66_IMPORTO = NULL, BU66_QTA1 = 8, BU66_QTA2 = 9");
  const auto copied = [&] {
    bo->BdgDupSchede_Duplicazione();
    EXPECT_EQ(outcome(*bo), "0 ");
    return one(
        "SELECT BU66_IMPORTO, BU66_QTA1, BU66_QTA2 FROM BU66_DETBUDGET WHERE BU66_TIPO = 0 AND BU66_PERIODO = 1"
        " AND BU66_ID_BU65 = " +
        destination);
  };
  EXPECT_EQ(copied(), "1.00 8.000 9.000");
  bo->IsSovrascriviEsistenti = true;
  EXPECT_EQ(copied(), "1.00 2.000 3.000");
}

TEST_F(Duplicazione, DueDatesAreCopiedAndReplacedOnlyWhenAsked) {
  const auto source = card(2025);
  db->Execute("DELETE FROM BU14_SCADCFLOW");
  dueDate(source, "20250131", "10.00", 0);
  dueDate(source, "20250228", "20.00", 0);
  dueDate(source, "20250315", "5.00", 1);
  auto bo = duplication();
  bo->BdgDupSchede_Duplicazione();
  ASSERT_EQ(outcome(*bo), "0 ");
  const auto destination = card(2026);
  EXPECT_THAT(dueDates(destination), ElementsAre("20260131 1 10.00 0", "20260228 1 20.00 0"));

  db->Execute("UPDATE BU14_SCADCFLOW SET BU14_IMPORTO = 11 WHERE BU14_IDBUDGET = " + destination +
              " AND BU14_DATASCAD = '20260131'");
  bo->IsDuplicaScadenzeManualiCashFlow = true;
  bo->BdgDupSchede_Duplicazione();
  EXPECT_THAT(dueDates(destination), ElementsAre("20260131 1 11.00 0", "20260228 1 20.00 0", "20260315 1 5.00 1"));
  bo->IsSovrascriviEsistenti = true;
  bo->BdgDupSchede_Duplicazione();
  EXPECT_THAT(dueDates(destination), ElementsAre("20260131 1 10.00 0", "20260228 1 20.00 0", "20260315 1 5.00 1"));
}

TEST_F(Duplicazione, DueDatesAreMadeOnlyWhereTheTermsAskForThem) {
  const auto source = card(2025);
  db->Execute("DELETE FROM BU14_SCADCFLOW");
  db->Execute(
      "UPDATE BU66_DETBUDGET SET BU66_IMPORTO = CASE WHEN BU66_PERIODO = 1 THEN 100 WHEN BU66_PERIODO = 2"
      " THEN 0.05 ELSE NULL END WHERE BU66_TIPO = 0 AND BU66_ID_BU65 = " +
      source);
  const auto made = [&](const char* terms) {
    db->Execute(std::string("UPDATE BU67_BDGCASHFLOW SET ") + terms + " WHERE BU67_ID_BU65 = " + source);
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
              ElementsAre("20260131 1 33.33 0", "20260228 1 33.33 0", "20260228 2 0.02 0", "20260331 1 33.34 0",
                          "20260331 2 0.02 0", "20260430 2 0.01 0"));
  EXPECT_THAT(made("BU67_NUMRATE = 2, BU67_MESIRATA = 6, BU67_GIORNISCAD = 15"),
              ElementsAre("20260215 1 50.00 0", "20260315 2 0.03 0", "20260815 1 50.00 0", "20260915 2 0.02 0"));
  // The terms are valid from a day: it moves into the year of the copy. A period that ends on it has due dates.
  EXPECT_THAT(made("BU67_NUMRATE = NULL, BU67_DATAINIVAL = '20250131'"),
              ElementsAre("20260215 1 100.00 0", "20260315 2 0.05 0"));
  EXPECT_THAT(made("BU67_DATAINIVAL = '20250201'"), ElementsAre("20260315 2 0.05 0"));
}

TEST_F(Duplicazione, RefusesWhatItCannotCopy) {
  db->Execute(
      "INSERT INTO BU01_ANABUDGET (BU01_INDTIPO, BU01_SOTTOTIPO, BU01_FLGSEDI, BU01_INDPERIODO,"
      " BU01_INDPERFISO, BU01_NUMFORECAST) VALUES (4, 'FI', 1, 0, 0, 2), (4, 'TR', 1, 2, 1, 2)");
  const std::pair<std::function<void(CLSKORVAL&)>, std::string> rows[] = {
      {[](auto& bo) { bo.CodiceSede = {}; }, " CodiceSede : Dato non definito nel BO"},
      {[](auto& bo) { bo.BdgDestinazioneCodiceSede = {}; }, " BdgDestinazioneCodiceSede : Dato non definito nel BO"},
      {[](auto& bo) { bo.BdgDestinazioneSottoTipo = "ZZ"; }, "Il budget di destinazione 4/ZZ non è definito"},
      {[](auto& bo) { bo.BdgDestinazioneAnnoEsercizio = 2031; }, "L'esercizio di destinazione 2031/1 non esiste"},
      {[](auto& bo) { bo.BdgDestinazioneSottoTipo = "TR"; },
       "I budget di origine e di destinazione hanno periodicità diverse"},
      // July 2022 to June 2023: the fiscal budget's first period is July, the calendar one's January.
      {[](auto& bo) { bo.BdgDestinazioneSottoTipo = "FI", bo.BdgDestinazioneAnnoEsercizio = 2022; },
       "I budget di origine e di destinazione contano i mesi da mesi diversi"}};
  const auto before = everything();
  for (const auto& [change, refusal] : rows) {
    auto refused = duplication();
    change(*refused);
    refused->BdgDupSchede_Duplicazione();
    EXPECT_EQ(outcome(*refused), "1 " + refusal + "  in BdgDupSchede_Duplicazione");
    EXPECT_EQ(everything(), before);
  }
  auto bo = duplication();
  bo->BdgDestinazioneSottoTipo = "FI";  // 2026 begins in January: both count from it
  bo->BdgDupSchede_Duplicazione();
  EXPECT_EQ(outcome(*bo), "0 ");
}

}  // namespace
