#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <sstream>

#include "grid/TestoGriglia.h"
#include "grid/TestoPeriodi.h"
#include "support/ContestoDiProva.h"

namespace {

using bukorval::ParametriGriglia;

/// The text of tests/grid/expected/NAME.sql with its marks filled in and the line ends that are sent.
std::string atteso(const std::string& nome, const std::map<std::string, std::string>& segni) {
  std::ifstream file(std::string(BUKORVAL_SOURCE_DIR) + "/tests/grid/expected/" + nome + ".sql");
  EXPECT_TRUE(file.is_open()) << nome;
  std::string testo, riga;
  while (std::getline(file, riga)) testo += riga + "\r\n";
  for (const auto& [segno, valore] : segni)
    for (auto dove = testo.find(segno); dove != std::string::npos; dove = testo.find(segno))
      testo.replace(dove, segno.size(), valore);
  return testo;
}

TEST(TestoGriglia, IsTheWholeStatementOfEachKindOfBudget) {
  struct Riga {
    std::string file;
    int tipo, forecast;
    bool sede;
  };
  const Riga righe[] = {{"budget_tipo1_senza_forecast", 1, 0, false},
                        {"budget_tipo1_un_forecast", 1, 1, false},
                        {"budget_tipo4_per_sede_tre_forecast", 4, 3, true},
                        {"budget_tipo5_un_forecast", 5, 1, false}};
  for (const auto& riga : righe) {
    testing_support::ContestoDiProva prova;
    prova.sessione->ditta = 7;
    prova.prop.CodiceDitta = 99;  // not the company that is read
    prova.prop.TipoBudget = riga.tipo;
    prova.prop.SottoTipoBudget = "01";
    prova.prop.AnnoEsercizio = "2024";
    prova.prop.ProgressivoEsercizio = std::int16_t{1};
    prova.prop.BdgTipoScheda = 0;
    prova.prop.CodiceSede = values::Decimal::FromScaled(3);
    ParametriGriglia parametri{"BU65_AREA_MG08,BU65_ZONA_MG09", "       , A AS B\r\n       , C AS D",
                               "LEFT OUTER JOIN X ON Y = Z", riga.sede, riga.forecast};
    EXPECT_EQ(bukorval::testoGrigliaBudget(prova.ctx, parametri),
              atteso(riga.file, {{"{ELENCO}", parametri.elencoCampi},
                                 {"{CODICI}", parametri.codiciDescrizioni},
                                 {"{JOIN}", parametri.joinDescrizioni}}))
        << riga.file;
  }
}

TEST(TestoPeriodi, IsTheWholeStatement) {
  EXPECT_EQ(bukorval::testoGrigliaPeriodi(17, std::int16_t{12}, 0),
            atteso("periodi_senza_forecast", {{"{PERIODI}", "12"}}));
  EXPECT_EQ(bukorval::testoGrigliaPeriodi("17", values::Variant::Null(), 2),
            atteso("periodi_due_forecast", {{"{PERIODI}", ""}}));
}

}  // namespace
