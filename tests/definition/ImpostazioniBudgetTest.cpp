#include "definition/ImpostazioniBudget.h"
#include "definition/Strutture.h"
#include "frame/Trappola.h"
#include "support/Expected.h"
#include "support/TestContext.h"

namespace {

using namespace bukorval;
using testing::IsEmpty, testing_support::TestContext;

std::string yes(bool value) { return value ? "yes" : "no"; }

/// One question about a budget, its statement and its answers.
struct Question {
  const char* name;
  std::vector<std::string> fields;
  std::vector<Variant> row;
  std::string withRow, withoutRow, withoutConnection,
      withNull;  ///< a failure answers as a missing connection does
  std::function<std::string(const ImpostazioniBudget&)> ask;
  const char* text;
};

using IB = const ImpostazioniBudget&;
constexpr const char* kBlankNoNumber = "0|99 Type mismatch: \"\" is no number in ";

// Subtype "A" shows which statements pad it to its column.
// clang-format off
const Question kQuestions[] = {
    {"GetGestioneSede", {"BU01_FLGSEDI"}, {2}, "yes", "no", "no", "no|0 ",
     [](IB i) { bool flag = true; i.GetGestioneSede(4, "A", flag); return yes(flag); },
     "SELECT BU01_FLGSEDI  FROM BU01_ANABUDGET WITH (NOLOCK)  WHERE BU01_INDTIPO = 4 AND BU01_SOTTOTIPO = 'A'"},
    {"GetAnnoBudgetFiscaleSolare", {"BU01_INDPERFISO"}, {0}, "0", "1", "1", "0|0 ",
     [](IB i) { return std::to_string(i.GetAnnoBudgetFiscaleSolare(4, "A")); },
     " SELECT BU01_INDPERFISO  FROM   BU01_ANABUDGET WITH (NOLOCK)  WHERE  BU01_INDTIPO = 4"
     " AND    BU01_SOTTOTIPO = 'A'"},
    {"GetIsGestioneMastri", {"BU01_FLGMASTRO"}, {-1}, "yes", "no", "no", "no|0 ",
     [](IB i) { return yes(i.GetIsGestioneMastri(4, "A")); },
     " SELECT BU01_FLGMASTRO \r\n FROM   BU01_ANABUDGET WITH (NOLOCK)\r\n WHERE  BU01_INDTIPO = 4\r\n"
     " AND    BU01_SOTTOTIPO = 'A'\r\n"},
    {"GetGestioneQta", {"BU01_FLGGESQTA", "BU01_FLGGESQTA2"}, {0, 1}, "noyes", "nono", "nono", "nono|0 ",
     [](IB i) { bool q1 = true, q2 = true; i.GetGestioneQta(4, "A", q1, q2); return yes(q1) + yes(q2); },
     " SELECT BU01_FLGGESQTA, BU01_FLGGESQTA2 \r\n FROM   BU01_ANABUDGET WITH (NOLOCK)\r\n"
     " WHERE  BU01_INDTIPO = 4\r\n AND    BU01_SOTTOTIPO = 'A '\r\n"},
    {"GetPeriodicitaBudget", {"BU01_INDPERIODO"}, {5}, "5", "99", "0", kBlankNoNumber + std::string("GetPeriodicitaBudget"),
     [](IB i) { return std::to_string(i.GetPeriodicitaBudget(4, "A")); },
     " SELECT BU01_INDPERIODO  FROM  BU01_ANABUDGET WITH (NOLOCK)  WHERE BU01_INDTIPO = 4"
     " AND   BU01_SOTTOTIPO = 'A'"},
    {"GetNumeroForecast", {"BU01_NUMFORECAST"}, {3}, "3", "1", "1", "1|0 ",
     [](IB i) { return std::to_string(i.GetNumeroForecast(4, "A")); },
     " SELECT BU01_NUMFORECAST  FROM   BU01_ANABUDGET WITH (NOLOCK)  WHERE  BU01_INDTIPO = 4"
     " AND    BU01_SOTTOTIPO = 'A'"},
    {"GetTipoGestioneMultiAttivita", {"BU01_INDMULTIATTIVITA"}, {2}, "2", "0", "0",
     kBlankNoNumber + std::string("GetTipoGestioneMultiAttivita"),
     [](IB i) { return std::to_string(i.GetTipoGestioneMultiAttivita(4, "A")); },
     " SELECT BU01_INDMULTIATTIVITA  FROM   BU01_ANABUDGET WITH (NOLOCK)  WHERE  BU01_INDTIPO = 4"
     " AND    BU01_SOTTOTIPO = 'A'"},
    {"GetTipoPdC", {"BU01_INDTIPOPDC"}, {3}, "3", "0", "1", "1|99 Invalid use of Null in GetTipoPdC",
     [](IB i) { return std::to_string(i.GetTipoPdC(5, "A")); },
     "SELECT BU01_INDTIPOPDC FROM BU01_ANABUDGET WITH (NOLOCK) WHERE BU01_INDTIPO = 5"
     "  AND BU01_SOTTOTIPO = 'A '"},
    {"GetCodicePdC", {"CODICEPDC"}, {12}, "12", "0", "Empty", "Null|0 ",
     [](IB i) {
       const auto code = i.GetCodicePdC(4, "A");
       return code.isEmpty() ? "Empty" : code.isNull() ? "Null" : values::toText(code);
     },
     " SELECT \r\n   CASE WHEN BU01_INDTIPOPDC = 2 THEN BU01_CODICE_CG21 \r\n"
     "        WHEN BU01_INDTIPOPDC = 3 THEN BU01_CODICE_PC01 \r\n   END AS CODICEPDC \r\n"
     " FROM  BU01_ANABUDGET WITH (NOLOCK) \r\n WHERE BU01_INDTIPO = 4\r\n AND   BU01_SOTTOTIPO = 'A '\r\n"},
    {"GetIsBudgetConTestata", {"BU65_INDTIPO_BU01", "BU65_SOTTOTIPO_BU01"}, {4, "A "}, "yes", "no", "no", "yes|0 ",
     [](IB i) { return yes(i.GetIsBudgetConTestata(7, 4, "A")); },
     " SELECT TOP 1 BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01 \r\n FROM BU65_TESBUDGET WITH (NOLOCK) \r\n"
     " WHERE BU65_INDTIPO_BU01 = 4\r\n   AND BU65_SOTTOTIPO_BU01 = 'A'\r\n   AND BU65_DITTA_CG18 = 7\r\n"},
};
// clang-format on

TEST(ImpostazioniBudget, EveryQuestionHasItsStatementAndAnAnswerForEveryLack) {
  for (const auto& q : kQuestions) {
    SCOPED_TRACE(q.name);
    TestContext budget;
    const auto ask = [&] { return q.ask(ImpostazioniBudget(budget.ctx)); };
    budget.answer(q.fields, {q.row});
    EXPECT_EQ(ask(), q.withRow);
    EXPECT_THAT(budget.db->texts, testing::ElementsAre(q.text));
    budget.answer(q.fields, {});
    EXPECT_EQ(ask(), q.withoutRow);
    EXPECT_EQ(budget.outcome(), "0 ");
    budget.answer(q.fields, {std::vector<Variant>(q.fields.size(), Variant::Null())});
    const std::string answer = ask();
    EXPECT_EQ(answer + "|" + budget.outcome(), q.withNull);
    budget.failAlways();
    EXPECT_EQ(ask(), q.withoutConnection);
    EXPECT_EQ(budget.outcome(), std::string("99 boom in ") + q.name);
    budget.ctx.connessione(nullptr);
    EXPECT_EQ(ask(), q.withoutConnection);
    EXPECT_EQ(budget.outcome(), "1 Non è stata definita la stringa di connessione");
  }
}

TEST(ImpostazioniBudget, OneReadServesAnOperationUntilTheClientHasItsTurn) {
  TestContext budget;
  for (int read = 1; read <= 4; ++read)
    budget.answer({"BU01_INDPERIODO", "BU01_NUMFORECAST", "BU01_STRUTTURA"}, {{read, read + 4, "CON"}});
  std::string seen;
  const auto ask = [&] {
    const ImpostazioniBudget settings(budget.ctx);
    seen +=
        std::to_string(settings.GetPeriodicitaBudget(4, "01")) + std::to_string(settings.GetNumeroForecast(4, "01"));
    seen += Strutture(budget.ctx).GetStruttura(4, "01") + " ";
  };
  esegui(budget.ctx, "Outer", [&] {
    ask();
    {
      const Contesto::TurnoDelCliente turn(budget.ctx);
      esegui(budget.ctx, "Client", ask);
    }
    ask();
  });
  esegui(budget.ctx, "Next", ask);
  EXPECT_EQ(seen, "15CON 26CON 37CON 48CON ");
  EXPECT_EQ(budget.db->texts.size(), 4u);
}

TEST(ImpostazioniBudget, KnowsTheNatureOfEveryTypeAndTheChartOfAllButFive) {
  TestContext budget;
  const ImpostazioniBudget settings(budget.ctx);
  std::string natures;
  for (BdgTipo type = -1; type <= 10; ++type) natures += std::to_string(settings.GetNaturaBudget(type));
  EXPECT_EQ(natures, "011020011120");
  budget.answer({"BU01_INDTIPOPDC"}, {{3}});
  EXPECT_EQ(settings.GetTipoPdC(3, "A"), 1);
  EXPECT_THAT(budget.db->texts, IsEmpty());
}

TEST(ImpostazioniBudget, TakesTheLedgerChartFromThePropertyThenFromTheSession) {
  TestContext budget;
  budget.session->chart = "PDCSESS";
  budget.ctx.dati.tipoPdc = bdgPdcCoGe;
  const ImpostazioniBudget settings(budget.ctx);
  budget.prop.CodicePdcCoGeDitta = "MIO";
  EXPECT_EQ(settings.GetCodicePdC(4, "A"), Variant("MIO"));
  budget.prop.CodicePdcCoGeDitta = " ";
  EXPECT_EQ(settings.GetCodicePdC(4, "A"), Variant("PDCSESS"));
  EXPECT_EQ(budget.prop.CodicePdcCoGeDitta, Variant("PDCSESS"));
  EXPECT_THAT(budget.db->texts, IsEmpty());
  budget.prop.CodicePdcCoGeDitta = Variant();
  budget.prop.ActiveInterface = nullptr;
  EXPECT_TRUE(settings.GetCodicePdC(4, "A").isEmpty());
  EXPECT_THAT(budget.outcome(), testing::EndsWith(" in GetCodicePdC"));
}

TEST(ImpostazioniBudget, CallsABudgetHeadersOnlyWhenItHasCardsAndNoDetail) {
  const struct {
    std::size_t cards, details;
    bool expected;
    std::size_t statements;
  } rows[] = {{0, 0, false, 1}, {1, 0, true, 2}, {1, 3, false, 2}};
  for (const auto& row : rows) {
    TestContext budget;
    budget.answer({"A"}, std::vector<std::vector<Variant>>(row.cards, {1}));
    budget.answer({"A"}, std::vector<std::vector<Variant>>(row.details, {1}));
    EXPECT_EQ(ImpostazioniBudget(budget.ctx).GetIsBudgetConSolaTestata(7, 4, "A"), row.expected);
    ASSERT_EQ(budget.db->texts.size(), row.statements);
    if (row.statements < 2) continue;
    EXPECT_EQ(budget.db->texts[1],
              " SELECT BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01 \r\n FROM   BU65_TESBUDGET WITH (NOLOCK) \r\n"
              " INNER  JOIN BU66_DETBUDGET WITH (NOLOCK) ON BU65_ID = BU66_ID_BU65 \r\n"
              " WHERE  BU65_INDTIPO_BU01 = 4\r\n   AND  BU65_SOTTOTIPO_BU01 = 'A'\r\n"
              "   AND  BU65_DITTA_CG18 = 7\r\n   AND  NOT BU66_ID_BU65 IS NULL \r\n");
  }
  const char* failures[] = {"99 boom in GetIsBudgetConTestata", "99 boom in GetIsBudgetConSolaTestata"};
  for (const std::size_t k : {1u, 2u}) {
    TestContext budget;
    budget.answer({"A"}, {{1}});
    budget.failAt(k);
    EXPECT_FALSE(ImpostazioniBudget(budget.ctx).GetIsBudgetConSolaTestata(7, 4, "A"));
    EXPECT_EQ(budget.outcome(), failures[k - 1]);
  }
}

TEST(ImpostazioniBudget, LooksForDataWhereThePropertyTipoBudgetKeepsThem) {
  const auto text = [](const std::string& name) {
    return testing_support::expected("definition/expected/" + name + ".sql");
  };
  const auto investments = text("investimenti"), generalExpenses = text("spese_generali"), cards = text("schede");
  for (BdgTipo kept = 0; kept <= 9; ++kept) {
    SCOPED_TRACE(kept);
    TestContext budget(kept);
    const ImpostazioniBudget settings(budget.ctx);
    budget.answer({"A"}, {{1}});
    budget.answer({"A"}, {});
    EXPECT_TRUE(settings.GetIsBudgetValorizzatoDitta(7, 6, "A"));
    EXPECT_EQ(budget.db->texts[0],
              kept == 2 ? investments + " AND   BU04_DITTA_CG18 = 7\r\n" : text("schede_di_ditta"));
    EXPECT_FALSE(settings.GetIsBudgetValorizzato(6, "A"));
    EXPECT_EQ(budget.db->texts[1], kept == 2 ? investments : kept == 4 ? generalExpenses : cards);
  }
  TestContext unknown(10);
  unknown.db->onExecute = [](std::string_view text) {
    if (text.empty()) throw values::Errore("empty statement");
  };
  EXPECT_FALSE(ImpostazioniBudget(unknown.ctx).GetIsBudgetValorizzatoDitta(7, 6, "A"));
  EXPECT_EQ(unknown.outcome(), "99 empty statement in GetIsBudgetValorizzatoDitta ");
  EXPECT_FALSE(ImpostazioniBudget(unknown.ctx).GetIsBudgetValorizzato(6, "A"));
  EXPECT_EQ(unknown.outcome(), "99 empty statement in GetIsBudgetValorizzato");
}

TEST(ImpostazioniBudget, AsksNothingAboutABudgetWithoutItsKeys) {
  TestContext budget;
  const ImpostazioniBudget settings(budget.ctx);
  EXPECT_FALSE(settings.GetIsBudgetValorizzatoDitta(Variant::Null(), 6, "A"));
  EXPECT_FALSE(settings.GetIsBudgetValorizzatoDitta(7, 6, "  "));
  EXPECT_FALSE(settings.GetIsBudgetValorizzato(6, Variant()));
  EXPECT_FALSE(settings.GetIsStrutturaConVariante(6, Variant::Null()));
  EXPECT_FALSE(settings.GetIsElementoInStruttura(6, "A", " "));
  EXPECT_THAT(budget.db->texts, IsEmpty());
  EXPECT_EQ(budget.outcome(), "0 ");
}

TEST(ImpostazioniBudget, FindsElementsOnSlotBoundariesOnly) {
  const struct {
    Variant structure;
    const char* element;
    bool expected;
  } rows[] = {{"AAABBBVAR", "VAR", true},     {"AAVARB", "VAR", false}, {"VARAAA", "VAR", true},
              {"AAABB", "BB", true},          {"AAABBB", "aaa", false}, {"   ", "VAR", false},
              {Variant::Null(), "VAR", false}};
  for (const auto& row : rows) {
    TestContext budget;
    budget.answer({"BU01_STRUTTURA"}, {{row.structure}});
    budget.answer({"BU01_STRUTTURA"}, {{row.structure}});
    const ImpostazioniBudget settings(budget.ctx);
    EXPECT_EQ(settings.GetIsElementoInStruttura(0, "A1", row.element), row.expected) << row.element;
    EXPECT_EQ(settings.GetIsStrutturaConVariante(0, "A1"), row.expected && std::string(row.element) == "VAR");
    EXPECT_EQ(budget.outcome(), "0 ");
  }
  TestContext budget;
  const ImpostazioniBudget settings(budget.ctx);
  const std::pair<Variant, int> counts[] = {{"AAABBBVAR", 3}, {"AAA   BBB", 2},     {"AAAB", 2},
                                            {"", 0},          {Variant::Null(), 0}, {Variant(), 0}};
  for (const auto& [structure, count] : counts) EXPECT_EQ(settings.GetBdgNrElementiInStruttura(structure), count);
  EXPECT_EQ(settings.GetBdgNrElementiInStruttura(std::string(3 * 40000, 'A')), 0);
  EXPECT_EQ(budget.outcome(), "99 Overflow in GetBdgNrElementiInStruttura");
}

}  // namespace
