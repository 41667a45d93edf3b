#include <gmock/gmock.h>

#include "maintenance/Banco.h"
#include "maintenance/NuovaScheda.h"

namespace {

using bukorval::NuovaScheda;
using maintenance_tests::Banco;
using testing::ElementsAre;
using testing::IsEmpty;
using values::Variant;

ado::DictionaryPtr colonne(const std::vector<std::pair<Variant, Variant>>& coppie) {
  auto dizionario = std::make_shared<ado::Dictionary>();
  for (const auto& [nome, valore] : coppie) dizionario->Add(nome, valore);
  return dizionario;
}

std::string testata(const std::string& nomi, const std::string& valori) {
  return " INSERT INTO BU65_TESBUDGET \r\n"
         " (BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01, BU65_DITTA_CG18, BU65_ANNO, BU65_PROGESER, " +
         nomi +
         ")\r\n"
         "VALUES\r\n (" +
         valori + ")\r\n";
}

std::string dettaglio(int tipo, int periodo) {
  const std::string k = std::to_string(tipo), p = std::to_string(periodo);
  return " IF NOT EXISTS \r\n"
         "         ( \r\n"
         "             SELECT  TOP 1 1 \r\n"
         "             FROM    BU66_DETBUDGET \r\n"
         "             WHERE   BU66_ID_BU65 = 31\r\n"
         "             AND     BU66_TIPO = " +
         k +
         "\r\n"
         "             AND     BU66_PERIODO = " +
         p +
         "\r\n"
         "         ) \r\n"
         " BEGIN \r\n"
         "         INSERT INTO BU66_DETBUDGET \r\n"
         "         (   BU66_ID_BU65, \r\n"
         "             BU66_TIPO, \r\n"
         "             BU66_PERIODO \r\n"
         "         )   \r\n"
         "         VALUES  \r\n"
         "         (   31, " +
         k + ", " + p +
         "\r\n"
         "         )   \r\n"
         " END ";
}

const std::string kCashFlow =
    " INSERT INTO BU67_BDGCASHFLOW \r\n     (   BU67_ID_BU65 \r\n        ,BU67_FLGSCADMAN \r\n     )   \r\n"
    " VALUES  \r\n     (   31\r\n        ,0 \r\n     )   ";

/// Answers for the header, its identity, the periodicity and the number of forecasts.
void rispondi(Banco& banco, int periodicita, int forecast) {
  banco.rispondiNulla();
  banco.rispondi({""}, {{31}});
  banco.rispondi({"BU01_INDPERIODO"}, {{periodicita}});
  banco.rispondi({"BU01_NUMFORECAST"}, {{forecast}});
}

std::string testataInserita(Banco& banco, const ado::DictionaryPtr& dizionario) {
  rispondi(banco, 5, 0);
  NuovaScheda(banco.ctx).InserimentoNuovaSchedaBudget(dizionario);
  EXPECT_EQ(banco.esito(), "0 ");
  for (const auto& testo : banco.testi())
    if (testo.find("INSERT INTO BU65_TESBUDGET") != std::string::npos) return testo;
  return {};
}

TEST(NuovaScheda, WritesHeaderThenDetailsThenCashFlow) {
  Banco banco(4);
  rispondi(banco, 5, 1);
  NuovaScheda(banco.ctx).InserimentoNuovaSchedaBudget(
      colonne({{"BU65_INDCOSRIC_BU07", 0}, {"BU65_SCHEDA_BU07", "S1"}}));
  EXPECT_EQ(banco.esito(), "0 ");
  const auto testi = banco.testi();
  ASSERT_EQ(testi.size(), 8u);
  EXPECT_EQ(testi[1], "SELECT @@IDENTITY");
  EXPECT_THAT(std::vector(testi.begin() + 4, testi.end()),
              ElementsAre(dettaglio(0, 1), dettaglio(1, 1), dettaglio(3, 1), kCashFlow));
}

TEST(NuovaScheda, WritesWhatTheBudgetTypeAsks) {
  struct Riga {
    int tipo;
    std::string nomi, valori;
  };
  const Riga righe[] = {
      {0, ", BU65_TIPOCF_CG44, BU65_FLGBUDGET , BU65_FLGCFLOW , BU65_DATAULTAGG ", ", 0, 0 , 0 , ADESSO"},
      {1, ", BU65_TIPOCF_CG44, BU65_FLGBUDGET , BU65_FLGCFLOW , BU65_DATAULTAGG ", ", 1, 0 , 0 , ADESSO"},
      {7, ", BU65_TIPOCF_CG44, BU65_FLGBUDGET , BU65_FLGCFLOW , BU65_DATAULTAGG ", ", 1, 0 , 0 , ADESSO"},
      {4, ", BU65_FLGBUDGET , BU65_FLGCFLOW , BU65_DATAULTAGG ", ", 1 , 0 , ADESSO"},
      {3, ", BU65_FLGBUDGET , BU65_FLGCFLOW , BU65_DATAULTAGG ", ", 0 , 0 , ADESSO"}};
  for (const auto& riga : righe) {
    Banco banco(riga.tipo);
    EXPECT_EQ(
        testataInserita(banco, colonne({{"BU65_CODICE_CG31", 3}})),
        testata("BU65_CODICE_CG31" + riga.nomi, std::to_string(riga.tipo) + ", 'A1', 7, 2024, 1, 3" + riga.valori));
  }
}

TEST(NuovaScheda, FormatsValuesByColumnTypeAndKeepsApostrophes) {
  Banco banco(3);
  const auto testo = testataInserita(banco, colonne({{"BU65_SCHEDA_BU07", "L'ALTRA"},
                                                     {"BU65_CODICE_CG31", "2"},
                                                     {"BU65_AREA_MG08", Variant::Null()},
                                                     {"BU65_CODICE_PC01", ""}}));
  EXPECT_THAT(testo, testing::HasSubstr("1, N'L''ALTRA', 2, NULL, NULL, 0 , 0 , "));
}

TEST(NuovaScheda, AccountColumnsBringTheBudgetsChartCode) {
  struct Riga {
    std::vector<std::pair<Variant, Variant>> date;
    std::string nomi, valori;
  };
  const Riga righe[] = {
      {{{"BU65_CONTO_CG24", "100"}}, "BU65_CONTO_CG24, BU65_GRUPPO_CG10", "N'100', 5"},
      {{{"BU65_CODICE_CG23", "R1"}}, "BU65_CODICE_CG23, BU65_CODICE_CG21", "N'R1', 5"},
      {{{"BU65_CONTO_PC03", "A1"}}, "BU65_CONTO_PC03, BU65_CODICE_PC01", "N'A1', 5"},
      {{{"BU65_VDS_PC03", "V1"}}, "BU65_VDS_PC03, BU65_PDCVDS_PC01", "N'V1', 5"},
      {{{"BU65_CONTOPDC_PC03", "C1"}, {"BU65_CONTOCONTROPART_PC03", "C2"}},
       "BU65_CONTOPDC_PC03, BU65_PDC_PC01, BU65_CONTOCONTROPART_PC03",
       "N'C1', 5, N'C2'"},
      // What the client gives is not written twice, wherever it stands.
      {{{"BU65_CONTO_CG24", "100"}, {"BU65_GRUPPO_CG10", 9}}, "BU65_CONTO_CG24, BU65_GRUPPO_CG10", "N'100', 9"}};
  for (const auto& riga : righe) {
    Banco banco(1);
    banco.prop.CodicePdcCoGeDitta = 5;
    EXPECT_EQ(testataInserita(banco, colonne(riga.date)),
              testata(riga.nomi + ", BU65_TIPOCF_CG44, BU65_FLGBUDGET , BU65_FLGCFLOW , BU65_DATAULTAGG ",
                      "1, 'A1', 7, 2024, 1, " + riga.valori + ", 1, 0 , 0 , ADESSO"));
  }
}

TEST(NuovaScheda, RefusesAValueThatItsColumnCannotTake) {
  for (const Variant& valore : {Variant("tre"), Variant("1), (2"), Variant(true)}) {
    Banco banco(1);
    NuovaScheda(banco.ctx).InserimentoNuovaSchedaBudget(colonne({{"BU65_CODICE_CG31", valore}}));
    EXPECT_EQ(banco.ctx.stato(), 99);
    EXPECT_THAT(banco.db->texts, IsEmpty());
  }
}

TEST(NuovaScheda, AnEmptyDictionaryWritesNothing) {
  for (const auto& vuoto : {ado::DictionaryPtr{}, colonne({})}) {
    Banco banco(4);
    NuovaScheda(banco.ctx).InserimentoNuovaSchedaBudget(vuoto);
    EXPECT_THAT(banco.db->texts, IsEmpty());
    EXPECT_EQ(banco.esito(), "0 ");
  }
}

TEST(NuovaScheda, CreatesADetailForEachKindAndPeriodOfTheNature) {
  for (const int tipo : {1, 3}) {
    Banco banco(tipo);
    banco.rispondi({"BU01_INDPERIODO"}, {{0}});
    banco.rispondi({"BU01_NUMFORECAST"}, {{2}});
    NuovaScheda(banco.ctx).CreazioneBU66NULL(31);
    std::vector<std::string> attese;
    for (int kind = 0; kind <= 4; ++kind)
      for (int periodo = 1; periodo <= 12; ++periodo)
        if (kind != 2 || tipo == 1) attese.push_back(dettaglio(kind, periodo));
    EXPECT_THAT(std::vector(banco.db->texts.begin() + 2, banco.db->texts.end()), testing::ElementsAreArray(attese));
  }
}

TEST(NuovaScheda, StopsAtTheStatementThatFailsAndNamesItsProcedure) {
  const std::string nomi[] = {"InserimentoNuovaSchedaBudget",
                              "InserimentoNuovaSchedaBudget",
                              "GetPeriodicitaBudget",
                              "GetNumeroForecast",
                              "CreazioneBU66NULL",
                              "CreazioneBU66NULL",
                              "CreazioneBU67NULL"};
  for (std::size_t guasto = 1; guasto <= std::size(nomi); ++guasto) {
    Banco banco(4);
    rispondi(banco, 5, 0);
    banco.guastaAl(guasto);
    NuovaScheda(banco.ctx).InserimentoNuovaSchedaBudget(colonne({{"BU65_SCHEDA_BU07", "S1"}}));
    EXPECT_EQ(banco.esito(), "99 boom in " + nomi[guasto - 1]);
    EXPECT_EQ(banco.db->texts.size(), guasto);
  }
}

TEST(NuovaScheda, ReportsABudgetWithoutPeriods) {
  Banco banco;
  banco.rispondi({"BU01_INDPERIODO"}, {});
  banco.rispondi({"BU01_NUMFORECAST"}, {{0}});
  NuovaScheda(banco.ctx).CreazioneBU66NULL(31);
  EXPECT_EQ(banco.ctx.stato(), 99);
}

TEST(GetNaturaConto, ReadsTheChartOfTheKind) {
  struct Riga {
    int tipo;
    std::string testo;
  };
  const Riga righe[] = {
      {3,
       "SELECT PC03_INDSEGNO FROM   PC03_ANAGPDC WITH (NOLOCK) WHERE  PC03_CODICE_PC01 = 5 AND    PC03_CONTO = 'A1'"},
      {1,
       "SELECT CG24_INDCONTORICAV FROM   CG24_TABPDC WITH (NOLOCK) WHERE  CG24_GRUPPO_CG10 = 5 AND    CG24_CONTO = "
       "'A1'"}};
  for (const auto& riga : righe) {
    Banco banco;
    banco.rispondi({"NATURA"}, {{2}, {3}});
    bukorval::BdgTipoPdc tipo = riga.tipo;
    Variant codice = 5, conto = "A1";
    EXPECT_EQ(NuovaScheda(banco.ctx).GetNaturaConto(tipo, codice, conto), Variant(2));
    EXPECT_THAT(banco.db->texts, ElementsAre(riga.testo));
    banco.rispondi({"NATURA"}, {});
    EXPECT_TRUE(NuovaScheda(banco.ctx).GetNaturaConto(tipo, codice, conto).isEmpty());
    banco.guastaAl(3);
    NuovaScheda(banco.ctx).GetNaturaConto(tipo, codice, conto);
    EXPECT_EQ(banco.esito(), "99 boom in GetNaturaConto");
  }
}

}  // namespace
