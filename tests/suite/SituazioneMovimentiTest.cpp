// Our own accounting situation: balances of the movement tables under each option.

#include "suite/SituazioneMovimenti.h"
#include "support/Database.h"

namespace {

using suite::SituazioneMovimenti, testing::ElementsAre;

class Situazione : public testing::Test {
 protected:
  Situazione() {
    situation.Connection = db;
    situation.Ditta = 1;
    situation.GruppoPdC = 1;
    situation.AnnoEsercizio = 2025;
    situation.ProgrEsercizio = 1;
    month(1);
    situation.TipoData = 0;
  }
  void month(int m) {
    situation.DataInizioElab = Date::FromYmd(2025, m, 1);
    situation.DataFineElab = Date::FromYmd(2025, m, 1).lastOfMonth();
  }
  void range(const char* from, const char* to) {
    situation.DataInizioElab = *Date::TryParse(from);
    situation.DataFineElab = *Date::TryParse(to);
  }
  /// Ends the year that `end` lies in.
  void yearUntil(const std::string& end) {
    const auto year = end.substr(0, 4);
    testing_support::insert(*db, "CG19_ANADITTAESER",
                            "CG19_DITTA_CG18=1, CG19_ANNO=" + year + ", CG19_PROGESER=1, CG19_DATAINIZIO='" + year +
                                "0101', CG19_DATAFINE='" + end + "'");
  }
  /// A registration with one line. `header` and `line` are further columns with their values, "COLUMN=value, …".
  void movement(const std::string& date, const std::string& account, int side, const std::string& amount,
                const std::string& header = "", const std::string& line = "") {
    const std::string n = std::to_string(++number);
    testing_support::insert(*db, "CG41_PRIMANOTA",
                            "CG41_DITTA_CG18=1, CG41_NUMREG=" + n + ", CG41_DATAREG='" + date +
                                "', CG41_ANNO_CG19=2025, CG41_PROGESER_CG19=1" + (header.empty() ? "" : ", ") + header);
    testing_support::insert(*db, "CG42_MOVCONT",
                            "CG42_DITTA_CG18=1, CG42_NUMREG_CG41=" + n +
                                ", CG42_NUMRIGACONT=1, CG42_GRUPPO_CG10=1, CG42_CONTOPAR_CG24='" + account +
                                "', CG42_INDDAAV=" + std::to_string(side) + ", CG42_IMPTOTALE=" + amount +
                                (line.empty() ? "" : ", ") + line);
  }
  /// "account column amount" of every row.
  std::vector<std::string> balances() {
    situation.CreaRecordsetSituazioneEconomicaPatrimoniale();
    EXPECT_EQ(situation.Stato, 0) << situation.errore;
    std::vector<std::string> texts;
    auto& rows = *situation.RecordsetSituazioneEP;
    for (; !rows.Eof(); rows.MoveNext()) {
      std::string text = values::toPlainText(rows["conto"].Value());
      for (const char* column : {"ATTIVITA", "PASSIVITA"})
        if (!rows[column].Value().isNull())
          text += std::string(" ") + column[0] + values::toPlainText(rows[column].Value());
      texts.push_back(text);
    }
    return texts;
  }

  ado::ConnectionPtr db = testing_support::memoryDatabase();
  SituazioneMovimenti situation;

 private:
  int number = 0;
};

TEST_F(Situazione, BalancesStandOnTheirSideByAccount) {
  movement("20250131 18:30:00", "60", 1, "100.10");
  movement("20250101", "60", 2, "0.20");
  movement("20250115", "70", 2, "50");
  movement("20250115", "40", 1, "9999999999999.99");
  movement("20250115", "10", 1, "3");
  movement("20250115", "10", 2, "3");
  movement("20250201", "60", 1, "1");
  EXPECT_THAT(balances(), ElementsAre("10 A0.00", "40 A9999999999999.99", "60 A99.90", "70 P50.00"));
  situation.SaldoDiversoDaZero = 1;
  EXPECT_THAT(balances(), ElementsAre("40 A9999999999999.99", "60 A99.90", "70 P50.00"));
}

TEST_F(Situazione, OnlyTheMovementsAskedForCount) {
  movement("20250110", "60", 1, "1");
  movement("20250110", "60", 1, "10", "CG41_CODICE_CG31=1");
  movement("20250110", "60", 1, "100", "CG41_CODICE_CG31=1", "CG42_CODICE_CG31=2");
  movement("20250110", "60", 1, "1000", "CG41_INDTIPOMOV=2");
  movement("20250110", "60", 1, "10000", "CG41_INDPROVREG=3");
  movement("20250110", "60", 1, "20000", "CG41_INDPROVREG=4");
  movement("20250110", "60", 1, "100000", "CG41_ANNO_CG19=2024");
  movement("20250110", "60", 1, "200000", "CG41_PROGESER_CG19=2");
  movement("20250110", "60", 1, "300000", "CG41_DITTA_CG18=2", "CG42_DITTA_CG18=2");
  movement("20250110", "60", 1, "400000", "", "CG42_GRUPPO_CG10=2");
  const struct {
    const char* name;
    std::function<void(SituazioneMovimenti&)> options;
    std::vector<std::string> expected;
  } cases[] = {
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
  const SituazioneMovimenti whole = situation;
  for (const auto& c : cases) {
    situation = whole;
    c.options(situation);
    EXPECT_EQ(balances(), c.expected) << c.name;
  }
}

TEST_F(Situazione, CompetenceFallsBackToTheDocumentAndTheRegistration) {
  movement("20250310", "60", 1, "1", "", "CG42_DATAINICOMP='20250105', CG42_DATAFINCOMP='20250204'");
  movement("20250310", "60", 1, "10", "CG41_DATADOC='20250120'");
  movement("20250110", "60", 1, "100", "CG41_DATADOC='20250220'");
  movement("20250131", "60", 1, "1000");
  EXPECT_THAT(balances(), ElementsAre("60 A1100.00"));
  situation.TipoData = 2;
  EXPECT_THAT(balances(), ElementsAre("60 A1011.00"));
  // With accruals the line of 31 days counts by its days: 27 of January, 4 of February.
  situation.SimulaRisconti = 1;
  EXPECT_THAT(balances(), ElementsAre("60 A1010.87"));
  month(2);
  EXPECT_THAT(balances(), ElementsAre("60 A100.13"));
  situation.TipoData = 0;
  EXPECT_THAT(balances(), ElementsAre("60 A0.13"));
}

TEST_F(Situazione, SharesOfTheMonthsAddUpToTheAmount) {
  std::mt19937 random(42);
  Decimal assets, liabilities;
  const auto day = [&] { return Date::FromYmd(2025, 1, 1).addDays(static_cast<int>(random() % 365)); };
  for (int i = 0; i < 200; ++i) {
    Date from = day(), to = day();
    if (to < from) std::swap(from, to);
    const bool debit = i % 3 != 0;
    const auto amount = Decimal::FromScaled(static_cast<long>(random() % 1000000), 2);
    (debit ? assets : liabilities) = (debit ? assets : liabilities) + amount;
    movement("20250630", debit ? "60" : "70", debit ? 1 : 2, values::toPlainText(amount), "",
             "CG42_DATAINICOMP='" + from.toSql() + "', CG42_DATAFINCOMP='" + to.toSql() + "'");
  }
  // No interval: marked so, or with dates the wrong way round.
  movement("20250630", "80", 1, "7", "", "CG42_DATAINICOMP='20250101', CG42_DATAFINCOMP='20250630', CG42_INDRATRIS=4");
  movement("20250630", "80", 1, "5", "", "CG42_DATAINICOMP='20250201', CG42_DATAFINCOMP='20250131'");
  situation.SimulaRisconti = 1;
  std::map<std::string, Decimal> sums;
  for (int m = 1; m <= 12; ++m) {
    month(m);
    situation.CreaRecordsetSituazioneEconomicaPatrimoniale();
    auto& rows = *situation.RecordsetSituazioneEP;
    for (; !rows.Eof(); rows.MoveNext()) {
      auto& sum = sums[values::toPlainText(rows["conto"].Value())];
      for (const char* column : {"ATTIVITA", "PASSIVITA"})
        sum = sum + values::toDecimal(values::nvl(rows[column].Value(), 0));
    }
  }
  EXPECT_EQ(values::toPlainText(sums["60"]), values::toPlainText(assets));
  EXPECT_EQ(values::toPlainText(sums["70"]), values::toPlainText(liabilities));
  EXPECT_EQ(values::toPlainText(sums["80"]), "12.00");
  situation.FiltroConto = " AND (CG42_MOVCONT.CG42_CONTOPAR_CG24 >= '80') ";
  month(1);
  EXPECT_TRUE(balances().empty());
  month(6);
  EXPECT_THAT(balances(), ElementsAre("80 A12.00"));
}

TEST_F(Situazione, AdjustingEntriesOfTheYearAreInARangePastItsEnd) {
  movement("20251220", "60", 1, "1");
  movement("20260115", "60", 2, "0.25");
  movement("20260110", "60", 1, "50", "CG41_ANNO_CG19=2026");
  month(12);
  EXPECT_THAT(balances(), ElementsAre("60 A1.00"));
  situation.DataFineElab = Date::FromYmd(2026, 1, 31);
  EXPECT_THAT(balances(), ElementsAre("60 A0.75"));
}

TEST_F(Situazione, FailuresAreToldAndLeaveNoSet) {
  situation.TipiMov_WhereCondition = "NIENTE = 1";
  situation.CreaRecordsetSituazioneEconomicaPatrimoniale();
  EXPECT_EQ(situation.Stato, 99);
  EXPECT_THAT(situation.errore, testing::HasSubstr("NIENTE"));
  EXPECT_FALSE(situation.RecordsetSituazioneEP);
  situation.TipiMov_WhereCondition = "1 = 1";
  EXPECT_TRUE(balances().empty());
  EXPECT_EQ(situation.errore, "");
  situation.Connection = nullptr;
  situation.CreaRecordsetSituazioneEconomicaPatrimoniale();
  EXPECT_EQ(situation.Stato, 99);
}

TEST_F(Situazione, BeyondTheYearOnlyItsAdjustingEntriesCount) {
  yearUntil("20251231");
  const auto competence = "CG42_DATAINICOMP='20251217', CG42_DATAFINCOMP='20260115'";
  movement("20251231", "60", 1, "1");
  movement("20260110", "60", 1, "10");  // recorded late, not an adjustment
  movement("20260110", "60", 1, "100", "CG41_FLGRETTIF=1");
  movement("20260201", "60", 1, "1000", "CG41_FLGRETTIF=1");  // beyond the range
  movement("20251220", "70", 1, "30", "", competence);        // half of it belongs to the next year
  // All of this belongs there, or to the months before.
  movement("20251220", "80", 1, "9", "", "CG42_DATAINICOMP='20260105', CG42_DATAFINCOMP='20260220'");
  movement("20251220", "90", 1, "7", "", "CG42_DATAINICOMP='20251001', CG42_DATAFINCOMP='20251130'");
  range("20251201", "20260131");
  EXPECT_THAT(balances(), ElementsAre("60 A101.00", "70 A30.00", "80 A9.00", "90 A7.00"));
  situation.TipoData = 2;
  EXPECT_THAT(balances(), ElementsAre("60 A101.00", "70 A30.00"));
  for (const int dates : {0, 2}) {
    situation.TipoData = dates;
    situation.SimulaRisconti = 1;
    EXPECT_THAT(balances(), ElementsAre("60 A101.00", "70 A15.00"));
  }
}

TEST_F(Situazione, AdjustingEntriesCountOnceInRangesOneAfterTheOther) {
  yearUntil("20241231");
  yearUntil("20251231");
  movement("20260115", "60", 1, "1");
  movement("20260131", "60", 1, "10", "CG41_FLGRETTIF=1");
  movement("20260203", "60", 1, "100", "CG41_FLGRETTIF=1");
  movement("20260115", "60", 1, "1000", "CG41_FLGRETTIF=1, CG41_ANNO_CG19=2024");
  const auto january = [&] {
    range("20260101", "20260131");
    return balances();
  };
  EXPECT_THAT(january(), ElementsAre("60 A11.00"));
  for (int again = 0; again < 2; ++again) {
    range("20251201", "20260131");
    EXPECT_THAT(balances(), ElementsAre("60 A10.00"));
  }
  EXPECT_THAT(january(), ElementsAre("60 A1.00"));
  range("20260101", "20260228");
  EXPECT_THAT(balances(), ElementsAre("60 A101.00"));
  situation.AnnoEsercizio = 2024;
  EXPECT_THAT(january(), ElementsAre("60 A1000.00"));
}

TEST_F(Situazione, TheYearsLastMonthCountsWhereTheYearEndsInIt) {
  yearUntil("20250615");
  movement("20250615", "60", 1, "1");
  movement("20250620", "60", 1, "10");
  movement("20250620", "60", 1, "100", "CG41_FLGRETTIF=1");
  movement("20250710", "60", 1, "1000");
  month(6);
  EXPECT_THAT(balances(), ElementsAre("60 A111.00"));
  month(7);
  EXPECT_THAT(balances(), ElementsAre("60 A1000.00"));
}

}  // namespace
