#include <gtest/gtest.h>

#include "suite/Suite.h"
#include "values/Conversion.h"

namespace {

using values::Variant;

TEST(Servizi, AreMadeByName) {
  suite::registraServiziSuite();
  EXPECT_TRUE(suite::creaServizio<suite::ServizioDate>(suite::kServizioDate));
  EXPECT_TRUE(suite::creaServizio<suite::SituazioneContabile>(suite::kSituazioneContabile));
  EXPECT_THROW(suite::creaServizio<suite::ServizioDate>(suite::kServizioEsercizi), values::Errore);
  try {
    suite::creaOggetto("NESSUNO.CLS");
    FAIL();
  } catch (const values::Errore& e) {
    EXPECT_STREQ(e.what(), "ActiveX component can't create object: NESSUNO.CLS");
  }
  suite::registraServizio("PROPRIO", [] { return std::make_shared<values::Object>(); });
  EXPECT_NE(suite::creaOggetto("PROPRIO"), suite::creaOggetto("PROPRIO"));
}

TEST(Servizi, DatesAsDatabaseText) {
  suite::registraServiziSuite();
  const auto date = suite::creaServizio<suite::ServizioDate>(suite::kServizioDate);
  for (const auto& [testo, attesa] : {std::pair{"29/02/2024", "20240229"},
                                      {"20240229", "20240229"},
                                      {"2024-02-29 08:05", "20240229 08:05:00"},
                                      {"30/02/2024", ""},
                                      {"", ""}}) {
    date->Data(testo);
    EXPECT_EQ(date->CodiceErrore() == 0, *attesa != 0) << testo;
    EXPECT_EQ(date->DataDB(), attesa) << testo;
  }
}

TEST(Servizi, Rounding) {
  suite::registraServiziSuite();
  const auto aritmetica = suite::creaServizio<suite::ServizioAritmetico>(suite::kServizioAritmetico);
  const auto arrotonda = [&](const Variant& valore, int precisione, int decimali) {
    return values::toPlainText(aritmetica->Arrotonda(valore, precisione, decimali, 5));
  };
  EXPECT_EQ(arrotonda("2,345", 18, 2), "2.35");
  EXPECT_EQ(arrotonda("-2,345", 18, 2), "-2.35");
  EXPECT_EQ(arrotonda(1.005, 18, 2), "1.01");  // the double's own decimal digits count
  EXPECT_EQ(arrotonda(7, 3, 2), "7");
  EXPECT_EQ(arrotonda("9,994", 3, 2), "9.99");
  EXPECT_TRUE(aritmetica->Arrotonda(Variant::Null(), 18, 2, 5).isNull());
  EXPECT_THROW(arrotonda("9,995", 3, 2), values::Errore);
  EXPECT_THROW(arrotonda(1, 18, -1), values::Errore);
  EXPECT_THROW(aritmetica->Arrotonda(1, 18, 2, 4), values::Errore);
}

}  // namespace
