#include <gtest/gtest.h>

#include "frame/Valori.h"
#include "support/ContestoDiProva.h"

namespace bukorval {
namespace {

using values::Variant;

Variant dec(std::string_view testo) { return values::Decimal::TryParse(testo).value(); }

/// A service whose every call fails.
class DateGuaste : public suite::ServizioDate {
 public:
  void Data(std::string_view) override { throw values::Errore("Servizio fermo"); }
  int CodiceErrore() const override { return 0; }
  std::string DataDB() const override { return {}; }
};

/// Keeps what it was asked.
class AritmeticaSpia : public suite::ServizioAritmetico {
 public:
  Variant valore;
  int precisione = 0, decimali = 0, modo = 0;
  Variant Arrotonda(const Variant& v, int p, int d, int m) override {
    valore = v, precisione = p, decimali = d, modo = m;
    return v;
  }
};

class Valori : public testing::Test, protected testing_support::ContestoDiProva {};

TEST_F(Valori, NvlTreatsBlanksAsNull) {
  for (const Variant& bianco : {Variant::Null(), Variant(), Variant("  "), Variant("")})
    EXPECT_EQ(NVL(bianco, 5), Variant(5));
  EXPECT_EQ(NVL(" a ", 5), Variant(" a "));
  EXPECT_EQ(NVL(0, 5), Variant(0));
  const Variant oggetto(std::make_shared<values::Object>());
  EXPECT_EQ(NVL(oggetto, 5), oggetto);
}

TEST_F(Valori, FillsAndTrims) {
  const struct {
    Variant valore;
    int larghezza;
    Variant riempito;
  } kRighe[] = {{"ab", 4, "ab  "},
                {" abcdef", 3, "abc"},
                {Variant::Null(), 3, Variant::Null()},
                {Variant(), 3, Variant::Null()},
                {12, 4, "12  "},
                {"", 2, "  "},
                {"  è  ", 2, "è "},
                {"x", 0, ""},
                {"x", -1, Variant()},
                {Variant(std::make_shared<values::Object>()), 2, Variant()}};
  for (const auto& riga : kRighe) EXPECT_EQ(BFill(riga.valore, riga.larghezza), riga.riempito);
  EXPECT_EQ(RTrimN(Variant::Null()), Variant(""));
  EXPECT_EQ(RTrimN("  a  "), Variant("  a"));
  EXPECT_EQ(RTrimN(Variant()), Variant(""));
  EXPECT_EQ(RTrimN(3), Variant("3"));
}

TEST_F(Valori, CDecNConvertsExactly) {
  for (const Variant& vuoto : {Variant::Null(), Variant(), Variant("")})
    EXPECT_EQ(CDecN(vuoto), Variant(std::int16_t{0}));
  EXPECT_EQ(CDecN("1234567890123456789012,345678"), dec("1234567890123456789012.345678"));
  EXPECT_EQ(CDecN("1,234.5", '.'), dec("1234.5"));
  EXPECT_EQ(CDecN(0.1), dec("0.1"));
  EXPECT_THROW(CDecN("abc"), values::Errore);
  EXPECT_THROW(CDecN("  "), values::Errore);
}

TEST_F(Valori, DataDBQuotesDatesOnly) {
  const struct {
    Variant data;
    const char* sql;
  } kRighe[] = {{values::Date::FromYmd(2011, 1, 31), "'20110131'"},
                {"31/01/2011", "'20110131'"},
                {values::Date::FromYmd(2011, 1, 31, 8, 5, 9), "'20110131 08:05:09'"},
                {"31/02/2011", "Null"},
                {Variant::Null(), "Null"},
                {Variant(), "Null"},
                {"'; DROP TABLE X --", "Null"}};
  for (const auto& riga : kRighe) EXPECT_EQ(DataDB(ctx, riga.data), riga.sql);
  EXPECT_EQ(ctx.stato(), bdgStatoOk);
  ctx.servizioDate = std::make_shared<DateGuaste>();
  EXPECT_EQ(DataDB(ctx, "31/01/2011"), "");
  EXPECT_EQ(ctx.errore(), "Servizio fermo in DataDB");
  ctx.servizioDate = nullptr;
  DataDB(ctx, "31/01/2011");
  EXPECT_EQ(ctx.stato(), bdgStatoErrore);
  EXPECT_TRUE(ctx.errore().ends_with(" in DataDB"));
}

TEST_F(Valori, RoundZQAsksTheArithmeticService) {
  const auto spia = std::make_shared<AritmeticaSpia>();
  ctx.servizioAritmetico = spia;
  EXPECT_EQ(RoundZQ(ctx, "12,345", 2), dec("12.345"));
  EXPECT_EQ(spia->valore.kind(), values::Kind::Decimal);
  EXPECT_EQ(spia->precisione, 18);
  EXPECT_EQ(spia->decimali, 2);
  EXPECT_EQ(spia->modo, 5);
  EXPECT_EQ(RoundZQ(ctx, "  ", 2), Variant(std::int16_t{0}));
  EXPECT_TRUE(RoundZQ(ctx, "abc", 2).isEmpty());
  EXPECT_EQ(ctx.errore(), "Type mismatch: \"abc\" is no number in RoundZQ");
  ctx.servizioAritmetico = nullptr;
  EXPECT_EQ(RoundZQ(ctx, Variant::Null(), 2), Variant(std::int16_t{0}));
  EXPECT_EQ(ctx.stato(), bdgStatoOk);
  RoundZQ(ctx, 1, 2);
  EXPECT_TRUE(ctx.errore().ends_with(" in RoundZQ"));
}

TEST_F(Valori, DeltasAreExactAndPropagateNull) {
  const Variant nullo = Variant::Null();
  const struct {
    Variant valore2, valore1, delta, percentuale;
  } kRighe[] = {{150, 120, 30, 0.25},
                {dec("150.00"), dec("120.00"), dec("30.00"), dec("0.25")},
                {nullo, 3, nullo, nullo},
                {10, nullo, nullo, nullo},
                {10, 0, 10, nullo},
                {10, Variant(), 10, nullo},
                {Variant(), 4, -4, -1.0},
                {dec("0.30"), dec("-0.10"), dec("0.40"), dec("-4")},
                {"1.000,50", "0,50", dec("1000"), dec("2000")},
                {10, dec("0.00"), dec("10"), nullo}};
  for (const auto& riga : kRighe) {
    EXPECT_EQ(CalcolaDelta(ctx, riga.valore2, riga.valore1), riga.delta);
    EXPECT_EQ(CalcolaDeltaPercentuale(ctx, riga.valore2, riga.valore1), riga.percentuale);
    EXPECT_EQ(ctx.stato(), bdgStatoOk);
  }
  EXPECT_EQ(CalcolaDelta(ctx, 0.3, 0.1), Variant(0.3 - 0.1));
  EXPECT_TRUE(CalcolaDeltaPercentuale(ctx, 10, "  ").isNull());
  EXPECT_TRUE(CalcolaDelta(ctx, "uno", 1).isEmpty());
  EXPECT_EQ(ctx.errore(), "Type mismatch: \"uno\" is no number in CalcolaDelta");
  CalcolaDeltaPercentuale(ctx, 1, "uno");
  EXPECT_EQ(ctx.errore(), "Type mismatch: \"uno\" is no number in CalcolaDeltaPercentuale");
  sessione->separatore = '.';
  EXPECT_EQ(CalcolaDelta(ctx, "1,000.5", 0), dec("1000.5"));
}

TEST_F(Valori, NewIdentifiersNeverFail) {
  db->answers = {testing_support::rows({"ID"}, {{"6F9619FF-8B86-D011-B42D-00C04FC964FF"}}),
                 testing_support::rows({"ID"}, {})};
  ctx.esito({bdgStatoErrore, "prima in Altra"});
  EXPECT_EQ(GetNuovoGuidDB(ctx), Variant("6F9619FF-8B86-D011-B42D-00C04FC964FF"));
  EXPECT_EQ(db->texts.at(0), "SELECT CAST(NEWID() AS NVARCHAR(36))");
  EXPECT_TRUE(GetNuovoGuidDB(ctx).isEmpty());
  EXPECT_TRUE(GetNuovoGuidDB(ctx).isEmpty());
  db->onExecute = [](std::string_view) { throw values::Errore("caduta"); };
  EXPECT_TRUE(GetNuovoGuidDB(ctx).isEmpty());
  ctx.connessione(nullptr);
  EXPECT_TRUE(GetNuovoGuidDB(ctx).isEmpty());
  EXPECT_EQ(ctx.errore(), "prima in Altra");
}

}  // namespace
}  // namespace bukorval
