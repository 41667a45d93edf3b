// The elaborations of cards and of balances on the demo company.

#include "object/FaultSweep.h"

namespace {

using namespace bukorval;

class Elaborazioni : public object_tests::FaultSweep {
 protected:
  /// What movements add to an account: debits less credits.
  static constexpr const char* kSigned =
      "SUM(CASE WHEN CG42_INDDAAV = 2 THEN 0 - CG42_IMPTOTALE ELSE CG42_IMPTOTALE END)";
  static constexpr const char* kMovements =
      " FROM CG42_MOVCONT INNER JOIN CG41_PRIMANOTA ON CG42_DITTA_CG18 = CG41_DITTA_CG18"
      " AND CG42_NUMREG_CG41 = CG41_NUMREG WHERE CG41_ANNO_CG19 = 2025 AND CG41_INDPROVREG = 0";
};

TEST_F(Elaborazioni, CardsSurviveAFaultInAnyStatement) {
  for (const int dateKind : {0, 1}) {
    const int statements = sweep(
        [&] {
          auto bo = elaboration({1, 2});
          bo->DaScheda = bo->AScheda = "PULIZIE";
          bo->TipoDataMovimenti = dateKind;
          bo->IsApplicaPercentuali = true;
          return bo;
        },
        [](CLSKORVAL& bo) { bo.BdgElaSchede_Elaborazione(); });
    EXPECT_GT(statements, 50);
  }
}

TEST_F(Elaborazioni, WritingBalancesSurvivesAFaultInAnyStatement) {
  auto proposal = object(5, "01", 2026);
  proposal->DaConto = "62050000";
  proposal->AConto = "62059999";
  proposal->BdgElaEco_PopolaRstSaldiElaEco();
  ASSERT_EQ(outcome(*proposal), "0 ");
  ASSERT_GT(proposal->RstSaldiElaEco->RecordCount(), 0);
  const int statements = sweep(
      [&] {
        auto bo = object(5, "01", 2026);
        bo->RstSaldiElaEco = proposal->RstSaldiElaEco;
        return bo;
      },
      [](CLSKORVAL& bo) { bo.BdgElaEco_ScriviBudget_DaRstSaldiElaEco(); });
  EXPECT_GT(statements, 50);
}

TEST_F(Elaborazioni, AHandlerMayReplaceEverySetWhileItIsInUse) {
  const struct {
    const char* name;
    std::function<std::unique_ptr<CLSKORVAL>()> make;
    void (*run)(CLSKORVAL&);
  } rows[] = {{"cards",
               [this] {
                 return elaboration({1, 2});
               },
               [](CLSKORVAL& bo) { bo.BdgElaSchede_Elaborazione(); }},
              {"balances", [this] { return object(5, "01", 2026); },
               [](CLSKORVAL& bo) {
                 bo.BdgElaEco_PopolaRstSaldiElaEco();
                 bo.BdgElaEco_ScriviBudget_DaRstSaldiElaEco();
               }},
              {"duplication", [this] { return elaboration({1}); },
               [](CLSKORVAL& bo) {
                 bo.CodiceSede = bo.BdgDestinazioneCodiceSede = 1;
                 bo.BdgDestinazioneSottoTipo = "02";
                 bo.BdgDestinazioneAnnoEsercizio = 2025;
                 bo.BdgDestinazioneProgressivoEsercizio = 1;
                 bo.BdgDupSchede_Duplicazione();
               }}};
  for (const auto& row : rows) {
    auto bo = row.make();
    int steps = 0;
    const auto replace = [&, object = bo.get()](values::Variant&) {
      ++steps;
      object->RstBdgSchedeDaElaborare = object->RstScostPerConto = object->RstScostPerPeriodo = nullptr;
      object->RstContiNonPresentiInStruttura = std::make_shared<ado::Recordset>();
      if (object->RstSaldiElaEco) object->RstSaldiElaEco = object->RstSaldiElaEco->Clone();
      object->ElencoSedi = nullptr;
    };
    bo->eventi.BeginProcess = [&](values::Variant&, values::Variant& n) { replace(n); };
    bo->eventi.StepProcess = replace;
    row.run(*bo);
    EXPECT_EQ(outcome(*bo), "0 ") << row.name;
    EXPECT_GT(steps, 2) << row.name;
  }
}

TEST_F(Elaborazioni, CardTotalsEqualPlainSums) {
  // Percentages: shared, then raised; each step rounds to the cent.
  db->Execute("UPDATE BU90_TABPERCBUD SET BU90_PERCRIP = 33.33, BU90_PERCSCO = -5.55 WHERE BU90_PERCRIP IS NOT NULL");
  for (const bool percentages : {false, true}) {
    auto bo = elaboration({1});
    bo->IsApplicaPercentuali = percentages;
    bo->BdgElaSchede_Elaborazione();
    ASSERT_EQ(outcome(*bo), "0 ");
    int compared = 0;
    const auto cards = db->Execute(
        "SELECT BU65_ID, BU65_CONTO_CG24, BU90_PERCRIP, BU90_PERCSCO FROM BU65_TESBUDGET LEFT OUTER JOIN"
        " BU90_TABPERCBUD ON BU90_IDBUDGET = BU65_ID WHERE BU65_INDTIPO_BU01 = 4 AND BU65_SOTTOTIPO_BU01 = '01'"
        " AND BU65_ANNO = 2025 AND BU65_CODICE_CG31 = 1 AND BU65_INDCOSRIC_BU07 = 0"
        " AND BU65_CONTO_CG24 NOT LIKE '%0000'");
    for (; !cards->Eof(); cards->MoveNext()) {
      const auto id = values::toPlainText((*cards)["BU65_ID"].Value());
      const auto account = values::toPlainText((*cards)["BU65_CONTO_CG24"].Value());
      const auto raised = [&](Decimal amount) {
        const auto hundred = Decimal::FromScaled(100);
        const auto &share = (*cards)["BU90_PERCRIP"].Value(), &raise = (*cards)["BU90_PERCSCO"].Value();
        if (percentages && !share.isNull()) amount = (amount * values::toDecimal(share) / hundred).rounded(2);
        if (percentages && !raise.isNull()) amount = (amount + amount * values::toDecimal(raise) / hundred).rounded(2);
        return amount;
      };
      for (int month = 1; month <= 12; ++month) {
        const auto sum = db->Execute(std::string("SELECT ISNULL(") + kSigned + ", 0) AS TOTAL" + kMovements +
                                     " AND CG41_CODICE_CG31 = 1 AND CG42_CONTOPAR_CG24 = '" + account +
                                     "' AND MONTH(CG41_DATAREG) = " + std::to_string(month) +
                                     " AND CG42_CODICE_CG33 NOT IN ('150', '151')");
        const auto expected = raised(values::toDecimal((*sum)["TOTAL"].Value())).toScaled(2).value();
        const auto written = db->Execute(
            "SELECT BU66_IMPORTO FROM BU66_DETBUDGET WHERE BU66_TIPO = 1"
            " AND BU66_ID_BU65 = " +
            id + " AND BU66_PERIODO = " + std::to_string(month));
        EXPECT_EQ(values::toDecimal((*written)["BU66_IMPORTO"].Value()).toScaled(2), expected)
            << "card " << id << " month " << month;
        ++compared;
      }
    }
    EXPECT_GT(compared, 50);
  }
}

TEST_F(Elaborazioni, DatesGivenAsTextAreReadByOneRule) {
  const auto actuals = [&](const Variant& from, const Variant& to) {
    db->Execute("UPDATE BU66_DETBUDGET SET BU66_IMPORTO = 7 WHERE BU66_TIPO = 1");
    auto bo = elaboration({1});
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

TEST_F(Elaborazioni, AnAccountOfZerosTakesNoMovements) {
  const auto id = card(2025);
  const auto values = "SELECT BU66_TIPO, BU66_PERIODO, BU66_IMPORTO FROM BU66_DETBUDGET WHERE BU66_ID_BU65 = " + id +
                      " ORDER BY BU66_ID";
  for (const char* account : {"00000000", "00000000   "}) {
    db->Execute("UPDATE BU65_TESBUDGET SET BU65_CONTO_CG24 = '" + std::string(account) + "' WHERE BU65_ID = " + id);
    const auto before = list(values);
    auto bo = elaboration({1});
    bo->DaScheda = bo->AScheda = "FIERE";
    bo->BdgElaSchede_Elaborazione();
    EXPECT_EQ(outcome(*bo), "0 ");
    EXPECT_EQ(list(values), before);
  }
}

}  // namespace
