#include <gmock/gmock.h>

#include "maintenance/Banco.h"
#include "maintenance/ValoriScheda.h"

namespace {

using bukorval::ValoriScheda;
using maintenance_tests::Banco;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using values::Decimal;
using values::Variant;

const std::string kTimbro = " UPDATE BU65_TESBUDGET \r\n    SET BU65_DATAULTAGG = ADESSO\r\n  WHERE BU65_ID = 12";

TEST(AggiornaSingoloValore, InsertsAMissingDetailReadsItsIdentityAndStampsTheCard) {
  const char* colonne[] = {"BU66_IMPORTO) ", "BU66_QTA1) ", "BU66_QTA2) ", ""};
  const Variant assenti[] = {Variant::Null(), 0, Variant{}, "0"};
  for (int tipoValore = 0; tipoValore < 4; ++tipoValore) {
    Banco banco;
    banco.rispondiNulla();
    banco.rispondi({""}, {{Decimal::FromScaled(345)}});
    Variant nuovo;
    ValoriScheda(banco.ctx).AggiornaSingoloValoreBU66(assenti[tipoValore], Decimal::FromScaled(12), 3, tipoValore, 11,
                                                      "1234,5", nuovo);
    EXPECT_THAT(banco.testi(), ElementsAre("INSERT INTO BU66_DETBUDGET \r\n"
                                           "      (BU66_ID_BU65, BU66_TIPO, BU66_PERIODO, \r\n" +
                                               std::string(colonne[tipoValore]) +
                                               "\r\n"
                                               "   VALUES\r\n"
                                               "      (12,\r\n"
                                               "       3,\r\n"
                                               "       11,\r\n"
                                               "       1234.5)\r\n",
                                           "SELECT @@IDENTITY", kTimbro));
    EXPECT_EQ(nuovo, Variant(Decimal::FromScaled(345)));
    EXPECT_EQ(banco.esito(), "0 ");
  }
}

TEST(AggiornaSingoloValore, UpdatesOnlyTheColumnOfAnExistingDetail) {
  const char* colonne[] = {"BU66_IMPORTO = ", "BU66_QTA1 = ", "BU66_QTA2 = ", ""};
  for (int tipoValore = 0; tipoValore < 4; ++tipoValore) {
    Banco banco;
    Variant nuovo = "untouched";
    ValoriScheda(banco.ctx).AggiornaSingoloValoreBU66(77, 12, 0, tipoValore, 1, Variant::Null(), nuovo);
    EXPECT_THAT(banco.testi(), ElementsAre("UPDATE BU66_DETBUDGET SET " + std::string(colonne[tipoValore]) +
                                               "NULL\r\n WHERE BU66_ID = 77",
                                           kTimbro));
    EXPECT_EQ(nuovo, Variant("untouched"));
  }
}

TEST(AggiornaSingoloValore, TakesAValueInAnyForm) {
  struct Riga {
    Variant valore;
    std::string testo;
  };
  const Riga righe[] = {{std::int16_t{-3}, "-3"},
                        {2147483647, "2147483647"},
                        {0.1 + 0.2, "0.3"},
                        {-1234.5, "-1234.5"},
                        {Decimal::FromScaled(999999999999999, 2), "9999999999999.99"},
                        {"1234,56", "1234.56"},
                        {"1234.56", "1234.56"},
                        {"1.234,56", "1234.56"},
                        {" -7 ", "-7"},
                        {Variant::Null(), "NULL"},
                        {Variant{}, "NULL"},
                        {"   ", "NULL"}};
  for (const auto& riga : righe) {
    Banco banco;
    Variant nuovo;
    ValoriScheda(banco.ctx).AggiornaSingoloValoreBU66(5, 12, 0, 0, 1, riga.valore, nuovo);
    EXPECT_EQ(banco.testi().front(),
              "UPDATE BU66_DETBUDGET SET BU66_IMPORTO = " + riga.testo + "\r\n WHERE BU66_ID = 5");
  }
}

TEST(AggiornaSingoloValore, RefusesWhatIsNoNumberAndWritesNothing) {
  const Variant valori[] = {
      "abc", "1,2,3", "12 EUR", "1); DELETE FROM BU65_TESBUDGET --", true, values::Date::FromYmd(2024, 1, 1)};
  for (const auto& valore : valori) {
    Banco banco;
    Variant nuovo;
    ValoriScheda(banco.ctx).AggiornaSingoloValoreBU66(Variant::Null(), 12, 0, 0, 1, valore, nuovo);
    EXPECT_EQ(banco.ctx.stato(), 99);
    EXPECT_THAT(banco.ctx.errore(), testing::EndsWith(" in AggiornaSingoloValoreBU66"));
    EXPECT_THAT(banco.testi(), IsEmpty());
  }
  for (const Variant& scheda : {Variant::Null(), Variant("12 OR 1=1"), Variant(1.5)}) {
    Banco banco;
    Variant nuovo;
    ValoriScheda(banco.ctx).AggiornaSingoloValoreBU66(5, scheda, 0, 0, 1, 10, nuovo);
    EXPECT_EQ(banco.ctx.stato(), 99);
    EXPECT_THAT(banco.testi(), IsEmpty());
  }
}

TEST(AggiornaSingoloValore, StopsAtTheStatementThatFails) {
  for (const std::size_t guasto : {1u, 2u, 3u}) {
    Banco banco;
    banco.rispondiNulla();
    banco.rispondi({""}, {{345}});
    banco.guastaAl(guasto);
    Variant nuovo = "none";
    ValoriScheda(banco.ctx).AggiornaSingoloValoreBU66(0, 12, 0, 0, 1, 10, nuovo);
    EXPECT_EQ(banco.esito(), "99 boom in AggiornaSingoloValoreBU66");
    EXPECT_EQ(banco.db->texts.size(), guasto);
    EXPECT_EQ(nuovo, guasto < 3 ? Variant("none") : Variant(345));
  }
}

TEST(UpdateNullValori, ClearsOneKindOrAll) {
  const std::string tutti =
      " UPDATE BU66_DETBUDGET \r\n    SET BU66_IMPORTO = Null \r\n      , BU66_QTA1 = Null \r\n"
      "      , BU66_QTA2 = Null \r\n WHERE  BU66_ID_BU65 = 12\r\n";
  Banco banco;
  ValoriScheda(banco.ctx).UpdateNullValoriBU66(12, 99);
  ValoriScheda(banco.ctx).UpdateNullValoriBU66("12", 0);
  EXPECT_THAT(banco.testi(), ElementsAre(tutti, tutti + "   AND BU66_TIPO = 0"));
  banco.guastaAl(3);
  ValoriScheda(banco.ctx).UpdateNullValoriBU66(12, 99);
  EXPECT_EQ(banco.esito(), "99 boom in UpdateNullValoriBU66 ");
}

TEST(GetBdgDettaglioEsiste, AnswersTheDetailAndWhetherItsAmountIsMissing) {
  struct Riga {
    std::vector<std::vector<Variant>> righe;
    bool esiste;
    Variant dettaglio, importoIsNull;
  };
  const Riga casi[] = {{{}, false, 0, true},
                       {{{345, Variant::Null()}}, true, 345, true},
                       {{{345, Decimal::FromScaled(0, 2)}, {346, Variant::Null()}}, true, 345, false}};
  for (const auto& caso : casi) {
    Banco banco;
    banco.rispondi({"BU66_ID", "BU66_IMPORTO"}, caso.righe);
    Variant dettaglio = 1, importoIsNull = 1;
    EXPECT_EQ(ValoriScheda(banco.ctx).GetBdgDettaglioEsiste(12, 4, 3, dettaglio, importoIsNull), caso.esiste);
    EXPECT_EQ(dettaglio, caso.dettaglio);
    EXPECT_EQ(importoIsNull, caso.importoIsNull);
    EXPECT_THAT(banco.testi(),
                ElementsAre(" SELECT BU66_ID, \r\n        BU66_IMPORTO  FROM   BU66_DETBUDGET WITH (NOLOCK) "
                            " WHERE  BU66_ID_BU65 = 12 AND    BU66_TIPO = 4 AND    BU66_PERIODO = 3"));
  }
  Banco banco;
  banco.guastaAl(1);
  Variant dettaglio = 5, importoIsNull;
  EXPECT_FALSE(ValoriScheda(banco.ctx).GetBdgDettaglioEsiste(12, 4, 3, dettaglio, importoIsNull));
  EXPECT_EQ(dettaglio, Variant(0));
  EXPECT_EQ(banco.esito(), "99 boom in GetBdgDettaglioEsiste");
}

TEST(ValoriScheda, DoNothingWithoutAConnection) {
  Banco banco;
  banco.ctx.connessione(nullptr);
  Variant a, b;
  ValoriScheda(banco.ctx).AggiornaSingoloValoreBU66(0, 12, 0, 0, 1, 10, a);
  EXPECT_THAT(banco.esito(), "1 Non è stata definita la stringa di connessione");
  ValoriScheda(banco.ctx).UpdateNullValoriBU66(12, 99);
  EXPECT_EQ(banco.ctx.stato(), 1);
  EXPECT_FALSE(ValoriScheda(banco.ctx).GetBdgDettaglioEsiste(12, 4, 3, a, b));
  EXPECT_EQ(banco.ctx.stato(), 1);
}

}  // namespace
