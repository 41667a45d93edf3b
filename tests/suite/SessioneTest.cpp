#include <numeric>

#include "suite/Suite.h"
#include "support/Database.h"

namespace {

struct Suite : testing::Test {
  ado::ConnectionPtr db = testing_support::memoryDatabase();

  void company(int code, int structure) const {
    testing_support::insert(*db, "CG18_ANADITTE",
                            "CG18_CODICE=" + std::to_string(code) + ", CG18_RAGSOC=N'Ditta " + std::to_string(code) +
                                "', CG18_GRUPPO_CG10=7, CG18_STRUTTCONTI=" + std::to_string(structure) +
                                ", CG18_MASTROCLI=N'14010000'");
  }
};

TEST_F(Suite, ASessionReadsItsCompany) {
  EXPECT_THROW(suite::Sessione{db}, values::Errore);
  company(20, 4);
  company(3, 5);
  EXPECT_EQ(values::toInt32(suite::Sessione(db).CodiceDitta()), 3);
  const suite::Sessione chosen(db, "20");
  EXPECT_EQ(chosen.RagioneSociale(), "Ditta 20");
  EXPECT_EQ(values::toInt32(chosen.CodicePdcCoGe()), 7);
  EXPECT_EQ(values::toText(chosen.MastroClienti()), "14010000");
  EXPECT_TRUE(chosen.MastroFornitori().isNull());
  EXPECT_EQ(chosen.SeparatoreDecimale(), ',');
  EXPECT_THROW(suite::Sessione(db, 21), values::Errore);
}

TEST_F(Suite, AccountCodesOfEveryStructureHaveEightDigitsAndAnAnalyticTail) {
  for (const auto& [structure, tail] : {std::pair{2, 5}, {3, 4}, {4, 4}, {5, 2}}) {
    company(structure, structure);
    const auto levels = suite::Sessione(db, structure).LunghezzeLivelli();
    EXPECT_EQ(levels.size(), static_cast<std::size_t>(structure));
    EXPECT_EQ(std::accumulate(levels.begin(), levels.end(), 0), 8);
    EXPECT_EQ(levels.back(), tail);
  }
  company(6, 6);
  EXPECT_THROW(suite::Sessione(db, 6), values::Errore);
}

TEST_F(Suite, CatalogueTextsAreTheCompanysElseBuiltIn) {
  company(1, 4);
  db->Execute("INSERT INTO CG00_MESSAGGI (CG00_NUMERO, CG00_TESTO) VALUES (28193, N'Gen.'), (1, NULL)");
  suite::Sessione session(db);
  for (const auto& [number, text] :
       {std::pair{28193, "Gen."}, {26677, "Febbraio"}, {22569, "Dicembre"}, {58700, "Trimestre"}, {6537, "Anno"}})
    EXPECT_EQ(values::toText(session.TestoMessaggio(number)), text);
  EXPECT_TRUE(session.TestoMessaggio(1).isNull());
  // Messages go where the host wants.
  session.MostraMessaggio("lost", 48, "");
  std::string seen;
  session.messaggiero = [&](std::string_view text, int style, std::string_view title) {
    seen = std::string(title) + "|" + std::to_string(style) + "|" + std::string(text);
  };
  session.MostraMessaggio("text", 48, "title");
  EXPECT_EQ(seen, "title|48|text");
}

TEST_F(Suite, YearsAnswerFromTheTable) {
  db->Execute(
      "INSERT INTO CG19_ANADITTAESER (CG19_DITTA_CG18, CG19_ANNO, CG19_PROGESER, CG19_DATAINIZIO, CG19_DATAFINE,"
      " CG19_FLGCHIUSO) VALUES (1, 2024, 2, '20240701', '20250630', 1), (1, 2025, 3, '20250701', '20260630', 0)");
  suite::registraServiziSuite();
  const auto years = suite::creaServizio<suite::ServizioEsercizi>(suite::kServizioEsercizi);
  EXPECT_THROW(years->EsisteAnno(1, 2024), values::Errore);
  years->Connessione(db);
  EXPECT_TRUE(years->Esiste(1, "2024", 2));
  EXPECT_FALSE(years->Esiste(1, 2024, 1));
  EXPECT_FALSE(years->Esiste(1, 2024, Variant::Null()));
  EXPECT_TRUE(years->EsisteAnno(1, 2025));
  EXPECT_FALSE(years->EsisteAnno(2, 2025));
  EXPECT_TRUE(years->Chiuso(1, 2024, 2));
  EXPECT_FALSE(years->Chiuso(1, 2025, 3));
  EXPECT_FALSE(years->Chiuso(1, 2099, 3));
  Variant first = "before", last = "before";
  years->DateInizioFine(1, 2099, 1, first, last);
  EXPECT_EQ(first, Variant("before"));
  years->DateInizioFine(1, 2024, 2, first, last);
  EXPECT_EQ(values::toText(first) + " " + values::toText(last), "01/07/2024 30/06/2025");
}

}  // namespace
