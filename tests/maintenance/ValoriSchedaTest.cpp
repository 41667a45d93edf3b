#include "maintenance/Stampless.h"
#include "maintenance/ValoriScheda.h"
#include "support/TestContext.h"

namespace {

using bukorval::ValoriScheda, maintenance_tests::stampless, testing::ElementsAre, testing::IsEmpty;
using testing_support::TestContext;

const std::string kStamp = " UPDATE BU65_TESBUDGET \r\n    SET BU65_DATAULTAGG = NOW\r\n  WHERE BU65_ID = 12";

TEST(AggiornaSingoloValore, InsertsAMissingDetailOrUpdatesItsColumnAndStampsTheCard) {
  const std::string columns[] = {"BU66_IMPORTO", "BU66_QTA1", "BU66_QTA2", ""};
  const Variant missing[] = {Variant::Null(), 0, Variant{}, "0"};
  for (int kind = 0; kind < 4; ++kind) {
    const auto& column = columns[kind];
    TestContext inserted;
    inserted.answerNothing();
    inserted.answer({""}, {{Decimal::FromScaled(345)}});
    Variant made;
    ValoriScheda(inserted.ctx)
        .AggiornaSingoloValoreBU66(missing[kind], Decimal::FromScaled(12), 3, kind, 11, "1234,5", made);
    EXPECT_THAT(stampless(*inserted.db),
                ElementsAre("INSERT INTO BU66_DETBUDGET \r\n      (BU66_ID_BU65, BU66_TIPO, BU66_PERIODO, \r\n" +
                                (column.empty() ? "" : column + ") ") +
                                "\r\n   VALUES\r\n      (12,\r\n       3,\r\n       11,\r\n       1234.5)\r\n",
                            "SELECT @@IDENTITY", kStamp));
    EXPECT_EQ(made, Variant(Decimal::FromScaled(345)));
    EXPECT_EQ(inserted.outcome(), "0 ");

    TestContext updated;
    Variant untouched = "untouched";
    ValoriScheda(updated.ctx).AggiornaSingoloValoreBU66(77, 12, 0, kind, 1, Variant::Null(), untouched);
    EXPECT_THAT(stampless(*updated.db),
                ElementsAre("UPDATE BU66_DETBUDGET SET " + (column.empty() ? "" : column + " = ") +
                                "NULL\r\n WHERE BU66_ID = 77",
                            kStamp));
    EXPECT_EQ(untouched, Variant("untouched"));
  }
}

/// A budget after a value was written into detail 5 of a card.
struct Written : TestContext {
  Written(const Variant& card, const Variant& value) {
    Variant made;
    ValoriScheda(ctx).AggiornaSingoloValoreBU66(5, card, 0, 0, 1, value, made);
  }
};

TEST(AggiornaSingoloValore, TakesANumberInAnyFormAndRefusesTheRest) {
  const std::pair<Variant, std::string> taken[] = {{std::int16_t{-3}, "-3"},
                                                   {2147483647, "2147483647"},
                                                   {0.1 + 0.2, "0.3"},
                                                   {-1234.5, "-1234.5"},
                                                   {Decimal::FromScaled(999999999999999, 2), "9999999999999.99"},
                                                   {"1234.56", "1234.56"},
                                                   {" -7 ", "-7"},
                                                   {Variant::Null(), "NULL"},
                                                   {Variant{}, "NULL"},
                                                   {"   ", "NULL"}};
  for (const auto& [value, text] : taken)
    EXPECT_EQ(Written(12, value).db->texts.at(0),
              "UPDATE BU66_DETBUDGET SET BU66_IMPORTO = " + text + "\r\n WHERE BU66_ID = 5");
  const std::pair<Variant, Variant> refused[] = {{12, "abc"},
                                                 {12, "1,2,3"},
                                                 {12, "1.234,56"},
                                                 {12, "12 EUR"},
                                                 {12, "1); DELETE FROM BU65_TESBUDGET --"},
                                                 {12, true},
                                                 {12, Date::FromYmd(2024, 1, 1)},
                                                 {Variant::Null(), 10},
                                                 {"12 OR 1=1", 10},
                                                 {1.5, 10}};
  for (const auto& [card, value] : refused) {
    const Written budget(card, value);
    EXPECT_THAT(budget.outcome(), testing::MatchesRegex("99 .* in AggiornaSingoloValoreBU66"));
    EXPECT_THAT(budget.db->texts, IsEmpty());
  }
}

TEST(AggiornaSingoloValore, StopsAtTheStatementThatFails) {
  for (const std::size_t k : {1u, 2u, 3u}) {
    TestContext budget;
    // After an insert that fails it looks whether somebody else has inserted the row.
    if (k == 1)
      budget.answer({"BU66_ID"}, {});
    else
      budget.answerNothing();
    budget.answer({""}, {{345}});
    budget.failAt(k);
    Variant made = "none";
    ValoriScheda(budget.ctx).AggiornaSingoloValoreBU66(0, 12, 0, 0, 1, 10, made);
    EXPECT_EQ(budget.outcome(), "99 boom in AggiornaSingoloValoreBU66");
    EXPECT_EQ(budget.db->texts.size(), k == 1 ? 2u : k);
    EXPECT_EQ(made, k < 3 ? Variant("none") : Variant(345));
  }
}

TEST(UpdateNullValori, ClearsOneKindOrAll) {
  const std::string all =
      " UPDATE BU66_DETBUDGET \r\n    SET BU66_IMPORTO = Null \r\n      , BU66_QTA1 = Null \r\n"
      "      , BU66_QTA2 = Null \r\n WHERE  BU66_ID_BU65 = 12\r\n";
  TestContext budget;
  ValoriScheda(budget.ctx).UpdateNullValoriBU66(12, 99);
  ValoriScheda(budget.ctx).UpdateNullValoriBU66("12", 0);
  EXPECT_THAT(budget.db->texts, ElementsAre(all, all + "   AND BU66_TIPO = 0"));
  budget.failAt(3);
  ValoriScheda(budget.ctx).UpdateNullValoriBU66(12, 99);
  EXPECT_EQ(budget.outcome(), "99 boom in UpdateNullValoriBU66 ");
}

TEST(GetBdgDettaglioEsiste, AnswersTheDetailAndWhetherItsAmountIsMissing) {
  const struct {
    std::vector<std::vector<Variant>> details;
    bool exists;
    Variant detail, amountIsNull;
  } rows[] = {{{}, false, 0, true},
              {{{345, Variant::Null()}}, true, 345, true},
              {{{345, Decimal::FromScaled(0, 2)}, {346, Variant::Null()}}, true, 345, false}};
  for (const auto& row : rows) {
    TestContext budget;
    budget.answer({"BU66_ID", "BU66_IMPORTO"}, row.details);
    Variant detail = 1, amountIsNull = 1;
    EXPECT_EQ(ValoriScheda(budget.ctx).GetBdgDettaglioEsiste(12, 4, 3, detail, amountIsNull), row.exists);
    EXPECT_EQ(detail, row.detail);
    EXPECT_EQ(amountIsNull, row.amountIsNull);
    EXPECT_THAT(budget.db->texts,
                ElementsAre(" SELECT BU66_ID, \r\n        BU66_IMPORTO  FROM   BU66_DETBUDGET WITH (NOLOCK) "
                            " WHERE  BU66_ID_BU65 = 12 AND    BU66_TIPO = 4 AND    BU66_PERIODO = 3"));
  }
  TestContext budget;
  budget.failAt(1);
  Variant detail = 5, amountIsNull;
  EXPECT_FALSE(ValoriScheda(budget.ctx).GetBdgDettaglioEsiste(12, 4, 3, detail, amountIsNull));
  EXPECT_EQ(detail, Variant(0));
  EXPECT_EQ(budget.outcome(), "99 boom in GetBdgDettaglioEsiste");
}

TEST(ValoriScheda, DoNothingWithoutAConnection) {
  TestContext budget;
  budget.ctx.connessione(nullptr);
  Variant a, b;
  ValoriScheda(budget.ctx).AggiornaSingoloValoreBU66(0, 12, 0, 0, 1, 10, a);
  EXPECT_THAT(budget.outcome(), "1 Non è stata definita la stringa di connessione");
  ValoriScheda(budget.ctx).UpdateNullValoriBU66(12, 99);
  EXPECT_EQ(budget.ctx.stato(), 1);
  EXPECT_FALSE(ValoriScheda(budget.ctx).GetBdgDettaglioEsiste(12, 4, 3, a, b));
  EXPECT_EQ(budget.ctx.stato(), 1);
}

}  // namespace
