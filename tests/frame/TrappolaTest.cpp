#include <gtest/gtest.h>

#include "frame/Processo.h"
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
    const int valore = interna(true);
    continuata = true;
    return valore;
  });
  EXPECT_EQ(risultato, -2);
  EXPECT_FALSE(continuata);
  EXPECT_EQ(ctx.stato(), bdgStatoErrore);
  EXPECT_EQ(ctx.errore(), "guasto in Interna ");
}

TEST_F(Trappola, AnOperationThatSwallowsAFailureInsideSucceeds) {
  const int risultato = esegui(ctx, "Esterna", -2, [&] {
    try {
      interna(true);
    } catch (const std::exception&) {
    }
    return interna(false);
  });
  EXPECT_EQ(risultato, 7);
  EXPECT_EQ(ctx.stato(), bdgStatoOk);
  EXPECT_EQ(ctx.errore(), "");
  interna(true);
  EXPECT_EQ(interna(false), 7) << "the next operation starts with a clean outcome";
  EXPECT_EQ(ctx.errore(), "");
}

TEST_F(Trappola, AHandlerThatAsksTheObjectDoesNotDisturbTheRun) {
  int finiti = 0;
  BdgStato vistoDalCliente = bdgStatoOk;
  ctx.dati.numeroForecast = 2;
  eventi.StepProcess = [&](values::Variant&) {
    EXPECT_EQ(interna(true), -1) << "no exception reaches the client";
    vistoDalCliente = ctx.stato();
    ctx.dati.numeroForecast = 9;
    ctx.connessione(nullptr);
  };
  eventi.EndProcess = [&] { ++finiti; };
  const auto connessione = ctx.connessionePtr();
  const int passi = esegui(ctx, "Esterna", 0, [&] {
    Processo processo(ctx, "Prova", 2);
    processo.passo();
    EXPECT_EQ(ctx.connessionePtr(), connessione) << "the run goes on where it began";
    processo.passo();
    processo.fine();
    return 2;
  });
  EXPECT_EQ(vistoDalCliente, bdgStatoErrore);
  EXPECT_EQ(passi, 2);
  EXPECT_EQ(ctx.stato(), bdgStatoOk);
  EXPECT_EQ(ctx.errore(), "");
  EXPECT_EQ(ctx.dati.numeroForecast, 2);
  EXPECT_EQ(finiti, 1);
}

TEST_F(Trappola, AStepThatFailsStillEndsItsProcess) {
  int finiti = 0;
  eventi.EndProcess = [&] { ++finiti; };
  esegui(ctx, "Esterna", [&] {
    Processo processo(ctx, "Prova", 1);
    interna(true);
  });
  EXPECT_EQ(finiti, 1);
  EXPECT_EQ(ctx.errore(), "guasto in Interna ");
  eventi.EndProcess = [&] { throw values::Errore("gestore"); };
  esegui(ctx, "Esterna", [&] { Processo(ctx, "Prova", 1).fine(); });
  EXPECT_EQ(ctx.errore(), "gestore in Esterna");
}

TEST_F(Trappola, ARefusalInsideStopsItsCallers) {
  const auto rifiutata = [&] {
    return esegui(ctx, "Interna", false, [&] {
      rifiuta("Dato mancante");
      return true;
    });
  };
  bool continuata = false;
  esegui(ctx, "Esterna", [&] {
    rifiutata();
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
  esegui(ctx, "Completa", [&] { throw Fallimento(bdgStatoErrore, "Testo intero"); });
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
