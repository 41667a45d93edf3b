// Our own accounting situation: balances of the movement tables under each option.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <string>
#include <vector>

#include "schema/Schema.h"
#include "sqlite/Provider.h"
#include "suite/SituazioneMovimenti.h"
#include "suite/Suite.h"
#include "values/Conversion.h"

namespace {

using suite::SituazioneMovimenti;
using testing::ElementsAre;
using values::Date;
using values::Decimal;

class Situazione : public testing::Test {
 protected:
  Situazione() {
    sqlite::registerSqlite();
    db->ConnectionString = "Provider=SQLite;Data Source=:memory:";
    db->Open();
    schema::create(*db);
    situazione.Connection = db;
    situazione.Ditta = 1;
    situazione.GruppoPdC = 1;
    situazione.AnnoEsercizio = 2025;
    situazione.ProgrEsercizio = 1;
    mese(1);
    situazione.TipoData = 0;
  }
  void mese(int m) {
    situazione.DataInizioElab = Date::FromYmd(2025, m, 1);
    situazione.DataFineElab = Date::FromYmd(2025, m, 1).lastOfMonth();
  }
  /// A registration with one line. `testata` and `riga` are further columns with their values, "COLUMN=value, …".
  void movimento(const std::string& data, const std::string& conto, int segno, const std::string& importo,
                 const std::string& testata = "", const std::string& riga = "") {
    const std::string n = std::to_string(++numero);
    inserisci("CG41_PRIMANOTA",
              "CG41_DITTA_CG18=1, CG41_NUMREG=" + n + ", CG41_DATAREG='" + data + "', CG41_ANNO_CG19=2025," +
                  " CG41_PROGESER_CG19=1",
              testata);
    inserisci("CG42_MOVCONT",
              "CG42_DITTA_CG18=1, CG42_NUMREG_CG41=" + n + ", CG42_NUMRIGACONT=1, CG42_GRUPPO_CG10=1," +
                  " CG42_CONTOPAR_CG24='" + conto + "', CG42_INDDAAV=" + std::to_string(segno) +
                  ", CG42_IMPTOTALE=" + importo,
              riga);
  }
  /// "account column amount" of every row.
  std::vector<std::string> saldi() {
    situazione.CreaRecordsetSituazioneEconomicaPatrimoniale();
    EXPECT_EQ(situazione.Stato, 0) << situazione.errore;
    std::vector<std::string> testi;
    auto& righe = *situazione.RecordsetSituazioneEP;
    for (; !righe.Eof(); righe.MoveNext()) {
      std::string testo = values::toPlainText(righe["conto"].Value());
      for (const char* colonna : {"ATTIVITA", "PASSIVITA"})
        if (!righe[colonna].Value().isNull())
          testo += std::string(" ") + colonna[0] + values::toPlainText(righe[colonna].Value());
      testi.push_back(testo);
    }
    return testi;
  }

  ado::ConnectionPtr db = ado::createConnection();
  SituazioneMovimenti situazione;

 private:
  void inserisci(const std::string& tabella, const std::string& fisse, const std::string& altre) {
    // A column named again takes the later value.
    std::vector<std::pair<std::string, std::string>> colonne;
    std::string testo = altre.empty() ? fisse : fisse + ", " + altre;
    while (!testo.empty()) {
      const auto fine = testo.find(", ");
      const auto voce = testo.substr(0, fine);
      testo = fine == std::string::npos ? "" : testo.substr(fine + 2);
      const auto uguale = voce.find('=');
      std::erase_if(colonne, [&](const auto& c) { return c.first == voce.substr(0, uguale); });
      colonne.emplace_back(voce.substr(0, uguale), voce.substr(uguale + 1));
    }
    std::string nomi, valori;
    for (const auto& [nome, valore] : colonne) {
      nomi += (nomi.empty() ? "" : ", ") + nome;
      valori += (valori.empty() ? "" : ", ") + valore;
    }
    db->Execute("INSERT INTO " + tabella + " (" + nomi + ") VALUES (" + valori + ")");
  }
  int numero = 0;
};

TEST_F(Situazione, BalancesStandOnTheirSideByAccount) {
  movimento("20250131 18:30:00", "60", 1, "100.10");
  movimento("20250101", "60", 2, "0.20");
  movimento("20250115", "70", 2, "50");
  movimento("20250115", "40", 1, "9999999999999.99");
  movimento("20250115", "10", 1, "3");
  movimento("20250115", "10", 2, "3");
  movimento("20250201", "60", 1, "1");
  EXPECT_THAT(saldi(), ElementsAre("10 A0.00", "40 A9999999999999.99", "60 A99.90", "70 P50.00"));
  situazione.SaldoDiversoDaZero = 1;
  EXPECT_THAT(saldi(), ElementsAre("40 A9999999999999.99", "60 A99.90", "70 P50.00"));
}

TEST_F(Situazione, OnlyTheMovementsAskedForCount) {
  movimento("20250110", "60", 1, "1");
  movimento("20250110", "60", 1, "10", "CG41_CODICE_CG31=1");
  movimento("20250110", "60", 1, "100", "CG41_CODICE_CG31=1", "CG42_CODICE_CG31=2");
  movimento("20250110", "60", 1, "1000", "CG41_INDTIPOMOV=2");
  movimento("20250110", "60", 1, "10000", "CG41_INDPROVREG=3");
  movimento("20250110", "60", 1, "20000", "CG41_INDPROVREG=4");
  movimento("20250110", "60", 1, "100000", "CG41_ANNO_CG19=2024");
  movimento("20250110", "60", 1, "200000", "CG41_PROGESER_CG19=2");
  movimento("20250110", "60", 1, "300000", "CG41_DITTA_CG18=2", "CG42_DITTA_CG18=2");
  movimento("20250110", "60", 1, "400000", "", "CG42_GRUPPO_CG10=2");
  struct Caso {
    const char* nome;
    std::function<void(SituazioneMovimenti&)> opzioni;
    std::vector<std::string> attesi;
  };
  const Caso casi[] = {
      {"no options", [](auto&) {}, {"60 A1111.00"}},
      {"site of the registration", [](auto& s) { s.SedeDaElaborare = 1; }, {"60 A10.00"}},
      {"site of the line", [](auto& s) { s.SedeDaElaborare = 2; }, {"60 A100.00"}},
      {"kinds of movements",
       [](auto& s) { s.TipiMov_WhereCondition = "CG41_INDTIPOMOV = 2 OR CG41_INDTIPOMOV = 9"; },
       {"60 A1000.00"}},
      {"depreciation", [](auto& s) { s.SimulaAmmCivilistico = 1, s.TipoAmmortamento = 3; }, {"60 A11111.00"}},
      {"account filter", [](auto& s) { s.FiltroConto = " AND (CG42_MOVCONT.CG42_CONTOPAR_CG24 >= '61') "; }, {}},
      {"another progressive", [](auto& s) { s.ProgrEsercizio = 2; }, {"60 A200000.00"}},
      {"another chart", [](auto& s) { s.GruppoPdC = 2; }, {"60 A400000.00"}},
      {"any chart", [](auto& s) { s.GruppoPdC = values::Variant(); }, {"60 A401111.00"}},
  };
  const SituazioneMovimenti intera = situazione;
  for (const auto& caso : casi) {
    situazione = intera;
    caso.opzioni(situazione);
    EXPECT_EQ(saldi(), caso.attesi) << caso.nome;
  }
}

TEST_F(Situazione, CompetenceFallsBackToTheDocumentAndTheRegistration) {
  movimento("20250310", "60", 1, "1", "", "CG42_DATAINICOMP='20250105', CG42_DATAFINCOMP='20250204'");
  movimento("20250310", "60", 1, "10", "CG41_DATADOC='20250120'");
  movimento("20250110", "60", 1, "100", "CG41_DATADOC='20250220'");
  movimento("20250131", "60", 1, "1000");
  EXPECT_THAT(saldi(), ElementsAre("60 A1100.00"));
  situazione.TipoData = 2;
  EXPECT_THAT(saldi(), ElementsAre("60 A1011.00"));
  // With accruals the line of 31 days counts by its days: 27 of January, 4 of February.
  situazione.SimulaRisconti = 1;
  EXPECT_THAT(saldi(), ElementsAre("60 A1010.87"));
  mese(2);
  EXPECT_THAT(saldi(), ElementsAre("60 A100.13"));
  situazione.TipoData = 0;
  EXPECT_THAT(saldi(), ElementsAre("60 A0.13"));
}

TEST_F(Situazione, SharesOfTheMonthsAddUpToTheAmount) {
  std::mt19937 caso(42);
  Decimal attivo, passivo;
  const auto giorno = [&] { return Date::FromYmd(2025, 1, 1).addDays(static_cast<int>(caso() % 365)); };
  for (int i = 0; i < 200; ++i) {
    Date inizio = giorno(), fine = giorno();
    if (fine < inizio) std::swap(inizio, fine);
    const bool dare = i % 3 != 0;
    const auto importo = Decimal::FromScaled(static_cast<long>(caso() % 1000000), 2);
    (dare ? attivo : passivo) = (dare ? attivo : passivo) + importo;
    movimento("20250630", dare ? "60" : "70", dare ? 1 : 2, values::toPlainText(importo), "",
              "CG42_DATAINICOMP='" + inizio.toSql() + "', CG42_DATAFINCOMP='" + fine.toSql() + "'");
  }
  // No interval: marked so, or with dates the wrong way round.
  movimento("20250630", "80", 1, "7", "", "CG42_DATAINICOMP='20250101', CG42_DATAFINCOMP='20250630', CG42_INDRATRIS=4");
  movimento("20250630", "80", 1, "5", "", "CG42_DATAINICOMP='20250201', CG42_DATAFINCOMP='20250131'");
  situazione.SimulaRisconti = 1;
  std::map<std::string, Decimal> somme;
  for (int m = 1; m <= 12; ++m) {
    mese(m);
    situazione.CreaRecordsetSituazioneEconomicaPatrimoniale();
    auto& righe = *situazione.RecordsetSituazioneEP;
    for (; !righe.Eof(); righe.MoveNext()) {
      auto& somma = somme[values::toPlainText(righe["conto"].Value())];
      for (const char* colonna : {"ATTIVITA", "PASSIVITA"})
        somma = somma + values::toDecimal(values::nvl(righe[colonna].Value(), 0));
    }
  }
  EXPECT_EQ(values::toPlainText(somme["60"]), values::toPlainText(attivo));
  EXPECT_EQ(values::toPlainText(somme["70"]), values::toPlainText(passivo));
  EXPECT_EQ(values::toPlainText(somme["80"]), "12.00");
  situazione.FiltroConto = " AND (CG42_MOVCONT.CG42_CONTOPAR_CG24 >= '80') ";
  mese(1);
  EXPECT_TRUE(saldi().empty());
  mese(6);
  EXPECT_THAT(saldi(), ElementsAre("80 A12.00"));
}

TEST_F(Situazione, AdjustingEntriesOfTheYearAreInARangePastItsEnd) {
  movimento("20251220", "60", 1, "1");
  movimento("20260115", "60", 2, "0.25");
  movimento("20260110", "60", 1, "50", "CG41_ANNO_CG19=2026");
  mese(12);
  EXPECT_THAT(saldi(), ElementsAre("60 A1.00"));
  situazione.DataFineElab = Date::FromYmd(2026, 1, 31);
  EXPECT_THAT(saldi(), ElementsAre("60 A0.75"));
}

TEST_F(Situazione, FailuresAreToldAndLeaveNoSet) {
  situazione.TipiMov_WhereCondition = "NIENTE = 1";
  situazione.CreaRecordsetSituazioneEconomicaPatrimoniale();
  EXPECT_EQ(situazione.Stato, 99);
  EXPECT_THAT(situazione.errore, testing::HasSubstr("NIENTE"));
  EXPECT_FALSE(situazione.RecordsetSituazioneEP);
  situazione.TipiMov_WhereCondition = "1 = 1";
  EXPECT_TRUE(saldi().empty());
  EXPECT_EQ(situazione.errore, "");
  situazione.Connection = nullptr;
  situazione.CreaRecordsetSituazioneEconomicaPatrimoniale();
  EXPECT_EQ(situazione.Stato, 99);
}

}  // namespace
