#include "frame/Processo.h"
#include "frame/Trappola.h"
#include "support/TestContext.h"

namespace {

using namespace bukorval;

class Trappola : public testing::Test, protected testing_support::TestContext {
 protected:
  int inner(bool broken) {
    return esegui(ctx, "Inner ", -1, [&] {
      if (broken) throw values::Errore("fault");
      return 7;
    });
  }
};

TEST_F(Trappola, AFailureOrARefusalInsideStopsItsCallersAndKeepsItsName) {
  const std::pair<std::function<void()>, const char*> rows[] = {
      {[&] { inner(true); }, "99 fault in Inner "},
      {[&] { esegui(ctx, "Inner", [&] { rifiuta("Dato mancante"); }); }, "1 Dato mancante"},
      {[] { throw 42; }, "99 Unknown error in Outer"},
      {[] { static_cast<void>(std::vector<int>().at(3)); }, "99 "},
      {[] { throw Fallimento(bdgStatoErrore, "The whole text"); }, "99 The whole text"}};
  for (const auto& [fail, expected] : rows) {
    bool wentOn = false;
    EXPECT_EQ(esegui(ctx, "Outer", -2,
                     [&, &failing = fail] {
                       failing();
                       wentOn = true;
                       return 0;
                     }),
              -2);
    EXPECT_FALSE(wentOn);
    EXPECT_TRUE(outcome().starts_with(expected)) << outcome();
    EXPECT_TRUE(ctx.stato() == 1 || ctx.errore() == "The whole text" || ctx.errore().find(" in ") != std::string::npos);
  }
}

TEST_F(Trappola, AnOperationThatSwallowsAFailureInsideSucceeds) {
  const int result = esegui(ctx, "Outer", -2, [&] {
    try {
      inner(true);
    } catch (const std::exception&) {
    }
    return inner(false);
  });
  EXPECT_EQ(result, 7);
  EXPECT_EQ(outcome(), "0 ");
  inner(true);
  EXPECT_EQ(inner(false), 7);
  EXPECT_EQ(outcome(), "0 ") << "the next operation starts with a clean outcome";
}

TEST_F(Trappola, AHandlerThatAsksTheObjectDoesNotDisturbTheRun) {
  int ended = 0;
  BdgStato seenByTheClient = bdgStatoOk;
  ctx.dati.numeroForecast = 2;
  eventi.StepProcess = [&](values::Variant&) {
    EXPECT_EQ(inner(true), -1) << "no exception reaches the client";
    seenByTheClient = ctx.stato();
    ctx.dati.numeroForecast = 9;
    ctx.connessione(nullptr);
  };
  eventi.EndProcess = [&] { ++ended; };
  const int steps = esegui(ctx, "Outer", 0, [&] {
    Processo process(ctx, "Trial", 2);
    process.passo();
    EXPECT_EQ(ctx.connessionePtr(), db) << "the run goes on where it began";
    process.passo();
    process.fine();
    return 2;
  });
  EXPECT_EQ(seenByTheClient, bdgStatoErrore);
  EXPECT_EQ(steps, 2);
  EXPECT_EQ(outcome(), "0 ");
  EXPECT_EQ(ctx.dati.numeroForecast, 2);
  EXPECT_EQ(ended, 1);
}

TEST_F(Trappola, AStepThatFailsStillEndsItsProcess) {
  int ended = 0;
  eventi.EndProcess = [&] { ++ended; };
  esegui(ctx, "Outer", [&] {
    Processo process(ctx, "Trial", 1);
    inner(true);
  });
  EXPECT_EQ(ended, 1);
  EXPECT_EQ(ctx.errore(), "fault in Inner ");
  eventi.EndProcess = [&] { throw values::Errore("handler"); };
  esegui(ctx, "Outer", [&] { Processo(ctx, "Trial", 1).fine(); });
  EXPECT_EQ(ctx.errore(), "handler in Outer");
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
