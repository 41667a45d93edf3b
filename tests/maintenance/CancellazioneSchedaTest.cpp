#include "maintenance/CancellazioneScheda.h"
#include "support/TestContext.h"

namespace {

using bukorval::CancellazioneScheda, testing::ElementsAreArray, testing_support::TestContext;

const std::string kDetails = " DELETE FROM BU66_DETBUDGET \r\n WHERE BU66_ID_BU65 = 12\r\n";
const std::string kLeft =
    " SELECT TOP 1 BU65_ID \r\n FROM BU65_TESBUDGET WITH (NOLOCK) \r\n"
    " INNER JOIN BU66_DETBUDGET WITH (NOLOCK) ON BU66_ID_BU65 = BU65_ID \r\n WHERE BU65_ID = 12\r\n";

/// The statements that a type deletes a card with, in order: what depends on it first, and only what the type has.
std::vector<std::string> statements(bukorval::BdgTipo type) {
  std::vector<std::string> texts;
  if (type == 4)
    texts = {" DELETE FROM BU67_BDGCASHFLOW WHERE BU67_ID_BU65 = 12",
             " DELETE FROM BU14_SCADCFLOW   WHERE BU14_IDBUDGET = 12",
             " DELETE FROM BU90_TABPERCBUD  WHERE BU90_IDBUDGET = 12"};
  if (type == 5) texts = {" DELETE FROM BU63_DETMASTRI \r\n WHERE BU63_ID_BU65 = 12"};
  texts.insert(texts.end(), {kDetails, kLeft, "DELETE FROM BU65_TESBUDGET WHERE BU65_ID = 12"});
  return texts;
}

/// Deletes card 12; the statement `broken` fails, 0 for none.
struct Deletion : TestContext {
  explicit Deletion(int type, std::size_t broken = 0, std::vector<std::vector<Variant>> left = {}) : TestContext(type) {
    for (std::size_t i = 2; i < statements(type).size(); ++i) answerNothing();
    answer({"BU65_ID"}, left);
    if (broken > 0) failAt(broken);
    Variant id = 12;
    CancellazioneScheda(ctx).CancellaRigaBU65(id);
  }
};

TEST(CancellaRiga, DeletesInOrderAndStopsAtTheStatementThatFails) {
  for (const int type : {0, 1, 4, 5}) {
    const auto expected = statements(type);
    const Deletion whole(type);
    EXPECT_THAT(whole.db->texts, ElementsAreArray(expected));
    EXPECT_EQ(whole.outcome(), "0 ");
    for (std::size_t k = 1; k <= expected.size(); ++k) {
      const Deletion cut(type, k);
      EXPECT_THAT(cut.db->texts, ElementsAreArray(expected.data(), k));
      EXPECT_EQ(cut.outcome(),
                type == 5 && k == 1 ? "99 boom in DeleteBU63_DettaglioMastri" : "99 boom in CancellaRigaBU65 ");
    }
  }
  const Deletion kept(1, 0, {{12}});
  EXPECT_THAT(kept.db->texts, ElementsAreArray({kDetails, kLeft})) << "the header stays while details are left";
}

TEST(CancellaRiga, DeletesNothingWithoutACard) {
  const std::pair<Variant, int> rows[] = {
      {Variant::Null(), 0}, {Variant{}, 0},    {"  ", 0},     {0, 0}, {"0", 0}, {0.0, 0},
      {12.5, 99},           {"12 OR 1=1", 99}, {"dodici", 99}};
  for (auto [id, outcome] : rows) {
    TestContext budget(4);
    CancellazioneScheda(budget.ctx).CancellaRigaBU65(id);
    EXPECT_THAT(budget.db->texts, testing::IsEmpty());
    EXPECT_EQ(budget.ctx.stato(), outcome);
    EXPECT_EQ(budget.ctx.errore().ends_with(" in CancellaRigaBU65 "), outcome == 99);
  }
}

TEST(EliminaBudgetConSolaTestata, DeletesTheHeadersOfOneCompanyAndBudget) {
  TestContext budget;
  CancellazioneScheda(budget.ctx).EliminaBudgetConSolaTestata(7, 3, "B2");
  EXPECT_THAT(budget.db->texts,
              ElementsAreArray({" DELETE FROM BU65_TESBUDGET \r\n WHERE BU65_INDTIPO_BU01 = 3\r\n"
                                "   AND BU65_SOTTOTIPO_BU01 = 'B2'\r\n   AND BU65_DITTA_CG18 = 7\r\n"}));
  budget.failAt(2);
  CancellazioneScheda(budget.ctx).EliminaBudgetConSolaTestata(7, 3, "B2");
  EXPECT_EQ(budget.outcome(), "99 boom in EliminaBudgetConSolaTestata");
  CancellazioneScheda(budget.ctx).EliminaBudgetConSolaTestata("7 OR 1=1", 3, "B2");
  EXPECT_EQ(budget.ctx.stato(), 99);
  EXPECT_EQ(budget.db->texts.size(), 2u);
}

}  // namespace
