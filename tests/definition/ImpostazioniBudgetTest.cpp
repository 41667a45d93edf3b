#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "definition/Banco.h"
#include "definition/ImpostazioniBudget.h"

namespace bukorval {
namespace {

using definition_tests::Banco;
using testing::ElementsAre;
using testing::IsEmpty;
using values::Variant;

std::string si(bool valore) { return valore ? "si" : "no"; }

/// One question about a budget, its statement and its answers.
struct Domanda {
  const char* nome;
  std::vector<std::string> campi;
  std::vector<Variant> riga;
  std::string conRiga, senzaRiga, senzaConnessione,
      conNull;  ///< a failure answers as a missing connection does
  std::function<std::string(const ImpostazioniBudget&)> chiedi;
  const char* testo;
};

void PrintTo(const Domanda& d, std::ostream* os) { *os << d.nome; }

struct DomandeDefinizione : testing::TestWithParam<Domanda> {
  Banco banco;
  const Domanda& d = GetParam();
  std::string chiedi() { return d.chiedi(ImpostazioniBudget(banco.ctx)); }
};

TEST_P(DomandeDefinizione, SendsItsStatementAndReadsTheFirstRow) {
  banco.rispondi(d.campi, {d.riga});
  EXPECT_EQ(chiedi(), d.conRiga);
  EXPECT_THAT(banco.db->texts, ElementsAre(d.testo));
  EXPECT_EQ(banco.esito(), "0 ");
}

TEST_P(DomandeDefinizione, HasAnAnswerForEveryLack) {
  banco.rispondi(d.campi, {});
  EXPECT_EQ(chiedi(), d.senzaRiga);
  EXPECT_EQ(banco.esito(), "0 ");

  banco.rispondi(d.campi, {std::vector<Variant>(d.campi.size(), Variant::Null())});
  const std::string risposta = chiedi();
  EXPECT_EQ(risposta + "|" + banco.esito(), d.conNull);

  banco.guasta();
  EXPECT_EQ(chiedi(), d.senzaConnessione);
  EXPECT_EQ(banco.esito(), std::string("99 boom in ") + d.nome);

  banco.ctx.connessione(nullptr);
  EXPECT_EQ(chiedi(), d.senzaConnessione);
  EXPECT_EQ(banco.esito(), "1 Non è stata definita la stringa di connessione");
}

using IB = const ImpostazioniBudget&;
constexpr const char* kVuotoNonNumero = "0|99 Type mismatch: \"\" is no number in ";

// Subtype "A" shows which statements pad it to its column.
// clang-format off
const Domanda kDomande[] = {
    {"GetGestioneSede", {"BU01_FLGSEDI"}, {2}, "si", "no", "no", "no|0 ",
     [](IB i) { bool flag = true; i.GetGestioneSede(4, "A", flag); return si(flag); },
     "SELECT BU01_FLGSEDI  FROM BU01_ANABUDGET WITH (NOLOCK)  WHERE BU01_INDTIPO = 4 AND BU01_SOTTOTIPO = 'A'"},
    {"GetAnnoBudgetFiscaleSolare", {"BU01_INDPERFISO"}, {0}, "0", "1", "1", "0|0 ",
     [](IB i) { return std::to_string(i.GetAnnoBudgetFiscaleSolare(4, "A")); },
     " SELECT BU01_INDPERFISO  FROM   BU01_ANABUDGET WITH (NOLOCK)  WHERE  BU01_INDTIPO = 4"
     " AND    BU01_SOTTOTIPO = 'A'"},
    {"GetIsGestioneMastri", {"BU01_FLGMASTRO"}, {-1}, "si", "no", "no", "no|0 ",
     [](IB i) { return si(i.GetIsGestioneMastri(4, "A")); },
     " SELECT BU01_FLGMASTRO \r\n FROM   BU01_ANABUDGET WITH (NOLOCK)\r\n WHERE  BU01_INDTIPO = 4\r\n"
     " AND    BU01_SOTTOTIPO = 'A'\r\n"},
    {"GetGestioneQta", {"BU01_FLGGESQTA", "BU01_FLGGESQTA2"}, {0, 1}, "nosi", "nono", "nono", "nono|0 ",
     [](IB i) { bool q1 = true, q2 = true; i.GetGestioneQta(4, "A", q1, q2); return si(q1) + si(q2); },
     " SELECT BU01_FLGGESQTA, BU01_FLGGESQTA2 \r\n FROM   BU01_ANABUDGET WITH (NOLOCK)\r\n"
     " WHERE  BU01_INDTIPO = 4\r\n AND    BU01_SOTTOTIPO = 'A '\r\n"},
    {"GetPeriodicitaBudget", {"BU01_INDPERIODO"}, {5}, "5", "99", "0", kVuotoNonNumero + std::string("GetPeriodicitaBudget"),
     [](IB i) { return std::to_string(i.GetPeriodicitaBudget(4, "A")); },
     " SELECT BU01_INDPERIODO  FROM  BU01_ANABUDGET WITH (NOLOCK)  WHERE BU01_INDTIPO = 4"
     " AND   BU01_SOTTOTIPO = 'A'"},
    {"GetNumeroForecast", {"BU01_NUMFORECAST"}, {3}, "3", "1", "1", "1|0 ",
     [](IB i) { return std::to_string(i.GetNumeroForecast(4, "A")); },
     " SELECT BU01_NUMFORECAST  FROM   BU01_ANABUDGET WITH (NOLOCK)  WHERE  BU01_INDTIPO = 4"
     " AND    BU01_SOTTOTIPO = 'A'"},
    {"GetTipoGestioneMultiAttivita", {"BU01_INDMULTIATTIVITA"}, {2}, "2", "0", "0",
     kVuotoNonNumero + std::string("GetTipoGestioneMultiAttivita"),
     [](IB i) { return std::to_string(i.GetTipoGestioneMultiAttivita(4, "A")); },
     " SELECT BU01_INDMULTIATTIVITA  FROM   BU01_ANABUDGET WITH (NOLOCK)  WHERE  BU01_INDTIPO = 4"
     " AND    BU01_SOTTOTIPO = 'A'"},
    {"GetTipoPdC", {"BU01_INDTIPOPDC"}, {3}, "3", "0", "1", "1|99 Invalid use of Null in GetTipoPdC",
     [](IB i) { return std::to_string(i.GetTipoPdC(5, "A")); },
     "SELECT BU01_INDTIPOPDC FROM BU01_ANABUDGET WITH (NOLOCK) WHERE BU01_INDTIPO = 5"
     "  AND BU01_SOTTOTIPO = 'A '"},
    {"GetCodicePdC", {"CODICEPDC"}, {12}, "12", "0", "Empty", "Null|0 ",
     [](IB i) {
       const auto codice = i.GetCodicePdC(4, "A");
       return codice.isEmpty() ? "Empty" : codice.isNull() ? "Null" : values::toText(codice);
     },
     " SELECT \r\n   CASE WHEN BU01_INDTIPOPDC = 2 THEN BU01_CODICE_CG21 \r\n"
     "        WHEN BU01_INDTIPOPDC = 3 THEN BU01_CODICE_PC01 \r\n   END AS CODICEPDC \r\n"
     " FROM  BU01_ANABUDGET WITH (NOLOCK) \r\n WHERE BU01_INDTIPO = 4\r\n AND   BU01_SOTTOTIPO = 'A '\r\n"},
    {"GetIsBudgetConTestata", {"BU65_INDTIPO_BU01", "BU65_SOTTOTIPO_BU01"}, {4, "A "}, "si", "no", "no", "si|0 ",
     [](IB i) { return si(i.GetIsBudgetConTestata(7, 4, "A")); },
     " SELECT TOP 1 BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01 \r\n FROM BU65_TESBUDGET WITH (NOLOCK) \r\n"
     " WHERE BU65_INDTIPO_BU01 = 4\r\n   AND BU65_SOTTOTIPO_BU01 = 'A'\r\n   AND BU65_DITTA_CG18 = 7\r\n"},
};
// clang-format on
INSTANTIATE_TEST_SUITE_P(Definizione, DomandeDefinizione, testing::ValuesIn(kDomande),
                         [](const auto& caso) { return std::string(caso.param.nome); });

TEST(ImpostazioniBudget, KeepsTheGeneralLedgerForEveryTypeButFive) {
  Banco banco;
  banco.rispondi({"BU01_INDTIPOPDC"}, {{3}});
  EXPECT_EQ(ImpostazioniBudget(banco.ctx).GetTipoPdC(3, "A"), 1);
  EXPECT_THAT(banco.db->texts, IsEmpty());
}

TEST(ImpostazioniBudget, TakesTheLedgerChartFromThePropertyThenFromTheSession) {
  Banco banco;
  banco.ctx.dati.tipoPdc = bdgPdcCoGe;
  const ImpostazioniBudget impostazioni(banco.ctx);
  banco.prop.CodicePdcCoGeDitta = "MIO";
  EXPECT_EQ(impostazioni.GetCodicePdC(4, "A"), Variant("MIO"));
  banco.prop.CodicePdcCoGeDitta = " ";
  EXPECT_EQ(impostazioni.GetCodicePdC(4, "A"), Variant("PDCSESS"));
  EXPECT_EQ(banco.prop.CodicePdcCoGeDitta, Variant("PDCSESS"));
  EXPECT_THAT(banco.db->texts, IsEmpty());

  banco.prop.CodicePdcCoGeDitta = Variant();
  banco.prop.ActiveInterface = nullptr;
  EXPECT_TRUE(impostazioni.GetCodicePdC(4, "A").isEmpty());
  EXPECT_THAT(banco.esito(), testing::EndsWith(" in GetCodicePdC"));
}

TEST(ImpostazioniBudget, KnowsTheNatureOfEveryType) {
  Banco banco;
  std::string nature;
  for (BdgTipo tipo = -1; tipo <= 10; ++tipo)
    nature += std::to_string(ImpostazioniBudget(banco.ctx).GetNaturaBudget(tipo));
  EXPECT_EQ(nature, "011020011120");
}

TEST(ImpostazioniBudget, CallsABudgetHeadersOnlyWhenItHasCardsAndNoDetail) {
  struct Caso {
    std::size_t testate, dettagli;
    bool atteso;
    std::size_t statements;
  };
  for (const auto& caso : {Caso{0, 0, false, 1}, Caso{1, 0, true, 2}, Caso{1, 3, false, 2}}) {
    Banco banco;
    banco.rispondi({"A"}, std::vector<std::vector<Variant>>(caso.testate, {1}));
    banco.rispondi({"A"}, std::vector<std::vector<Variant>>(caso.dettagli, {1}));
    EXPECT_EQ(ImpostazioniBudget(banco.ctx).GetIsBudgetConSolaTestata(7, 4, "A"), caso.atteso);
    ASSERT_EQ(banco.db->texts.size(), caso.statements);
    if (caso.statements == 2) {
      EXPECT_EQ(banco.db->texts[1],
                " SELECT BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01 \r\n FROM   BU65_TESBUDGET WITH (NOLOCK) \r\n"
                " INNER  JOIN BU66_DETBUDGET WITH (NOLOCK) ON BU65_ID = BU66_ID_BU65 \r\n"
                " WHERE  BU65_INDTIPO_BU01 = 4\r\n   AND  BU65_SOTTOTIPO_BU01 = 'A'\r\n   AND  "
                "BU65_DITTA_CG18 = 7\r\n"
                "   AND  NOT BU66_ID_BU65 IS NULL \r\n");
    }
  }
}

TEST(ImpostazioniBudget, NamesTheQuestionThatFailedInside) {
  Banco banco;
  banco.guasta();
  EXPECT_FALSE(ImpostazioniBudget(banco.ctx).GetIsBudgetConSolaTestata(7, 4, "A"));
  EXPECT_EQ(banco.esito(), "99 boom in GetIsBudgetConTestata");
  int chiamate = 0;
  banco.db->onExecute = [&](std::string_view) {
    if (++chiamate == 2) throw values::Errore("boom");
  };
  banco.rispondi({"A"}, {{1}});
  EXPECT_FALSE(ImpostazioniBudget(banco.ctx).GetIsBudgetConSolaTestata(7, 4, "A"));
  EXPECT_EQ(banco.esito(), "99 boom in GetIsBudgetConSolaTestata");
}

constexpr const char* kInvestimenti =
    " SELECT TOP 1 BU04_IDBUDGINV \r\n FROM  BU04_BUDGINVEST WITH(NOLOCK) \r\n WHERE BU04_INDTIPO_BU01 = "
    "6\r\n"
    " AND   BU04_SOTTOTIPO_BU01 = 'A'\r\n";
constexpr const char* kSpeseGenerali =
    " SELECT TOP 1 BU08_IDTESBUDCG \r\n FROM  BU08_TESBUDCOSGEN WITH(NOLOCK) \r\n WHERE BU08_INDTIPO_BU01 = "
    "6\r\n"
    " AND   BU08_SOTTOTIPO_BU01 = 'A'\r\n";
constexpr const char* kTestata =
    " SELECT BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01 \r\n FROM BU65_TESBUDGET WITH (NOLOCK) \r\n"
    " WHERE BU65_INDTIPO_BU01 = 6\r\n   AND BU65_SOTTOTIPO_BU01 = 'A'\r\n";
constexpr const char* kTestataDitta =
    " SELECT BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01 \r\n FROM  BU65_TESBUDGET WITH (NOLOCK) \r\n"
    " WHERE BU65_INDTIPO_BU01 = 6\r\n AND   BU65_SOTTOTIPO_BU01 = 'A'\r\n AND   BU65_DITTA_CG18 = 7\r\n";

TEST(ImpostazioniBudget, LooksForDataWhereThePropertyTipoBudgetKeepsThem) {
  for (BdgTipo archivio = 0; archivio <= 9; ++archivio) {
    SCOPED_TRACE(archivio);
    Banco banco;
    banco.prop.TipoBudget = archivio;
    const ImpostazioniBudget impostazioni(banco.ctx);
    banco.rispondi({"A"}, {{1}});
    banco.rispondi({"A"}, {});
    EXPECT_TRUE(impostazioni.GetIsBudgetValorizzatoDitta(7, 6, "A"));
    EXPECT_FALSE(impostazioni.GetIsBudgetValorizzato(6, "A"));
    EXPECT_THAT(
        banco.db->texts,
        ElementsAre(archivio == 2 ? std::string(kInvestimenti) + " AND   BU04_DITTA_CG18 = 7\r\n" : kTestataDitta,
                    archivio == 2   ? kInvestimenti
                    : archivio == 4 ? kSpeseGenerali
                                    : kTestata));
  }
}

TEST(ImpostazioniBudget, RefusesToLookForDataOfAnUnknownTipoBudget) {
  Banco banco;
  banco.db->onExecute = [](std::string_view testo) {
    if (testo.empty()) throw values::Errore("empty statement");
  };
  for (const BdgTipo archivio : {-1, 10}) {
    banco.prop.TipoBudget = archivio;
    EXPECT_FALSE(ImpostazioniBudget(banco.ctx).GetIsBudgetValorizzatoDitta(7, 6, "A"));
    EXPECT_EQ(banco.esito(), "99 empty statement in GetIsBudgetValorizzatoDitta ");
    EXPECT_FALSE(ImpostazioniBudget(banco.ctx).GetIsBudgetValorizzato(6, "A"));
    EXPECT_EQ(banco.esito(), "99 empty statement in GetIsBudgetValorizzato");
  }
}

TEST(ImpostazioniBudget, AsksNothingAboutABudgetWithoutItsKeys) {
  Banco banco;
  const ImpostazioniBudget impostazioni(banco.ctx);
  EXPECT_FALSE(impostazioni.GetIsBudgetValorizzatoDitta(Variant::Null(), 6, "A"));
  EXPECT_FALSE(impostazioni.GetIsBudgetValorizzatoDitta(7, 6, "  "));
  EXPECT_FALSE(impostazioni.GetIsBudgetValorizzato(6, Variant()));
  EXPECT_FALSE(impostazioni.GetIsStrutturaConVariante(6, Variant::Null()));
  EXPECT_FALSE(impostazioni.GetIsElementoInStruttura(6, "A", " "));
  EXPECT_THAT(banco.db->texts, IsEmpty());
  EXPECT_EQ(banco.esito(), "0 ");
}

TEST(ImpostazioniBudget, FindsElementsOnSlotBoundariesOnly) {
  struct Caso {
    Variant struttura;
    const char* elemento;
    bool atteso;
  };
  const Caso casi[] = {{"AAABBBVAR", "VAR", true},     {"AAVARB", "VAR", false}, {"VARAAA", "VAR", true},
                       {"AAABB", "BB", true},          {"AAABBB", "aaa", false}, {"   ", "VAR", false},
                       {Variant::Null(), "VAR", false}};
  for (const auto& caso : casi) {
    Banco banco;
    banco.rispondi({"BU01_STRUTTURA"}, {{caso.struttura}});
    EXPECT_EQ(ImpostazioniBudget(banco.ctx).GetIsElementoInStruttura(0, "A1", caso.elemento), caso.atteso)
        << caso.elemento;
    banco.rispondi({"BU01_STRUTTURA"}, {{caso.struttura}});
    EXPECT_EQ(ImpostazioniBudget(banco.ctx).GetIsStrutturaConVariante(0, "A1"),
              caso.atteso && std::string(caso.elemento) == "VAR");
    EXPECT_EQ(banco.esito(), "0 ");
  }
}

TEST(ImpostazioniBudget, CountsTheSlotsThatHoldAnElement) {
  Banco banco;
  const ImpostazioniBudget impostazioni(banco.ctx);
  const std::pair<Variant, int> casi[] = {{"AAABBBVAR", 3}, {"AAA   BBB", 2},     {"AAAB", 2},
                                          {"", 0},          {Variant::Null(), 0}, {Variant(), 0}};
  for (const auto& [struttura, attesi] : casi) EXPECT_EQ(impostazioni.GetBdgNrElementiInStruttura(struttura), attesi);
  EXPECT_EQ(impostazioni.GetBdgNrElementiInStruttura(std::string(3 * 40000, 'A')), 0);
  EXPECT_EQ(banco.esito(), "99 Overflow in GetBdgNrElementiInStruttura");
}

}  // namespace
}  // namespace bukorval
