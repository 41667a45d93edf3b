#include <gtest/gtest.h>

#include <numeric>

#include "schema/Schema.h"
#include "sqlite/Provider.h"
#include "suite/Suite.h"
#include "values/Conversion.h"

namespace {

using values::Variant;

/// An empty database with the suite's tables.
struct Archivio {
  ado::ConnectionPtr connessione;

  Archivio() {
    sqlite::registerSqlite();
    connessione = ado::createConnection();
    connessione->ConnectionString = "Provider=SQLite;Data Source=:memory:";
    connessione->Open();
    schema::create(*connessione);
  }
  void ditta(int codice, int struttura) {
    connessione->Execute(
        "INSERT INTO CG18_ANADITTE (CG18_CODICE, CG18_RAGSOC, CG18_GRUPPO_CG10, CG18_STRUTTCONTI, CG18_MASTROCLI)"
        " VALUES (" +
        std::to_string(codice) + ", N'Ditta " + std::to_string(codice) + "', 7, " + std::to_string(struttura) +
        ", N'14010000')");
  }
};

TEST(Sessione, ReadsItsCompany) {
  Archivio archivio;
  EXPECT_THROW(suite::Sessione(archivio.connessione), values::Errore);
  archivio.ditta(20, 4);
  archivio.ditta(3, 5);
  const suite::Sessione prima(archivio.connessione);
  EXPECT_EQ(values::toInt32(prima.CodiceDitta()), 3);
  const suite::Sessione scelta(archivio.connessione, "20");
  EXPECT_EQ(scelta.RagioneSociale(), "Ditta 20");
  EXPECT_EQ(values::toInt32(scelta.CodicePdcCoGe()), 7);
  EXPECT_EQ(values::toText(scelta.MastroClienti()), "14010000");
  EXPECT_TRUE(scelta.MastroFornitori().isNull());
  EXPECT_EQ(scelta.SeparatoreDecimale(), ',');
  EXPECT_THROW(suite::Sessione(archivio.connessione, 21), values::Errore);
}

TEST(Sessione, AccountCodesOfEveryStructureHaveEightDigitsAndAnAnalyticTail) {
  Archivio archivio;
  for (const auto& [struttura, coda] : {std::pair{2, 5}, {3, 4}, {4, 4}, {5, 2}}) {
    archivio.ditta(struttura, struttura);
    const auto livelli = suite::Sessione(archivio.connessione, struttura).LunghezzeLivelli();
    EXPECT_EQ(livelli.size(), static_cast<std::size_t>(struttura));
    EXPECT_EQ(std::accumulate(livelli.begin(), livelli.end(), 0), 8);
    EXPECT_EQ(livelli.back(), coda);
  }
  archivio.ditta(6, 6);
  EXPECT_THROW(suite::Sessione(archivio.connessione, 6), values::Errore);
}

TEST(Sessione, CatalogueTextsAreTheCompanysElseBuiltIn) {
  Archivio archivio;
  archivio.ditta(1, 4);
  archivio.connessione->Execute(
      "INSERT INTO CG00_MESSAGGI (CG00_NUMERO, CG00_TESTO) VALUES (28193, N'Gen.'), (1, NULL)");
  const suite::Sessione sessione(archivio.connessione);
  for (const auto& [numero, testo] :
       {std::pair{28193, "Gen."}, {26677, "Febbraio"}, {22569, "Dicembre"}, {58700, "Trimestre"}, {6537, "Anno"}})
    EXPECT_EQ(values::toText(sessione.TestoMessaggio(numero)), testo);
  EXPECT_TRUE(sessione.TestoMessaggio(1).isNull());
}

TEST(Sessione, MessagesGoWhereTheHostWants) {
  Archivio archivio;
  archivio.ditta(1, 4);
  suite::Sessione sessione(archivio.connessione);
  sessione.MostraMessaggio("perso", 48, "");
  std::string visto;
  sessione.messaggiero = [&](std::string_view testo, int stile, std::string_view titolo) {
    visto = std::string(titolo) + "|" + std::to_string(stile) + "|" + std::string(testo);
  };
  sessione.MostraMessaggio("testo", 48, "titolo");
  EXPECT_EQ(visto, "titolo|48|testo");
}

TEST(Esercizi, AnswerFromTheTable) {
  Archivio archivio;
  archivio.connessione->Execute(
      "INSERT INTO CG19_ANADITTAESER (CG19_DITTA_CG18, CG19_ANNO, CG19_PROGESER, CG19_DATAINIZIO, CG19_DATAFINE,"
      " CG19_FLGCHIUSO) VALUES (1, 2024, 2, '20240701', '20250630', 1), (1, 2025, 3, '20250701', '20260630', 0)");
  suite::registraServiziSuite();
  const auto esercizi = suite::creaServizio<suite::ServizioEsercizi>(suite::kServizioEsercizi);
  EXPECT_THROW(esercizi->EsisteAnno(1, 2024), values::Errore);
  esercizi->Connessione(archivio.connessione);
  EXPECT_TRUE(esercizi->Esiste(1, "2024", 2));
  EXPECT_FALSE(esercizi->Esiste(1, 2024, 1));
  EXPECT_FALSE(esercizi->Esiste(1, 2024, Variant::Null()));
  EXPECT_TRUE(esercizi->EsisteAnno(1, 2025));
  EXPECT_FALSE(esercizi->EsisteAnno(2, 2025));
  EXPECT_TRUE(esercizi->Chiuso(1, 2024, 2));
  EXPECT_FALSE(esercizi->Chiuso(1, 2025, 3));
  EXPECT_FALSE(esercizi->Chiuso(1, 2099, 3));
  Variant inizio = "prima", fine = "prima";
  esercizi->DateInizioFine(1, 2099, 1, inizio, fine);
  EXPECT_EQ(inizio, Variant("prima"));
  esercizi->DateInizioFine(1, 2024, 2, inizio, fine);
  EXPECT_EQ(values::toText(inizio) + " " + values::toText(fine), "01/07/2024 30/06/2025");
}

}  // namespace
