#include "suite/Suite.h"
#include "support/Test.h"

namespace {

struct Servizi : testing::Test {
  Servizi() { suite::registraServiziSuite(); }
};

TEST_F(Servizi, AreMadeByName) {
  EXPECT_TRUE(suite::creaServizio<suite::SituazioneContabile>(suite::kSituazioneContabile));
  EXPECT_THROW(suite::creaServizio<suite::ServizioDate>(suite::kServizioEsercizi), values::Errore);
  EXPECT_EQ(errorOf([] { suite::creaOggetto("NESSUNO.CLS"); }), "ActiveX component can't create object: NESSUNO.CLS");
  suite::registraServizio("PROPRIO", [] { return std::make_shared<values::Object>(); });
  EXPECT_NE(suite::creaOggetto("PROPRIO"), suite::creaOggetto("PROPRIO"));
}

TEST_F(Servizi, DatesAsDatabaseText) {
  const auto dates = suite::creaServizio<suite::ServizioDate>(suite::kServizioDate);
  for (const auto& [text, expected] : {std::pair{"29/02/2024", "20240229"},
                                       {"20240229", "20240229"},
                                       {"2024-02-29 08:05", "20240229 08:05:00"},
                                       {"30/02/2024", ""},
                                       {"", ""}}) {
    dates->Data(text);
    EXPECT_EQ(dates->CodiceErrore() == 0, *expected != 0) << text;
    EXPECT_EQ(dates->DataDB(), expected) << text;
  }
}

TEST_F(Servizi, Rounding) {
  const auto arithmetic = suite::creaServizio<suite::ServizioAritmetico>(suite::kServizioAritmetico);
  const auto round = [&](const Variant& value, int precision, int decimals) {
    return values::toPlainText(arithmetic->Arrotonda(value, precision, decimals, 5));
  };
  EXPECT_EQ(round("2,345", 18, 2), "2.35");
  EXPECT_EQ(round("-2,345", 18, 2), "-2.35");
  EXPECT_EQ(round(1.005, 18, 2), "1.01");  // the double's own decimal digits count
  EXPECT_EQ(round(7, 3, 2), "7");
  EXPECT_EQ(round("9,994", 3, 2), "9.99");
  EXPECT_TRUE(arithmetic->Arrotonda(Variant::Null(), 18, 2, 5).isNull());
  EXPECT_THROW(round("9,995", 3, 2), values::Errore);
  EXPECT_THROW(round(1, 18, -1), values::Errore);
  EXPECT_THROW(arithmetic->Arrotonda(1, 18, 2, 4), values::Errore);
}

}  // namespace
