// The three elaborations on the demo company: whatever statement fails, nothing of a run stays.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "demo/DemoAzienda.h"
#include "object/CLSKORVAL.h"
#include "schema/Schema.h"
#include "sqlite/Provider.h"
#include "suite/Sessione.h"
#include "suite/Suite.h"
#include "support/FaultConnection.h"
#include "values/Conversion.h"

namespace bukorval {
namespace {

using testing_support::FaultConnection;
using values::Date;

constexpr const char* kTabelle[] = {"BU65_TESBUDGET", "BU66_DETBUDGET",  "BU67_BDGCASHFLOW",
                                    "BU14_SCADCFLOW", "BU90_TABPERCBUD", "BU63_DETMASTRI"};

class Elaborazioni : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    sqlite::registerSqlite();
    suite::registraServiziSuite();
    vera_ = ado::createConnection();
    vera_->ConnectionString = "Provider=SQLite;Data Source=:memory:";
    vera_->Open();
    schema::create(*vera_);
    demo::creaDemo(*vera_);
    sessione_ = std::make_shared<suite::Sessione>(vera_);
  }
  static void TearDownTestSuite() {
    sessione_.reset();
    vera_.reset();
  }

  /// Every row of the budget's tables as text.
  static std::string tutto() {
    std::string testo;
    for (const char* tabella : kTabelle) {
      const auto righe = vera_->Execute(std::string("SELECT * FROM ") + tabella + " ORDER BY 1, 2");
      for (; !righe->Eof(); righe->MoveNext()) {
        for (std::size_t i = 0; i < righe->Fields().Count(); ++i)
          testo += values::toPlainText(righe->Fields().Item(i).Value()) + "|";
        testo += '\n';
      }
    }
    return testo;
  }

  static std::unique_ptr<CLSKORVAL> nuovo(const ado::ConnectionPtr& connessione) {
    auto bo = std::make_unique<CLSKORVAL>();
    bo->ActiveInterface = sessione_;
    bo->Connessione(connessione);
    bo->CodiceDitta = sessione_->CodiceDitta();
    bo->CodicePdcCoGeDitta = sessione_->CodicePdcCoGe();
    bo->AnnoEsercizio = 2025;
    bo->ProgressivoEsercizio = 1;
    bo->AnnoEsercizioMovimenti = 2025;
    bo->ProgressivoEsercizioMovimenti = 1;
    bo->DaData = Date::FromYmd(2025, 1, 1);
    bo->AData = Date::FromYmd(2025, 12, 31);
    bo->TipoMovimenti = "1 = 1";
    bo->TipoScostamento = bdgScostamentoNessuno;
    return bo;
  }

  /// Fails every statement in turn; the run must then say 99 with its suffix and leave every table as it was.
  /// Ends when a run meets no fault; that one may write.
  static int spazza(const std::function<void(CLSKORVAL&)>& prepara, const std::function<void(CLSKORVAL&)>& esegui) {
    const std::string prima = tutto();
    for (int k = 1;; ++k) {
      auto guasta = std::make_shared<FaultConnection>(vera_);
      const auto bo = nuovo(guasta);
      prepara(*bo);
      guasta->calls = 0;
      guasta->failAt = k;
      esegui(*bo);
      if (guasta->calls < k) {
        EXPECT_EQ(bo->Stato(), bdgStatoOk) << bo->errore();
        return k - 1;
      }
      EXPECT_EQ(bo->Stato(), bdgStatoErrore) << "statement " << k;
      EXPECT_THAT(bo->errore(), testing::MatchesRegex(std::string(FaultConnection::kFault) + " in [A-Za-z0-9_]+ ?"))
          << k;
      const std::string dopo = tutto();
      if (dopo != prima) {
        ADD_FAILURE() << "statement " << k << " left something: " << bo->errore();
        return k;
      }
    }
  }

  static std::string valore(const std::string& sql) {
    const auto righe = vera_->Execute(sql);
    return righe->Eof() ? "none" : values::toPlainText(righe->Fields().Item(std::size_t{0}).Value());
  }

  static inline ado::ConnectionPtr vera_;
  static inline std::shared_ptr<suite::Sessione> sessione_;
};

void schedeDiSede(CLSKORVAL& bo, const char* da, const char* a) {
  bo.TipoBudget = 4;
  bo.SottoTipoBudget = "01";
  bo.BdgTipoScheda = 0;
  bo.DaScheda = da;
  bo.AScheda = a;
}

TEST_F(Elaborazioni, CardsSurviveAFaultInAnyStatement) {
  for (const int tipoData : {0, 1}) {
    const int statements = spazza(
        [&](CLSKORVAL& bo) {
          schedeDiSede(bo, "FIERE", "FORMAZIONE");
          bo.TipoDettaglioDestinazione = 1;
          bo.TipoDataMovimenti = tipoData;
          bo.IsApplicaPercentuali = true;
          bo.ElencoSedi = std::make_shared<ado::Dictionary>();
          bo.ElencoSedi->Add(1, 1);
          bo.ElencoSedi->Add(2, 2);
        },
        [](CLSKORVAL& bo) { bo.BdgElaSchede_Elaborazione(); });
    EXPECT_GT(statements, 50);
  }
}

TEST_F(Elaborazioni, CardTotalsEqualPlainSums) {
  auto bo = nuovo(vera_);
  schedeDiSede(*bo, "", "");
  bo->TipoDettaglioDestinazione = 1;
  bo->ElencoSedi = std::make_shared<ado::Dictionary>();
  bo->ElencoSedi->Add(1, 1);
  bo->BdgElaSchede_Elaborazione();
  ASSERT_EQ(bo->Stato(), bdgStatoOk) << bo->errore();
  int confrontate = 0;
  const auto schede = vera_->Execute(
      "SELECT BU65_ID, BU65_CONTO_CG24 FROM BU65_TESBUDGET WHERE BU65_INDTIPO_BU01 = 4 AND BU65_SOTTOTIPO_BU01 = '01'"
      " AND BU65_ANNO = 2025 AND BU65_CODICE_CG31 = 1 AND BU65_INDCOSRIC_BU07 = 0 AND BU65_CONTO_CG24 NOT LIKE "
      "'%0000'");
  for (; !schede->Eof(); schede->MoveNext()) {
    const auto id = values::toPlainText((*schede)["BU65_ID"].Value());
    const auto conto = values::toPlainText((*schede)["BU65_CONTO_CG24"].Value());
    for (int mese = 1; mese <= 12; ++mese) {
      const auto atteso = valore(
          "SELECT SUM(CASE WHEN CG42_INDDAAV = 2 THEN 0 - CG42_IMPTOTALE ELSE CG42_IMPTOTALE END) FROM CG42_MOVCONT"
          " INNER JOIN CG41_PRIMANOTA ON CG42_DITTA_CG18 = CG41_DITTA_CG18 AND CG42_NUMREG_CG41 = CG41_NUMREG"
          " WHERE CG41_ANNO_CG19 = 2025 AND CG41_INDPROVREG = 0 AND CG41_CODICE_CG31 = 1 AND CG42_CONTOPAR_CG24 = '" +
          conto + "' AND MONTH(CG41_DATAREG) = " + std::to_string(mese) +
          " AND CG42_CODICE_CG33 NOT IN ('150', '151')");
      const auto scritto =
          valore("SELECT BU66_IMPORTO FROM BU66_DETBUDGET WHERE BU66_TIPO = 1 AND BU66_ID_BU65 = " + id +
                 " AND BU66_PERIODO = " + std::to_string(mese));
      EXPECT_EQ(scritto, atteso.empty() ? "0.00" : atteso) << "card " << id << " month " << mese;
      ++confrontate;
    }
  }
  EXPECT_GT(confrontate, 50);
}

TEST_F(Elaborazioni, DuplicationSurvivesAFaultInAnyStatementAndThenCopiesEveryValue) {
  const auto prepara = [](CLSKORVAL& bo) {
    schedeDiSede(bo, "FIERE", "FORMAZIONE");
    bo.CodiceSede = 1;
    bo.BdgDestinazioneSottoTipo = "02";
    bo.BdgDestinazioneAnnoEsercizio = 2025;
    bo.BdgDestinazioneProgressivoEsercizio = 1;
    bo.BdgDestinazioneCodiceSede = 2;
    bo.IsForzoDuplicazioneContoCliFor = true;
    bo.IsDuplicaScadenzeCashFlow = true;
    bo.IsDuplicaScadenzeManualiCashFlow = true;
  };
  EXPECT_GT(spazza(prepara, [](CLSKORVAL& bo) { bo.BdgDupSchede_Duplicazione(); }), 50);
  const auto somma = [](const char* sottoTipo, int sede) {
    return valore(
        "SELECT SUM(BU66_IMPORTO) FROM BU66_DETBUDGET INNER JOIN BU65_TESBUDGET ON BU65_ID = BU66_ID_BU65"
        " WHERE BU66_TIPO = 0 AND BU65_INDTIPO_BU01 = 4 AND BU65_ANNO = 2025 AND BU65_SOTTOTIPO_BU01 = '" +
        std::string(sottoTipo) +
        "' AND BU65_SCHEDA_BU07 BETWEEN 'FIERE' AND 'FORMAZIONE' AND BU65_CODICE_CG31 = " + std::to_string(sede));
  };
  EXPECT_EQ(somma("02", 2), somma("01", 1));
  EXPECT_NE(somma("02", 2), "");
  // Twice onto the same destination, and onto itself: nothing changes.
  for (const bool suSeStessa : {false, true}) {
    const std::string prima = tutto();
    const auto bo = nuovo(vera_);
    prepara(*bo);
    bo->IsDuplicaScadenzeCashFlow = false;
    if (suSeStessa) {
      bo->BdgDestinazioneSottoTipo = "01";
      bo->BdgDestinazioneCodiceSede = 1;
    }
    bo->BdgDupSchede_Duplicazione();
    EXPECT_EQ(bo->Stato(), bdgStatoOk) << bo->errore();
    EXPECT_EQ(tutto(), prima) << suSeStessa;
  }
}

TEST_F(Elaborazioni, DuplicationRefusesWhatItCannotCopy) {
  const auto esito = [](const std::function<void(CLSKORVAL&)>& guasta) {
    const auto bo = nuovo(vera_);
    schedeDiSede(*bo, "", "");
    bo->CodiceSede = 1;
    bo->BdgDestinazioneSottoTipo = "02";
    bo->BdgDestinazioneAnnoEsercizio = 2025;
    bo->BdgDestinazioneProgressivoEsercizio = 1;
    bo->BdgDestinazioneCodiceSede = 2;
    guasta(*bo);
    bo->BdgDupSchede_Duplicazione();
    return std::to_string(bo->Stato()) + bo->errore();
  };
  EXPECT_EQ(esito([](CLSKORVAL& bo) { bo.CodiceSede = {}; }),
            "1 CodiceSede : Dato non definito nel BO  in BdgDupSchede_Duplicazione");
  EXPECT_EQ(esito([](CLSKORVAL& bo) { bo.BdgDestinazioneCodiceSede = {}; }),
            "1 BdgDestinazioneCodiceSede : Dato non definito nel BO  in BdgDupSchede_Duplicazione");
  EXPECT_THAT(esito([](CLSKORVAL& bo) { bo.BdgDestinazioneSottoTipo = "99"; }),
              testing::HasSubstr("periodicità diverse"));
}

TEST_F(Elaborazioni, WritingBalancesSurvivesAFaultInAnyStatement) {
  const auto prepara = [](CLSKORVAL& bo) {
    bo.TipoBudget = 5;
    bo.SottoTipoBudget = "01";
    bo.DaConto = "62050000";
    bo.AConto = "62059999";
    bo.AnnoEsercizio = 2026;
    bo.BdgElaEco_PopolaRstSaldiElaEco();
    ASSERT_EQ(bo.Stato(), bdgStatoOk) << bo.errore();
    ASSERT_GT(bo.RstSaldiElaEco->RecordCount(), 0);
  };
  EXPECT_GT(spazza(prepara, [](CLSKORVAL& bo) { bo.BdgElaEco_ScriviBudget_DaRstSaldiElaEco(); }), 15);
}

/// The proposal of a budget on another chart, worked out from monthly sums and the table of links.
std::map<std::pair<std::string, int>, values::Decimal> riclassificati(ado::Connection& db,
                                                                      const std::string& collegamenti,
                                                                      int mesiPerPeriodo) {
  std::map<std::pair<std::string, int>, std::string> verso;
  const auto link = db.Execute(collegamenti);
  for (; !link->Eof(); link->MoveNext())
    verso[{values::toPlainText((*link)["CONTO"].Value()), values::toInt32((*link)["SEGNO"].Value())}] =
        values::toPlainText((*link)["VERSO"].Value());
  std::map<std::pair<std::string, int>, values::Decimal> attesi;
  const auto saldi = db.Execute(
      "SELECT CG42_CONTOPAR_CG24 AS CONTO, MONTH(CG41_DATAREG) AS MESE, SUM(CASE WHEN CG42_INDDAAV = 2 THEN 0 - "
      "CG42_IMPTOTALE"
      " ELSE CG42_IMPTOTALE END) AS SALDO FROM CG42_MOVCONT INNER JOIN CG41_PRIMANOTA ON CG42_DITTA_CG18 = "
      "CG41_DITTA_CG18 AND"
      " CG42_NUMREG_CG41 = CG41_NUMREG WHERE CG41_ANNO_CG19 = 2025 AND CG41_INDPROVREG = 0"
      " GROUP BY CG42_CONTOPAR_CG24, MONTH(CG41_DATAREG)");
  for (; !saldi->Eof(); saldi->MoveNext()) {
    const auto saldo = values::toDecimal((*saldi)["SALDO"].Value());
    const auto conto = verso.find({values::toPlainText((*saldi)["CONTO"].Value()), saldo.isNegative() ? 2 : 1});
    if (conto == verso.end() || conto->second.empty()) continue;
    auto& totale = attesi[{conto->second, (values::toInt32((*saldi)["MESE"].Value()) - 1) / mesiPerPeriodo + 1}];
    totale = totale + saldo;
  }
  return attesi;
}

TEST_F(Elaborazioni, ProposalsOnOtherChartsEqualPlainSumsAndAreWritten) {
  struct Caso {
    const char *sottoTipo, *collegamenti, *colonna;
    int mesiPerPeriodo;
  };
  const Caso casi[] = {
      {"02", "SELECT CG20_CONTO_CG24 AS CONTO, CG20_INDSEGNO AS SEGNO, CG20_CODICE_CG23 AS VERSO FROM CG20_COLLPDCRICL",
       "BU65_CODICE_CG23", 6},
      {"03", "SELECT CG83_CONTO_CG24 AS CONTO, CG83_INDSEGNO AS SEGNO, CG83_CONTORICL_PC03 AS VERSO FROM CG83_COLLRICL",
       "BU65_CONTO_PC03", 12},
  };
  for (const auto& caso : casi) {
    const auto bo = nuovo(vera_);
    bo->TipoBudget = 5;
    bo->SottoTipoBudget = caso.sottoTipo;
    bo->AnnoEsercizio = 2026;
    bo->BdgElaEco_PopolaRstSaldiElaEco();
    ASSERT_EQ(bo->Stato(), bdgStatoOk) << bo->errore();
    auto attesi = riclassificati(*vera_, caso.collegamenti, caso.mesiPerPeriodo);
    EXPECT_GT(attesi.size(), 3u);
    bo->BdgElaEco_ScriviBudget_DaRstSaldiElaEco();
    ASSERT_EQ(bo->Stato(), bdgStatoOk) << bo->errore();
    auto& righe = *bo->RstSaldiElaEco;
    for (righe.MoveFirst(); !righe.Eof(); righe.MoveNext()) {
      const auto conto = values::toPlainText(righe["CONTO"].Value());
      const auto periodo = values::toInt32(righe["PERIODO"].Value());
      const auto atteso = values::toPlainText(attesi[{conto, periodo}].rounded(2));
      EXPECT_EQ(values::toPlainText(righe["IMPORTO"].Value()), atteso) << conto << " " << periodo;
      EXPECT_EQ(
          valore("SELECT BU66_IMPORTO FROM BU66_DETBUDGET INNER JOIN BU65_TESBUDGET ON BU65_ID = BU66_ID_BU65 WHERE"
                 " BU65_ANNO = 2026 AND BU65_INDTIPO_BU01 = 5 AND BU66_TIPO = 0 AND BU65_SOTTOTIPO_BU01 = '" +
                 std::string(caso.sottoTipo) + "' AND " + caso.colonna + " = '" + conto +
                 "' AND BU66_PERIODO = " + std::to_string(periodo)),
          atteso);
      attesi.erase({conto, periodo});
    }
    EXPECT_TRUE(attesi.empty()) << attesi.begin()->first.first;
  }
}

}  // namespace
}  // namespace bukorval
