#include <gtest/gtest.h>

#include "frame/Trappola.h"
#include "support/ContestoDiProva.h"

namespace bukorval {
namespace {

class Trappola : public testing::Test, protected testing_support::ContestoDiProva {
 protected:
  int interna(bool guasta) {
    return esegui(ctx, "Interna ", -1, [&] {
      if (guasta) throw values::Errore("guasto");
      return 7;
    });
  }
};

TEST_F(Trappola, KeepsTheInnermostName) {
  bool continuata = false;
  const int risultato = esegui(ctx, "Esterna", -2, [&] {
    const int valore = chiedi(ctx, interna(true));
    continuata = true;
    return valore;
  });
  EXPECT_EQ(risultato, -2);
  EXPECT_FALSE(continuata);
  EXPECT_EQ(ctx.stato(), bdgStatoErrore);
  EXPECT_EQ(ctx.errore(), "guasto in Interna ");
}

TEST_F(Trappola, ALaterNestedOperationDoesNotWipeAFailure) {
  esegui(ctx, "Esterna", [&] {
    interna(true);
    interna(false);
  });
  EXPECT_EQ(ctx.errore(), "guasto in Interna ");
  EXPECT_EQ(interna(false), 7);
  EXPECT_EQ(ctx.stato(), bdgStatoOk);
  EXPECT_EQ(ctx.errore(), "");
}

TEST_F(Trappola, ARefusalInsideStopsItsCallers) {
  const auto rifiutata = [&] {
    return esegui(ctx, "Interna", false, [&] {
      ctx.rifiuta("Dato mancante");
      return false;
    });
  };
  bool continuata = false;
  esegui(ctx, "Esterna", [&] {
    chiedi(ctx, rifiutata());
    continuata = true;
  });
  EXPECT_FALSE(continuata);
  EXPECT_EQ(ctx.stato(), bdgStatoRifiutato);
  EXPECT_EQ(ctx.errore(), "Dato mancante");
}

TEST_F(Trappola, CatchesWhateverIsThrown) {
  esegui(ctx, "Numero", [] { throw 42; });
  EXPECT_EQ(ctx.errore(), "Unknown error in Numero");
  esegui(ctx, "Indice", [] { static_cast<void>(std::vector<int>().at(3)); });
  EXPECT_EQ(ctx.stato(), bdgStatoErrore);
  EXPECT_TRUE(ctx.errore().ends_with(" in Indice"));
  esegui(ctx, "Completa", [&] { ctx.fallisce("Testo intero"); });
  EXPECT_EQ(ctx.stato(), bdgStatoErrore);
  EXPECT_EQ(ctx.errore(), "Testo intero");
}

TEST_F(Trappola, MissingObjectsAreNamed) {
  ctx.connessione(nullptr);
  prop.ActiveInterface = nullptr;
  esegui(ctx, "A", [&] { ctx.connessione(); });
  EXPECT_EQ(ctx.errore(), "Object variable or With block variable not set: Connessione in A");
  esegui(ctx, "B", [&] { ctx.sessione(); });
  EXPECT_EQ(ctx.errore(), "Object variable or With block variable not set: ActiveInterface in B");
  EXPECT_EQ(ctx.separatore(), ',');
}

}  // namespace
}  // namespace bukorval
