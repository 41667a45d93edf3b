#include <gmock/gmock.h>

#include "definition/EserciziFinti.h"
#include "maintenance/Allineamento.h"
#include "maintenance/Banco.h"

namespace {

using bukorval::AllineaBU65_A_StrutturaBU60;
using maintenance_tests::Banco;
using testing::ElementsAre;
using values::Variant;

/// Every event as one word.
std::vector<std::string> ascolta(Banco& banco) {
  static std::vector<std::string> eventi;
  eventi.clear();
  banco.eventi.BeginProcess = [](Variant& testo, Variant& passi) {
    eventi.push_back(values::toText(testo) + " " + values::toText(passi));
  };
  banco.eventi.StepProcess = [](Variant& passo) { eventi.push_back(values::toText(passo)); };
  banco.eventi.EndProcess = [] { eventi.push_back("fine"); };
  AllineaBU65_A_StrutturaBU60(banco.ctx);
  return eventi;
}

/// A structure of two cards, of which the budget of type 3 has the first.
struct BancoConStruttura : Banco {
  BancoConStruttura() : Banco(3) {
    definition_tests::EserciziFinti::registra();
    rispondi({"BU01_CODICE_BU60"}, {{"ST1"}});
    rispondi({"BU60_DESCR", "BU60_INDTIPOPDC", "BU60_CODICEPDC"}, {{"Struttura", 1, 5}});
    rispondi({"BU01_FLGSEDI"}, {{0}});
    rispondi({"BU61_ELEMENTO", "BU61_CAMPO", "BU61_VALORE"},
             {{1, "BU65_CONTO_CG24", "100"}, {2, "BU65_AREA_MG08", "NE"}, {2, "BU65_CONTO_CG24", "200"}});
    rispondi({"BU65_ID", "BU65_AREA_MG08", "BU65_CONTO_CG24"}, {{1, Variant::Null(), "100  "}, {2, "SO", "200"}});
    rispondiNulla();
    rispondi({""}, {{31}});
    rispondi({"BU01_INDPERIODO"}, {{5}});
    rispondi({"BU01_NUMFORECAST"}, {{0}});
  }
};

TEST(Allineamento, AddsTheMissingCardsInOneTransaction) {
  BancoConStruttura banco;
  const auto eventi = ascolta(banco);
  EXPECT_EQ(banco.esito(), "0 ");
  EXPECT_THAT(eventi, ElementsAre("Allineamento delle schede alla struttura del budget 2", "1", "2", "fine"));
  const auto testi = banco.testi();
  ASSERT_EQ(testi.size(), 13u);
  EXPECT_EQ(testi[4], "BeginTrans");
  EXPECT_EQ(testi[6],
            " INSERT INTO BU65_TESBUDGET \r\n"
            " (BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01, BU65_DITTA_CG18, BU65_ANNO, BU65_PROGESER, BU65_AREA_MG08, "
            "BU65_CONTO_CG24, BU65_GRUPPO_CG10, BU65_FLGBUDGET , BU65_FLGCFLOW , BU65_DATAULTAGG )\r\n"
            "VALUES\r\n (3, 'A1', 7, 2024, 1, N'NE', N'200', 5, 0 , 0 , ADESSO)\r\n");
  EXPECT_EQ(testi.back(), "CommitTrans");
}

TEST(Allineamento, UndoesEverythingWhenAStatementFails) {
  std::size_t guasto = 1;
  for (; guasto <= 12; ++guasto) {
    BancoConStruttura banco;
    banco.guastaAl(guasto);
    AllineaBU65_A_StrutturaBU60(banco.ctx);
    if (guasto == 5) {  // the transaction itself, which this connection does not fail
      EXPECT_EQ(banco.ctx.stato(), 0);
      continue;
    }
    EXPECT_EQ(banco.ctx.stato(), 99) << guasto;
    EXPECT_THAT(banco.ctx.errore(), testing::StartsWith("boom in "));
    EXPECT_EQ(banco.db->texts.size(), guasto < 5 ? guasto : guasto + 1);
    EXPECT_EQ(banco.db->texts.back() == "RollbackTrans", guasto > 5);
    EXPECT_EQ(banco.ctx.errore() == "boom in AllineaBU65_A_StrutturaBU60", guasto == 4 || guasto == 6) << guasto;
  }
}

TEST(Allineamento, AHandlerThatThrowsEndsIt) {
  BancoConStruttura banco;
  banco.eventi.StepProcess = [](Variant&) { throw values::Errore("stop"); };
  AllineaBU65_A_StrutturaBU60(banco.ctx);
  EXPECT_EQ(banco.esito(), "99 stop in AllineaBU65_A_StrutturaBU60");
  EXPECT_EQ(banco.db->texts.back(), "RollbackTrans");
}

TEST(Allineamento, RefusesAnIncompleteSelection) {
  definition_tests::EserciziFinti::registra();
  Banco senzaAnno(3);
  senzaAnno.prop.AnnoEsercizio = Variant::Null();
  AllineaBU65_A_StrutturaBU60(senzaAnno.ctx);
  EXPECT_EQ(senzaAnno.esito(), "1 AnnoEsercizio  : Dato non definito nel BO ");

  Banco annoIgnoto(3);
  definition_tests::EserciziFinti::esiste = false;
  AllineaBU65_A_StrutturaBU60(annoIgnoto.ctx);
  EXPECT_EQ(annoIgnoto.esito(), "1 L'esercizio 2024/1 non esiste ");
  definition_tests::EserciziFinti::esiste = true;

  Banco senzaStruttura(3);
  senzaStruttura.rispondi({"BU01_CODICE_BU60"}, {});
  AllineaBU65_A_StrutturaBU60(senzaStruttura.ctx);
  EXPECT_EQ(senzaStruttura.esito(), "1 CodiceStrutturaBU60  : Dato non definito nel BO ");

  Banco ignota(3);
  ignota.prop.CodiceStrutturaBU60 = "ZZ";
  ignota.rispondi({"BU60_DESCR", "BU60_INDTIPOPDC", "BU60_CODICEPDC"}, {});
  AllineaBU65_A_StrutturaBU60(ignota.ctx);
  EXPECT_EQ(ignota.esito(), "1 La struttura ZZ non esiste ");
}

}  // namespace
