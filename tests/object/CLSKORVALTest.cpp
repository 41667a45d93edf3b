#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "frame/Traccia.h"
#include "object/CLSKORVAL.h"
#include "support/RecordingConnection.h"
#include "values/Errore.h"

namespace bukorval {
namespace {

using testing::EndsWith;
using testing_support::RecordingConnection;
using values::Variant;

TEST(CLSKORVAL, TracesItsLifeUnderOneIdentifier) {
  std::vector<std::string> righe;
  impostaCanaleTraccia([&](const std::string& riga) { righe.push_back(riga); });
  { CLSKORVAL primo, secondo; }
  impostaCanaleTraccia({});
  ASSERT_EQ(righe.size(), 4u);
  const auto id = [&](std::size_t i) { return righe[i].substr(6, 32); };
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(righe[i], "ZUMA:|" + id(i) + (i < 2 ? "|INI" : "|TER") + "|BUKORVAL|CLSKORVAL");
    EXPECT_EQ(id(i).find_first_not_of("0123456789ABCDEF"), std::string::npos);
  }
  EXPECT_EQ(id(0), id(3));
  EXPECT_EQ(id(1), id(2));
  EXPECT_NE(id(0), id(1));
}

TEST(CLSKORVAL, BeginsWithoutAnOutcome) {
  CLSKORVAL bo;
  EXPECT_EQ(bo.Stato(), bdgStatoOk);
  EXPECT_EQ(bo.errore(), "");
}

TEST(CLSKORVAL, ResetsTheOutcomeInEveryMethodButNvlAndBFill) {
  CLSKORVAL bo;
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

TEST(CLSKORVAL, NeedsAConnectionOrAConnectionString) {
  CLSKORVAL bo;
  EXPECT_EQ(bo.GetNumeroForecast(0, "A1"), 1);
  EXPECT_EQ(bo.Stato(), bdgStatoRifiutato);
  EXPECT_EQ(bo.errore(), "Non è stata definita la stringa di connessione");
  bo.StringaConnessione("Provider=Nessuno;Data Source=x");
  bo.GetNumeroForecast(0, "A1");
  EXPECT_EQ(bo.Stato(), bdgStatoErrore);
  EXPECT_THAT(bo.errore(), EndsWith(" in CreaConnessioneDB"));
}

TEST(CLSKORVAL, OpensOneConnectionAndKeepsIt) {
  static std::shared_ptr<RecordingConnection> aperta;
  aperta = std::make_shared<RecordingConnection>();
  ado::registerProvider("Prova", [] { return aperta; });
  CLSKORVAL bo;
  bo.StringaConnessione("Provider=Prova;Data Source=x");
  for (int i = 0; i < 2; ++i) {
    aperta->answers.push_back(testing_support::rows({"BU01_NUMFORECAST"}, {{3}}));
    EXPECT_EQ(bo.GetNumeroForecast(0, "A1"), 3) << bo.errore();
  }
  EXPECT_EQ(aperta->opened, 1);

  const auto data = std::make_shared<RecordingConnection>();
  data->answers.push_back(testing_support::rows({"BU01_NUMFORECAST"}, {{2}}));
  bo.Connessione(data);
  EXPECT_EQ(bo.GetNumeroForecast(0, "A1"), 2) << "a connection that is given replaces the one it made";
  EXPECT_EQ(data->opened, 0);
  aperta.reset();
}

}  // namespace
}  // namespace bukorval
