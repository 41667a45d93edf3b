#include <fstream>

#include "ado/recordset/Recordset.h"
#include "object/Interfaccia.h"
#include "support/Test.h"

namespace {

using namespace bukorval;
using testing::HasSubstr, testing::ThrowsMessage;

TEST(Interfaccia, HasEveryPublicMemberAndNoOther) {
  std::ifstream file(BUKORVAL_SOURCE_DIR "/tests/object/interfaccia.txt");
  std::vector<std::string> expected, found;
  for (std::string line; std::getline(file, line);) expected.push_back(line);
  for (const auto& member : interfaccia()) {
    const std::string access = member.genere == Genere::Metodo ? ""
                               : member.leggi && member.scrivi ? ", read and set"
                               : member.leggi                  ? ", read"
                                                               : ", set";
    found.push_back(firma(member) + access);
    EXPECT_EQ(member.genere == Genere::Metodo, static_cast<bool>(member.chiama)) << member.nome;
  }
  ASSERT_EQ(expected.size(), 52u + 66u);
  EXPECT_THAT(found, testing::ElementsAreArray(expected));
  ASSERT_TRUE(trovaMembro("tipobudget"));
  EXPECT_EQ(trovaMembro("tipobudget")->nome, "TipoBudget");
  EXPECT_EQ(trovaMembro("TipoBudgett"), nullptr);
}

struct InterfacciaTest : testing::Test {
  CLSKORVAL bo;
  std::vector<Variant> after;  ///< the arguments as the last call left them
  void set(std::string_view name, const Variant& value) { trovaMembro(name)->scrivi(bo, value); }
  Variant get(std::string_view name) const { return trovaMembro(name)->leggi(bo); }
  Variant call(std::string_view name, std::vector<Variant> arguments) {
    auto result = trovaMembro(name)->chiama(bo, arguments);
    after = arguments;
    return result;
  }
};

TEST_F(InterfacciaTest, ConvertsTextToThePropertysType) {
  set("TipoBudget", "4");
  set("SottoTipoBudget", "01");
  set("MovimentiConsolidati", "true");
  set("GestioneRettifiche", "1");
  set("TipoMovimenti", 7);
  set("StringaConnessione", "Provider=X");
  EXPECT_EQ(bo.TipoBudget, 4);
  EXPECT_EQ(bo.SottoTipoBudget, Variant("01")) << "a code is no number";
  EXPECT_TRUE(bo.MovimentiConsolidati && bo.GestioneRettifiche);
  EXPECT_EQ(get("TipoMovimenti"), Variant("7"));
  EXPECT_EQ(get("StringaConnessione"), Variant("Provider=X"));
}

TEST_F(InterfacciaTest, RefusesValuesThatAreNotOfThePropertysType) {
  const std::pair<const char*, Variant> cases[] = {
      {"TipoBudget", "quattro"},
      {"TipoBudget", 3e9},
      {"TipoBudget", Variant::Null()},
      {"MovimentiConsolidati", "forse"},
      {"RstSaldiElaEco", "testo"},
      {"TipoMovimenti", Variant::Null()},
      {"ElencoSedi", std::shared_ptr<values::Object>(std::make_shared<ado::Recordset>())}};
  bo.TipoBudget = 5;
  bo.TipoMovimenti = "before";
  for (const auto& [name, value] : cases)
    EXPECT_THAT(([&, &property = name, &given = value] { set(property, given); }),
                ThrowsMessage<ErroreArgomento>(HasSubstr(std::string(name) + ": ")));
  EXPECT_EQ(bo.TipoBudget, 5);
  EXPECT_EQ(bo.TipoMovimenti, "before");
}

TEST_F(InterfacciaTest, CarriesObjectsAndNothing) {
  const auto records = std::make_shared<ado::Recordset>();
  set("RstSaldiElaEco", std::shared_ptr<values::Object>(records));
  EXPECT_EQ(bo.RstSaldiElaEco, records);
  EXPECT_EQ(oggetto<ado::Recordset>(get("RstSaldiElaEco")), records);
  EXPECT_EQ(oggetto<ado::Dictionary>(get("RstSaldiElaEco")), nullptr);
  set("RstSaldiElaEco", Variant());
  EXPECT_EQ(get("RstSaldiElaEco").kind(), values::Kind::Object);
  EXPECT_EQ(oggetto<ado::Recordset>(get("RstSaldiElaEco")), nullptr);
}

TEST_F(InterfacciaTest, CallsMethodsWithTextArguments) {
  EXPECT_EQ(call("getbdgperiodo", {"7", "2", "0", "01/07/2024"}), Variant(std::int16_t{1}));
  EXPECT_EQ(call("CalcolaDeltaPercentuale", {"150", "120"}), Variant(values::Decimal::FromScaled(25, 2)));
  EXPECT_TRUE(call("GetBdgNrPeriodi", {6}).isNull());
}

TEST_F(InterfacciaTest, WritesInOutArgumentsBack) {
  call("GetGestioneSede", {"4", "01", "True"});
  EXPECT_EQ(after[2], Variant(false));
  call("GetGestioneQta", {4, "01"});
  ASSERT_EQ(after.size(), 4u) << "missing in/out arguments are filled in";
  EXPECT_EQ(after[3], Variant(false));
}

TEST_F(InterfacciaTest, RefusesABadCallBeforeItRuns) {
  call("CDecN", {"abc"});
  const auto before = bo.errore();
  ASSERT_EQ(bo.Stato(), bdgStatoErrore);
  EXPECT_THAT(
      [&] {
        call("GetBdgPeriodo", {7, 2, 0});
      },
      ThrowsMessage<ErroreArgomento>(HasSubstr("3 for GetBdgPeriodo(MyMese As Integer, ")));
  EXPECT_THAT([&] { call("GetBdgNrPeriodi", {1, 2}); }, ThrowsMessage<ErroreArgomento>(HasSubstr("2 for ")));
  EXPECT_THAT([&] { call("GetBdgNrPeriodi", {"molti"}); },
              ThrowsMessage<ErroreArgomento>(HasSubstr("MyBdgPeriodicita: ")));
  EXPECT_EQ(bo.errore(), before);
}

}  // namespace
