#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "ado/recordset/Recordset.h"
#include "object/Interfaccia.h"

namespace bukorval {
namespace {

using testing::HasSubstr;
using testing::ThrowsMessage;
using values::Variant;

TEST(Interfaccia, HasEveryPublicMemberAndNoOther) {
  std::ifstream file(BUKORVAL_SOURCE_DIR "/tests/object/interfaccia.txt");
  std::vector<std::string> attesi, trovati;
  for (std::string riga; std::getline(file, riga);) attesi.push_back(riga);
  for (const auto& membro : interfaccia()) {
    const std::string accesso = membro.genere == Genere::Metodo ? ""
                                : membro.leggi && membro.scrivi ? ", read and set"
                                : membro.leggi                  ? ", read"
                                                                : ", set";
    trovati.push_back(firma(membro) + accesso);
    EXPECT_EQ(membro.genere == Genere::Metodo, static_cast<bool>(membro.chiama)) << membro.nome;
  }
  ASSERT_EQ(attesi.size(), 52u + 66u);
  EXPECT_THAT(trovati, testing::ElementsAreArray(attesi));
}

struct InterfacciaTest : testing::Test {
  CLSKORVAL bo;
  void imposta(std::string_view nome, const Variant& valore) { trovaMembro(nome)->scrivi(bo, valore); }
  Variant chiama(std::string_view nome, std::vector<Variant> argomenti) {
    auto risultato = trovaMembro(nome)->chiama(bo, argomenti);
    dopo = argomenti;
    return risultato;
  }
  std::vector<Variant> dopo;
};

TEST_F(InterfacciaTest, FindsMembersWithoutRegardToCase) {
  ASSERT_TRUE(trovaMembro("tipobudget"));
  EXPECT_EQ(trovaMembro("tipobudget")->nome, "TipoBudget");
  EXPECT_EQ(trovaMembro("TipoBudgett"), nullptr);
}

TEST_F(InterfacciaTest, ConvertsTextToThePropertysType) {
  imposta("TipoBudget", "4");
  imposta("SottoTipoBudget", "01");
  imposta("MovimentiConsolidati", "true");
  imposta("GestioneRettifiche", "1");
  imposta("TipoMovimenti", 7);
  imposta("StringaConnessione", "Provider=X");
  EXPECT_EQ(bo.TipoBudget, 4);
  EXPECT_EQ(bo.SottoTipoBudget, Variant("01")) << "a code is no number";
  EXPECT_TRUE(bo.MovimentiConsolidati && bo.GestioneRettifiche);
  EXPECT_EQ(trovaMembro("TipoMovimenti")->leggi(bo), Variant("7"));
  EXPECT_EQ(trovaMembro("StringaConnessione")->leggi(bo), Variant("Provider=X"));
}

TEST_F(InterfacciaTest, RefusesValuesThatAreNotOfThePropertysType) {
  const std::pair<const char*, Variant> casi[] = {
      {"TipoBudget", "quattro"},
      {"TipoBudget", 3e9},
      {"TipoBudget", Variant::Null()},
      {"MovimentiConsolidati", "forse"},
      {"RstSaldiElaEco", "testo"},
      {"TipoMovimenti", Variant::Null()},
      {"ElencoSedi", std::shared_ptr<values::Object>(std::make_shared<ado::Recordset>())}};
  bo.TipoBudget = 5;
  bo.TipoMovimenti = "prima";
  for (const auto& caso : casi)
    EXPECT_THAT([&] { imposta(caso.first, caso.second); },
                ThrowsMessage<ErroreArgomento>(HasSubstr(std::string(caso.first) + ": ")));
  EXPECT_EQ(bo.TipoBudget, 5);
  EXPECT_EQ(bo.TipoMovimenti, "prima");
}

TEST_F(InterfacciaTest, CarriesObjectsAndNothing) {
  const auto insieme = std::make_shared<ado::Recordset>();
  imposta("RstSaldiElaEco", std::shared_ptr<values::Object>(insieme));
  EXPECT_EQ(bo.RstSaldiElaEco, insieme);
  EXPECT_EQ(oggetto<ado::Recordset>(trovaMembro("RstSaldiElaEco")->leggi(bo)), insieme);
  EXPECT_EQ(oggetto<ado::Dictionary>(trovaMembro("RstSaldiElaEco")->leggi(bo)), nullptr);
  imposta("RstSaldiElaEco", Variant());
  EXPECT_EQ(trovaMembro("RstSaldiElaEco")->leggi(bo).kind(), values::Kind::Object);
  EXPECT_EQ(oggetto<ado::Recordset>(trovaMembro("RstSaldiElaEco")->leggi(bo)), nullptr);
}

TEST_F(InterfacciaTest, CallsMethodsWithTextArguments) {
  EXPECT_EQ(chiama("getbdgperiodo", {"7", "2", "0", "01/07/2024"}), Variant(std::int16_t{1}));
  EXPECT_EQ(chiama("CalcolaDeltaPercentuale", {"150", "120"}), Variant(values::Decimal::FromScaled(25, 2)));
  EXPECT_TRUE(chiama("GetBdgNrPeriodi", {6}).isNull());
}

TEST_F(InterfacciaTest, WritesInOutArgumentsBack) {
  chiama("GetGestioneSede", {"4", "01", "True"});
  EXPECT_EQ(dopo[2], Variant(false));
  chiama("GetGestioneQta", {4, "01"});
  ASSERT_EQ(dopo.size(), 4u) << "missing in/out arguments are filled in";
  EXPECT_EQ(dopo[3], Variant(false));
}

TEST_F(InterfacciaTest, RefusesABadCallBeforeItRuns) {
  chiama("CDecN", {"abc"});
  const auto errore = bo.errore();
  ASSERT_EQ(bo.Stato(), bdgStatoErrore);
  EXPECT_THAT(
      [&] {
        chiama("GetBdgPeriodo", {7, 2, 0});
      },
      ThrowsMessage<ErroreArgomento>(HasSubstr("3 for GetBdgPeriodo(MyMese As Integer, ")));
  EXPECT_THAT([&] { chiama("GetBdgNrPeriodi", {1, 2}); }, ThrowsMessage<ErroreArgomento>(HasSubstr("2 for ")));
  EXPECT_THAT([&] { chiama("GetBdgNrPeriodi", {"molti"}); },
              ThrowsMessage<ErroreArgomento>(HasSubstr("MyBdgPeriodicita: ")));
  EXPECT_EQ(bo.errore(), errore);
}

}  // namespace
}  // namespace bukorval
