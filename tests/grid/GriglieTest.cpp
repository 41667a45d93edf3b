#include <gmock/gmock.h>

#include "grid/GrigliaBudget.h"
#include "grid/GrigliaPeriodi.h"
#include "support/ContestoDiProva.h"
#include "values/Errore.h"

namespace {

using bukorval::GrigliaBudget;
using bukorval::GrigliaPeriodi;
using values::Decimal;
using values::Variant;

/// A selected budget of type 1 without structure, on a recording connection.
struct Banco : testing_support::ContestoDiProva {
  Banco() {
    prop.TipoBudget = 1;
    prop.SottoTipoBudget = "01";
    prop.AnnoEsercizio = 2024;
    prop.ProgressivoEsercizio = 1;
  }
  void rispondi(const std::vector<std::string>& campi, const std::vector<std::vector<Variant>>& righe) {
    db->answers.push_back(testing_support::rows(campi, righe));
  }
  /// What the definition is asked before the grid's own statement.
  void rispondiDefinizione() {
    rispondi({"BU01_STRUTTURA"}, {});
    rispondi({"BU01_FLGSEDI"}, {{0}});
    rispondi({"BU01_NUMFORECAST"}, {{0}});
    rispondi({"BU01_FLGSEDI"}, {{0}});
  }
  void guastaAl(std::size_t k) {
    db->onExecute = [this, k](std::string_view) {
      if (db->texts.size() == k) throw values::Errore("boom");
    };
  }
  std::string esito() const { return std::to_string(ctx.stato()) + " " + ctx.errore(); }
};

TEST(GrigliaBudget, CopiesRowsByNameIntoTypedFields) {
  Banco banco;
  banco.rispondiDefinizione();
  banco.rispondi(
      {"IMP_BUDGET", "bu65_id", "BU65_DITTA_CG18", "QTA1_BUDGET", "BU65_SCHEDA_BU07"},
      {{Decimal::FromScaled(12345, 3), 7, 1, 2.0005, "S1"}, {Variant::Null(), 8, 1, Variant::Null(), Variant::Null()}});
  const auto griglia = GrigliaBudget(banco.ctx).RecordSetBudget();
  ASSERT_TRUE(griglia) << banco.esito();
  EXPECT_EQ(banco.esito(), "0 ");
  ASSERT_EQ(griglia->RecordCount(), 2);
  EXPECT_EQ(values::toPlainText((*griglia)["BU65_ID"].Value()), "7");
  EXPECT_EQ(values::toPlainText((*griglia)["IMP_BUDGET"].Value()), "12.35");
  EXPECT_EQ(values::toPlainText((*griglia)["QTA1_BUDGET"].Value()), "2.001");
  EXPECT_TRUE((*griglia)["DELTAIMP_CONS"].Value().isNull());
  griglia->MoveNext();
  EXPECT_EQ(values::toPlainText((*griglia)["BU65_ID"].Value()), "8");
  EXPECT_TRUE((*griglia)["IMP_BUDGET"].Value().isNull());
}

TEST(GrigliaBudget, GivesNoGridAfterAFailure) {
  const std::string nomi[] = {"GetStruttura", "GetGestioneSede", "GetNumeroForecast", "GetGestioneSede",
                              "RecordSetBudget"};
  for (std::size_t guasto = 1; guasto <= std::size(nomi); ++guasto) {
    Banco banco;
    banco.rispondiDefinizione();
    banco.guastaAl(guasto);
    EXPECT_FALSE(GrigliaBudget(banco.ctx).RecordSetBudget());
    EXPECT_EQ(banco.esito(), "99 boom in " + nomi[guasto - 1]);
    EXPECT_EQ(banco.db->texts.size(), guasto);
  }
  // A column that the grid lacks, and a value that its field cannot hold.
  for (const auto& campo : {"IMPREVISTO", "BU65_DITTA_CG18"}) {
    Banco banco;
    banco.rispondiDefinizione();
    banco.rispondi({campo}, {{100000}});
    EXPECT_FALSE(GrigliaBudget(banco.ctx).RecordSetBudget());
    EXPECT_EQ(banco.ctx.stato(), 99);
    EXPECT_THAT(banco.ctx.errore(), testing::ContainsRegex(std::string(campo) + ".* in RecordSetBudget$"));
  }
}

TEST(GrigliaBudget, AnUnreadableStructureNamesItsProcedure) {
  Banco banco;
  EXPECT_FALSE(GrigliaBudget(banco.ctx).CreaRecordSetBudget("BU65_NIENTE", 0));
  EXPECT_THAT(banco.ctx.errore(), testing::EndsWith(" in CreaRecordSetBudget"));
}

TEST(GrigliaBudget, WithoutAConnectionTheGridIsEmpty) {
  Banco banco;
  banco.ctx.connessione(nullptr);
  const auto griglia = GrigliaBudget(banco.ctx).RecordSetBudget();
  ASSERT_TRUE(griglia);
  EXPECT_EQ(griglia->RecordCount(), 0);
  EXPECT_TRUE(griglia->Fields().Find("IMP_FORECAST1"));
  EXPECT_EQ(banco.esito(), "1 Non è stata definita la stringa di connessione");
}

TEST(GrigliaBudget, AccountRangeOfEachChartKind) {
  struct Riga {
    int tipo;
    std::string piano, conto;
  };
  for (const auto& riga :
       {Riga{1, "BU65_GRUPPO_CG10", "BU65_CONTO_CG24"}, Riga{2, "BU65_CODICE_CG21", "BU65_CODICE_CG23"},
        Riga{3, "BU65_CODICE_PC01", "BU65_CONTO_PC03"}}) {
    Banco banco;
    banco.ctx.dati.tipoPdc = riga.tipo;
    banco.ctx.dati.codicePdc = Decimal::FromScaled(5);
    banco.prop.DaConto = "100";
    banco.prop.AConto = "199";
    EXPECT_EQ(GrigliaBudget(banco.ctx).GetStringaDaContoAConto(), " AND    " + riga.piano + " = 5\r\n AND    " +
                                                                      riga.conto + " >= '100'\r\n AND    " +
                                                                      riga.conto + " <= '199'\r\n");
    banco.prop.DaConto = Variant{};
    banco.prop.AConto = " ";
    EXPECT_EQ(GrigliaBudget(banco.ctx).GetStringaDaContoAConto(), " AND    " + riga.piano + " = 5\r\n");
  }
}

TEST(GrigliaPeriodi, AsksForThePeriodsOfThePeriodicity) {
  const std::pair<int, std::string> casi[] = {{0, "12"}, {1, "6"}, {2, "4"}, {3, "3"}, {4, "2"}, {5, "1"}, {6, ""}};
  for (const auto& [periodicita, periodi] : casi) {
    Banco banco;
    banco.rispondi({"BU01_INDPERIODO"}, {{periodicita}});
    EXPECT_THAT(GrigliaPeriodi(banco.ctx).GetStringaPeriodiBudget(17, 0),
                testing::HasSubstr("\r\n WHERE PERIODO < " + periodi + "\r\n)\r\n"));
    EXPECT_EQ(banco.esito(), "0 ");
  }
}

TEST(GrigliaPeriodi, HandsOutWhatWasBuiltBeforeAFailure) {
  const std::string nomi[] = {"GetNumeroForecast", "GetPeriodicitaBudget", "RecSetPeriodiBudget"};
  for (std::size_t guasto = 1; guasto <= 3; ++guasto) {
    Banco banco;
    banco.rispondi({"BU01_NUMFORECAST"}, {{2}});
    banco.rispondi({"BU01_INDPERIODO"}, {{0}});
    banco.guastaAl(guasto);
    const auto griglia = GrigliaPeriodi(banco.ctx).RecSetPeriodiBudget(17);
    EXPECT_EQ(griglia != nullptr, guasto > 1);
    EXPECT_EQ(banco.esito(), "99 boom in " + nomi[guasto - 1]);
  }
  Banco banco;
  banco.rispondi({"BU01_NUMFORECAST"}, {{0}});
  banco.rispondi({"BU01_INDPERIODO"}, {{0}});
  banco.rispondi({"PERIODO", "IMP_BUDGET"}, {{1, 10}, {2, "tanto"}});
  const auto griglia = GrigliaPeriodi(banco.ctx).RecSetPeriodiBudget(17);
  ASSERT_TRUE(griglia);
  EXPECT_EQ(griglia->RecordCount(), 1);
  EXPECT_THAT(banco.ctx.errore(), testing::EndsWith(" in RecSetPeriodiBudget"));
}

TEST(GrigliaPeriodi, ACardOfZeroGivesTheEmptyGrid) {
  for (const Variant& id : {Variant(0), Variant{}, Variant("0"), Variant(Decimal::FromScaled(0, 2))}) {
    Banco banco;
    banco.rispondi({"BU01_NUMFORECAST"}, {{1}});
    const auto griglia = GrigliaPeriodi(banco.ctx).RecSetPeriodiBudget(id);
    EXPECT_EQ(griglia->RecordCount(), 0);
    EXPECT_TRUE(griglia->Fields().Find("ID_FORECAST1"));
    EXPECT_EQ(banco.db->texts.size(), 1u);
    EXPECT_EQ(banco.esito(), "0 ");
  }
  Banco banco;
  banco.rispondi({"BU01_NUMFORECAST"}, {{1}});
  GrigliaPeriodi(banco.ctx).RecSetPeriodiBudget("17 OR 1=1");
  EXPECT_EQ(banco.ctx.stato(), 99);
  EXPECT_EQ(banco.db->texts.size(), 1u);
}

TEST(GrigliaPeriodi, CashFlowRowsOfACard) {
  Banco banco;
  banco.rispondi({"BU67_ID_BU65"}, {{17}});
  const auto righe = GrigliaPeriodi(banco.ctx).GetRstBU67(Decimal::FromScaled(17));
  ASSERT_TRUE(righe);
  EXPECT_EQ(righe->RecordCount(), 1);
  EXPECT_THAT(banco.db->texts, testing::ElementsAre(" SELECT  * \r\n FROM    BU67_BDGCASHFLOW WITH(NOLOCK) "
                                                    " WHERE   BU67_ID_BU65 = 17\r\n"));
  banco.guastaAl(2);
  EXPECT_FALSE(GrigliaPeriodi(banco.ctx).GetRstBU67(17));
  EXPECT_EQ(banco.esito(), "99 boom in GetRstBU67");
}

}  // namespace
