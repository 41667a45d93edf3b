#include "frame/Valori.h"
#include "support/TestContext.h"

namespace {

using namespace bukorval;

/// A service whose every call fails.
class BrokenDates : public suite::ServizioDate {
 public:
  void Data(std::string_view) override { throw values::Errore("Service down"); }
  int CodiceErrore() const override { return 0; }
  std::string DataDB() const override { return {}; }
};

/// Keeps what it was asked.
class SpyArithmetic : public suite::ServizioAritmetico {
 public:
  Variant value;
  int precision = 0, decimals = 0, mode = 0;
  Variant Arrotonda(const Variant& v, int p, int d, int m) override {
    value = v, precision = p, decimals = d, mode = m;
    return v;
  }
};

class Valori : public testing::Test, protected testing_support::TestContext {};

TEST_F(Valori, BlanksAreNullAndTextsAreFilledAndTrimmed) {
  for (const Variant& blank : {Variant::Null(), Variant(), Variant("  "), Variant("")})
    EXPECT_EQ(NVL(blank, 5), Variant(5));
  const Variant object(std::make_shared<values::Object>());
  for (const Variant& kept : {Variant(" a "), Variant(0), object}) EXPECT_EQ(NVL(kept, 5), kept);
  const struct {
    Variant value;
    int width;
    Variant filled;
  } rows[] = {{"ab", 4, "ab  "},
              {" abcdef", 3, "abc"},
              {Variant::Null(), 3, Variant::Null()},
              {Variant(), 3, Variant::Null()},
              {12, 4, "12  "},
              {"", 2, "  "},
              {"  è  ", 2, "è "},
              {"x", 0, ""},
              {"x", -1, Variant()},
              {object, 2, Variant()}};
  for (const auto& row : rows) EXPECT_EQ(BFill(row.value, row.width), row.filled);
  const std::pair<Variant, const char*> trimmed[] = {
      {Variant::Null(), ""}, {"  a  ", "  a"}, {Variant(), ""}, {3, "3"}};
  for (const auto& [value, text] : trimmed) EXPECT_EQ(RTrimN(value), Variant(text));
}

TEST_F(Valori, CDecNConvertsExactly) {
  for (const Variant& none : {Variant::Null(), Variant(), Variant("")})
    EXPECT_EQ(CDecN(none), Variant(std::int16_t{0}));
  EXPECT_EQ(CDecN("1234567890123456789012,345678"), dec("1234567890123456789012.345678"));
  EXPECT_EQ(CDecN("1,234.5", '.'), dec("1234.5"));
  EXPECT_EQ(CDecN(0.1), dec("0.1"));
  EXPECT_THROW(CDecN("abc"), values::Errore);
  EXPECT_THROW(CDecN("  "), values::Errore);
}

TEST_F(Valori, DataDBQuotesDatesOnly) {
  const std::pair<Variant, const char*> rows[] = {{values::Date::FromYmd(2011, 1, 31), "'20110131'"},
                                                  {"31/01/2011", "'20110131'"},
                                                  {values::Date::FromYmd(2011, 1, 31, 8, 5, 9), "'20110131 08:05:09'"},
                                                  {"31/02/2011", "Null"},
                                                  {Variant::Null(), "Null"},
                                                  {Variant(), "Null"},
                                                  {"'; DROP TABLE X --", "Null"}};
  for (const auto& [value, sql] : rows) EXPECT_EQ(DataDB(ctx, value), sql);
  EXPECT_EQ(outcome(), "0 ");
  ctx.servizioDate = std::make_shared<BrokenDates>();
  EXPECT_EQ(DataDB(ctx, "31/01/2011"), "");
  EXPECT_EQ(ctx.errore(), "Service down in DataDB");
  ctx.servizioDate = nullptr;
  DataDB(ctx, "31/01/2011");
  EXPECT_EQ(ctx.stato(), bdgStatoErrore);
  EXPECT_TRUE(ctx.errore().ends_with(" in DataDB"));
}

TEST_F(Valori, RoundZQAsksTheArithmeticService) {
  const auto spy = std::make_shared<SpyArithmetic>();
  ctx.servizioAritmetico = spy;
  EXPECT_EQ(RoundZQ(ctx, "12,345", 2), dec("12.345"));
  EXPECT_EQ(spy->value.kind(), values::Kind::Decimal);
  EXPECT_EQ(spy->precision, 18);
  EXPECT_EQ(spy->decimals, 2);
  EXPECT_EQ(spy->mode, 5);
  EXPECT_EQ(RoundZQ(ctx, "  ", 2), Variant(std::int16_t{0}));
  EXPECT_TRUE(RoundZQ(ctx, "abc", 2).isEmpty());
  EXPECT_EQ(ctx.errore(), "Type mismatch: \"abc\" is no number in RoundZQ");
  ctx.servizioAritmetico = nullptr;
  EXPECT_EQ(RoundZQ(ctx, Variant::Null(), 2), Variant(std::int16_t{0}));
  EXPECT_EQ(outcome(), "0 ");
  RoundZQ(ctx, 1, 2);
  EXPECT_TRUE(ctx.errore().ends_with(" in RoundZQ"));
}

TEST_F(Valori, DeltasAreExactAndPropagateNull) {
  const Variant null = Variant::Null();
  const struct {
    Variant value2, value1, delta, percent;
  } rows[] = {{150, 120, 30, 0.25},
              {dec("150.00"), dec("120.00"), dec("30.00"), dec("0.25")},
              {null, 3, null, null},
              {10, null, null, null},
              {10, 0, 10, null},
              {10, Variant(), 10, null},
              {Variant(), 4, -4, -1.0},
              {dec("0.30"), dec("-0.10"), dec("0.40"), dec("-4")},
              {"1.000,50", "0,50", dec("1000"), dec("2000")},
              {10, dec("0.00"), dec("10"), null},
              {0.3, 0.1, 0.3 - 0.1, (0.3 - 0.1) / 0.1}};
  for (const auto& row : rows) {
    EXPECT_EQ(CalcolaDelta(ctx, row.value2, row.value1), row.delta);
    EXPECT_EQ(CalcolaDeltaPercentuale(ctx, row.value2, row.value1), row.percent);
    EXPECT_EQ(outcome(), "0 ");
  }
  EXPECT_TRUE(CalcolaDeltaPercentuale(ctx, 10, "  ").isNull());
  EXPECT_TRUE(CalcolaDelta(ctx, "uno", 1).isEmpty());
  EXPECT_EQ(ctx.errore(), "Type mismatch: \"uno\" is no number in CalcolaDelta");
  CalcolaDeltaPercentuale(ctx, 1, "uno");
  EXPECT_EQ(ctx.errore(), "Type mismatch: \"uno\" is no number in CalcolaDeltaPercentuale");
  session->separator = '.';
  EXPECT_EQ(CalcolaDelta(ctx, "1,000.5", 0), dec("1000.5"));
}

TEST_F(Valori, NewIdentifiersNeverFail) {
  answer({"ID"}, {{"6F9619FF-8B86-D011-B42D-00C04FC964FF"}});
  answer({"ID"}, {});
  ctx.esito({bdgStatoErrore, "before in Another"});
  EXPECT_EQ(GetNuovoGuidDB(ctx), Variant("6F9619FF-8B86-D011-B42D-00C04FC964FF"));
  EXPECT_EQ(db->texts.at(0), "SELECT CAST(NEWID() AS NVARCHAR(36))");
  EXPECT_TRUE(GetNuovoGuidDB(ctx).isEmpty());
  EXPECT_TRUE(GetNuovoGuidDB(ctx).isEmpty());
  failAlways();
  EXPECT_TRUE(GetNuovoGuidDB(ctx).isEmpty());
  ctx.connessione(nullptr);
  EXPECT_TRUE(GetNuovoGuidDB(ctx).isEmpty());
  EXPECT_EQ(ctx.errore(), "before in Another");
}

}  // namespace
