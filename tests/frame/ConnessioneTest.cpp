#include <gtest/gtest.h>

#include "ado/connection/ConnectionString.h"
#include "frame/Connessione.h"
#include "frame/Trappola.h"
#include "support/ContestoDiProva.h"

namespace bukorval {
namespace {

/// What a provider was given when it was opened.
struct Apertura {
  std::string stringa, utente = "?", password = "?";
  std::int32_t cursore = 0, modo = 0, isolamento = 0, opzioni = 0;
  int volte = 0;
};
Apertura ultima;

class ConnessioneFinta : public testing_support::RecordingConnection {
 public:
  void Open(std::string_view utente, std::string_view password, std::int32_t opzioni) override {
    ultima = {ConnectionString, std::string(utente), std::string(password), CursorLocation, Mode, IsolationLevel,
              opzioni,          ultima.volte + 1};
    if (ado::connectionEntry(ConnectionString, "Data Source") == "guasto") throw values::Errore("Login failed");
  }
};

class Connessione : public testing::Test, protected testing_support::ContestoDiProva {
 protected:
  Connessione() {
    ado::registerProvider("Finta", [] { return std::make_shared<ConnessioneFinta>(); });
    ultima = {};
  }
};

TEST_F(Connessione, AGivenConnectionIsLeftAlone) {
  ctx.esito({bdgStatoErrore, "prima in Altra"});
  EXPECT_TRUE(creaConnessioneDB(ctx));
  EXPECT_EQ(ctx.stato(), bdgStatoOk);
  EXPECT_EQ(ctx.errore(), "");
  EXPECT_EQ(ctx.connessionePtr(), db);
  EXPECT_EQ(db->opened, 0);
}

TEST_F(Connessione, WithoutStringItIsRefused) {
  ctx.connessione(nullptr);
  EXPECT_FALSE(creaConnessioneDB(ctx));
  EXPECT_EQ(ctx.stato(), bdgStatoRifiutato);
  EXPECT_EQ(ctx.errore(), "Non è stata definita la stringa di connessione");
}

TEST_F(Connessione, OpensOnceWithItsSettings) {
  ctx.connessione(nullptr);
  ctx.stringaConnessione = "Provider=Finta;Data Source=x";
  EXPECT_TRUE(creaConnessioneDB(ctx));
  EXPECT_TRUE(creaConnessioneDB(ctx));
  EXPECT_EQ(ultima.volte, 1);
  EXPECT_EQ(ultima.stringa, "Provider=Finta;Data Source=x");
  EXPECT_EQ(ultima.cursore, 3);
  EXPECT_EQ(ultima.modo, 12);
  EXPECT_EQ(ultima.isolamento, 1048576);
  EXPECT_EQ(ultima.utente + ultima.password, "");
  EXPECT_EQ(ultima.opzioni, -1);
}

TEST_F(Connessione, AFailedOpenIsReportedAndNotKept) {
  ctx.connessione(nullptr);
  ctx.stringaConnessione = "Provider=Finta;Data Source=guasto";
  EXPECT_FALSE(creaConnessioneDB(ctx));
  EXPECT_EQ(ctx.stato(), bdgStatoErrore);
  EXPECT_EQ(ctx.errore(), "Login failed in CreaConnessioneDB");
  EXPECT_EQ(ctx.connessionePtr(), nullptr);
  ctx.stringaConnessione = "Provider=Ignota;Data Source=x";
  EXPECT_FALSE(creaConnessioneDB(ctx));
  EXPECT_TRUE(ctx.errore().ends_with(" in CreaConnessioneDB"));
  ctx.stringaConnessione = "Provider=Finta;Data Source=x";
  EXPECT_TRUE(creaConnessioneDB(ctx));
  EXPECT_EQ(ctx.stato(), bdgStatoOk);
}

}  // namespace
}  // namespace bukorval
