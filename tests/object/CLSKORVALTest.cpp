#include "frame/Traccia.h"
#include "object/CLSKORVAL.h"
#include "support/RecordingConnection.h"

namespace bukorval {
namespace {

using testing::EndsWith, testing_support::RecordingConnection;

TEST(CLSKORVAL, TracesItsLifeUnderOneIdentifier) {
  std::vector<std::string> lines;
  impostaCanaleTraccia([&](const std::string& line) { lines.push_back(line.substr(6, 36)); });
  { CLSKORVAL first, second; }
  impostaCanaleTraccia({});
  ASSERT_EQ(lines.size(), 4u);
  const auto id = [&](std::size_t i) { return lines[i].substr(0, 32); };
  EXPECT_EQ(lines, (std::vector{id(0) + "|INI", id(1) + "|INI", id(1) + "|TER", id(0) + "|TER"}));
  EXPECT_NE(id(0), id(1));
}

TEST(CLSKORVAL, ResetsTheOutcomeInEveryMethodButNvlAndBFill) {
  CLSKORVAL bo;
  EXPECT_EQ(bo.Stato(), bdgStatoOk);
  EXPECT_EQ(bo.errore(), "");
  EXPECT_TRUE(bo.CDecN("dodici").isEmpty());
  EXPECT_EQ(bo.Stato(), bdgStatoErrore);
  EXPECT_THAT(bo.errore(), EndsWith(" in CDecN"));
  EXPECT_EQ(bo.NVL("  ", 5), Variant(5));
  EXPECT_EQ(bo.BFill("ab", 4), Variant("ab  "));
  EXPECT_THAT(bo.errore(), EndsWith(" in CDecN"));
  EXPECT_EQ(bo.RTrimN("  a "), Variant("  a"));
  EXPECT_EQ(bo.Stato(), bdgStatoOk);
  bo.RTrimN(std::make_shared<values::Object>());
  EXPECT_THAT(bo.errore(), EndsWith(" in RTrimN"));
  EXPECT_EQ(bo.GetNaturaBudget(0), 1);
  EXPECT_EQ(bo.Stato(), bdgStatoOk);
  EXPECT_EQ(bo.errore(), "");
}

TEST(CLSKORVAL, OpensOneConnectionAndKeepsItUntilAnotherIsGiven) {
  const auto opened = std::make_shared<RecordingConnection>();
  ado::registerProvider("Fake", [opened] { return opened; });
  CLSKORVAL bo;
  EXPECT_EQ(bo.GetNumeroForecast(0, "A1"), 1);
  EXPECT_EQ(bo.errore(), "Non è stata definita la stringa di connessione");
  bo.StringaConnessione("Provider=Nobody;Data Source=x");
  bo.GetNumeroForecast(0, "A1");
  EXPECT_EQ(bo.Stato(), bdgStatoErrore);
  EXPECT_THAT(bo.errore(), EndsWith(" in CreaConnessioneDB"));
  bo.StringaConnessione("Provider=Fake;Data Source=x");
  for (int i = 0; i < 2; ++i) {
    opened->answers.push_back(testing_support::rows({"BU01_NUMFORECAST"}, {{3}}));
    EXPECT_EQ(bo.GetNumeroForecast(0, "A1"), 3) << bo.errore();
  }
  EXPECT_EQ(opened->opened, 1);
  const auto given = std::make_shared<RecordingConnection>();
  given->answers.push_back(testing_support::rows({"BU01_NUMFORECAST"}, {{2}}));
  bo.Connessione(given);
  EXPECT_EQ(bo.GetNumeroForecast(0, "A1"), 2);
  EXPECT_EQ(given->opened, 0);
}

}  // namespace
}  // namespace bukorval
