// The proposed rows, edited by a client, written into cards.

#include "elaeco/Company.h"
#include "elaeco/ScriviBudget.h"

namespace {

using namespace elaeco_tests;
using testing::ElementsAre, testing::IsEmpty;

/// A half-yearly budget with 10 a month proposed for goods and 1 for services.
struct Proposal : Company {
  Proposal() {
    periodicity(4);
    everyMonth({debit("50010001", "10"), debit("50010002", "1")});
  }
  /// Edits the rows that a filter shows, and leaves the filter on the set.
  void edit(const std::string& filter, const char* field, const Variant& value) {
    auto& rows = *prop.RstSaldiElaEco;
    rows.Filter(filter);
    for (; !rows.Eof(); rows.MoveNext()) {
      rows[field].Value(value);
      rows.Update();
    }
  }
  void proposeAndWrite() {
    ASSERT_TRUE(propose()) << outcome();
    write();
  }
  std::vector<std::string> missing() const {
    return texts(*prop.RstContiNonPresentiInStruttura, {"CONTO", "DESCRIZIONE"});
  }
};

TEST(ScriviBudget, MissingCardsAreMadeWithAllTheirDetails) {
  Proposal budget;
  budget.proposeAndWrite();
  EXPECT_EQ(budget.outcome(), "0 ");
  EXPECT_THAT(budget.written(),
              ElementsAre("50010001 0 1 60.00", "50010001 0 2 60.00", "50010002 0 1 6.00", "50010002 0 2 6.00"));
  // Budget and actuals for two periods, the account with its chart.
  EXPECT_THAT(budget.list("SELECT BU65_GRUPPO_CG10, COUNT(*) FROM BU65_TESBUDGET INNER JOIN BU66_DETBUDGET"
                          " ON BU66_ID_BU65 = BU65_ID GROUP BY BU65_ID, BU65_GRUPPO_CG10"),
              ElementsAre("1 4", "1 4"));
  EXPECT_THAT(budget.missing(), IsEmpty());
}

TEST(ScriviBudget, RowsAreWrittenAsTheClientLeavesThem) {
  Proposal budget;
  budget.card("50010001", 0, 1, "5");
  budget.card("50010001", 0, 2, "7");  // a second card of the account: the older one is the account's
  ASSERT_TRUE(budget.propose());
  budget.edit("CONTO = '50010002' AND PERIODO = 1", "IMPORTO", "1234,567");
  budget.edit("CONTO = '50010002' AND PERIODO = 2", "IMPORTO", Variant::Null());
  budget.events.clear();
  budget.write();
  EXPECT_EQ(budget.outcome(), "0 ");
  EXPECT_THAT(budget.written(), ElementsAre("50010001 0 1 5.00", "50010001 0 2 7.00", "50010002 0 1 1234.57"));
  EXPECT_EQ(budget.prop.RstSaldiElaEco->RecordCount(), 1) << "the client's filter is left as it was";
  EXPECT_THAT(budget.events, ElementsAre("Scrittura del budget dai saldi 4", "1", "2", "3", "4", "end"));

  budget.edit("BUDGETPRESENTE = 1", "SOVRASCRIVI", 1);
  budget.edit("PERIODO = 2", "SOVRASCRIVI", 0);
  budget.write();
  EXPECT_THAT(budget.written(), ElementsAre("50010001 0 1 60.00", "50010001 0 2 7.00", "50010002 0 1 1234.57"));
}

TEST(ScriviBudget, WritingTwiceChangesNothing) {
  const struct {
    const char *subtype, *column;
    std::vector<std::string> written;
  } budgets[] = {
      {"01", "BU65_CONTO_CG24", {"50010001 1 1 60.00", "50010001 1 2 60.00", "O'1 1 1 6.00", "O'1 1 2 6.00"}},
      {"02", "BU65_CODICE_CG23", {"B06 1 1 60.00", "B06 1 2 60.00"}},
      {"03", "BU65_CONTO_PC03", {"MARGINE 1 1 120.00"}}};
  for (const auto& [subtype, column, before] : budgets) {
    SCOPED_TRACE(subtype);
    Proposal budget;
    // A card is found again whatever the account's signs.
    budget.everyMonth({debit("50010001", "10"), debit("O'1", "1")});
    budget.prop.SottoTipoBudget = subtype;
    budget.prop.TipoDettaglioDestinazione = 1;
    budget.proposeAndWrite();
    EXPECT_EQ(budget.written(column), before);
    budget.write();
    EXPECT_EQ(budget.written(column), before);
    const auto cards = budget.list("SELECT COUNT(*) FROM BU65_TESBUDGET");
    // Proposed again, every row is present and kept.
    budget.proposeAndWrite();
    EXPECT_THAT(budget.proposals(), testing::Each(testing::EndsWith(" 1 0")));
    EXPECT_EQ(budget.written(column), before);
    EXPECT_EQ(budget.list("SELECT COUNT(*) FROM BU65_TESBUDGET"), cards);
  }
}

TEST(ScriviBudget, TheSiteIsPartOfTheSelection) {
  for (const bool perSite : {true, false}) {
    Proposal budget;
    budget.card("50010001", 0, 1, "1", "1");
    if (perSite) budget.database->Execute("UPDATE BU01_ANABUDGET SET BU01_FLGSEDI = 1");
    budget.prop.CodiceSede = 2;
    for (int times = 0; times < 2; ++times) {
      budget.proposeAndWrite();
      EXPECT_EQ(budget.outcome(), "0 ");
      EXPECT_THAT(
          budget.list("SELECT BU65_CODICE_CG31, BU65_CONTO_CG24, COUNT(BU66_IMPORTO) FROM BU65_TESBUDGET INNER JOIN"
                      " BU66_DETBUDGET ON BU66_ID_BU65 = BU65_ID GROUP BY BU65_ID, BU65_CODICE_CG31, BU65_CONTO_CG24"
                      " ORDER BY BU65_ID"),
          ElementsAre("1 50010001 1", "2 50010001 2", "2 50010002 2"));
    }
    budget.prop.CodiceSede = {};
    ASSERT_TRUE(budget.propose());
    budget.edit("", "IMPORTO", 77);
    budget.write();
    EXPECT_EQ(budget.outcome(), perSite ? "1 CodiceSede  : Dato non definito nel BO " : "0 ");
  }
}

TEST(ScriviBudget, AccountsWithoutACardThatTheStructureDoesNotAllowAreListed) {
  const std::string goods = "50010001 Merci", services = "50010002 Servizi";
  const struct {
    const char *definition, *structure;  ///< a change of the budget's definition, the structure selected
    bool hasCard, onlyWithCard;
    std::vector<std::string> missing;
    std::size_t written;
  } cases[] = {{"BU01_CODICE_BU60 = 'S1'", "  ", false, false, {services}, 2},
               {"", "S1  ", false, false, {services}, 2},
               {"", "S2", false, false, {goods, services}, 0},
               {"BU01_INDTIPO = 3, BU01_STRUTTURA = 'MAR'", "", false, false, {goods, services}, 0},
               {"", "S2", true, false, {goods}, 3},
               {"", "", true, true, {}, 3}};
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.definition) + " " + c.structure);
    Proposal budget;
    budget.database->Execute(
        "INSERT INTO BU61_STRUTTELEM (BU61_CODICE_BU60, BU61_ELEMENTO, BU61_CAMPO, BU61_VALORE) VALUES"
        " ('S1', 1, 'BU65_CONTO_CG24', '50010001'), ('S1', 2, 'BU65_CODICE_CG23', '50010002')");
    const std::string definition = c.definition;
    if (!definition.empty())
      budget.database->Execute("UPDATE BU01_ANABUDGET SET " + definition + " WHERE BU01_SOTTOTIPO = '01'");
    if (definition.starts_with("BU01_INDTIPO = 3")) budget.prop.TipoBudget = 3;
    budget.prop.CodiceStrutturaBU60 = c.structure;
    if (c.hasCard) budget.card("50010002", 1, 1, "1");
    budget.prop.ElaboraSoloContiBudgettizzati = c.onlyWithCard;
    budget.proposeAndWrite();
    EXPECT_EQ(budget.outcome(), "0 ");
    EXPECT_EQ(budget.missing(), c.missing);
    EXPECT_EQ(budget.written().size(), c.written);
  }
  Proposal quoted;
  quoted.everyMonth({debit("O'1", "1")});
  quoted.prop.CodiceStrutturaBU60 = "S2";
  quoted.proposeAndWrite();
  EXPECT_EQ(quoted.outcome(), "0 ");
}

TEST(ScriviBudget, WhatCannotBeWrittenLeavesNothing) {
  const auto period = [](int number) { return [=](Proposal& b) { b.edit("CONTO = '50010002'", "PERIODO", number); }; };
  const auto kind = [](int number) { return [=](Proposal& b) { b.prop.TipoDettaglioDestinazione = number; }; };
  const auto set = [](ado::RecordsetPtr rows) { return [=](Proposal& b) { b.prop.RstSaldiElaEco = rows; }; };
  const std::string where = " in BdgElaEco_ScriviBudget_DaRstSaldiElaEco";
  const std::pair<std::function<void(Proposal&)>, std::string> cases[] = {
      {period(3), "99 Period 3 is outside the budget's 1 to 2" + where},
      {period(0), "99 Period 0 is outside the budget's 1 to 2" + where},
      {kind(3), "99 Detail kind 3 is outside the budget's 0 to 2" + where},
      {kind(-1), "99 Detail kind -1 is outside the budget's 0 to 2" + where},
      {set(nullptr), "1 RstSaldiElaEco  : Dato non definito nel BO "},
      {set(testing_support::rows({"CODICE"}, {{"x"}})), "99 Item cannot be found in the collection: CONTO" + where},
      {[](Proposal& b) { b.prop.RstSaldiElaEco->Close(); }, "99 "},
      {set(testing_support::rows({"CONTO", "DESCRIZIONE", "PERIODO", "IMPORTO", "SOVRASCRIVI"},
                                 {{"50010001", "", 1, 1, 1}, {"50010001", "", 2, "molto", 1}})),
       "99 "}};
  for (const auto& [damage, outcome] : cases) {
    Proposal budget;
    ASSERT_TRUE(budget.propose());
    damage(budget);
    budget.write();
    EXPECT_THAT(budget.outcome(), testing::StartsWith(outcome));
    EXPECT_THAT(budget.list("SELECT BU65_ID FROM BU65_TESBUDGET"), IsEmpty()) << outcome;
  }
}

}  // namespace
