#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "frame/Validazione.h"
#include "support/ContestoDiProva.h"

namespace bukorval {
namespace {

using values::Variant;

struct Passo {
  const char* etichetta;
  std::function<void(Proprieta&)> imposta;
};

/// The properties an operation asks for, in order; filling them one by one moves the refusal to the next.
const std::vector<std::pair<Variant, std::vector<Passo>>>& elaborazioni() {
  const Passo ditta{"CodiceDitta ", [](Proprieta& p) { p.CodiceDitta = 1; }};
  const Passo anno{"AnnoEsercizio ", [](Proprieta& p) { p.AnnoEsercizio = 2011; }};
  const Passo progressivo{"ProgressivoEsercizio ", [](Proprieta& p) { p.ProgressivoEsercizio = "1"; }};
  const Passo daData{"DaData ", [](Proprieta& p) { p.DaData = "01/01/2011"; }};
  const Passo aData{"AData ", [](Proprieta& p) { p.AData = "31/12/2011"; }};
  const Passo scheda{"BdgTipoScheda ", [](Proprieta& p) { p.BdgTipoScheda = 0; }};
  const Passo movimenti{"Tipo movimento da elaborare ", [](Proprieta& p) { p.TipoMovimenti = " 1 = 1"; }};
  static const std::vector<std::pair<Variant, std::vector<Passo>>> kTutte = {
      {10,
       {ditta,
        {"CodicePdCCoGeDitta ", [](Proprieta& p) { p.CodicePdcCoGeDitta = 1; }},
        anno,
        progressivo,
        {"AnnoEsercizioMovimenti ", [](Proprieta& p) { p.AnnoEsercizioMovimenti = 2010; }},
        {"ProgressivoEsercizioMovimenti ", [](Proprieta& p) { p.ProgressivoEsercizioMovimenti = 1; }},
        daData,
        aData,
        movimenti}},
      {"40", {scheda, ditta, anno, progressivo, daData, aData, movimenti}},
      {42.0,
       {ditta,
        scheda,
        anno,
        progressivo,
        {"BdgDestinazioneSottoTipo ", [](Proprieta& p) { p.BdgDestinazioneSottoTipo = "01"; }},
        {"BdgDestinazioneAnnoEsercizio ", [](Proprieta& p) { p.BdgDestinazioneAnnoEsercizio = 2012; }},
        {"BdgDestinazioneProgressivoEsercizio ", [](Proprieta& p) { p.BdgDestinazioneProgressivoEsercizio = 1; }}}},
      {99, {}},
      {"altro", {}},
      {Variant::Null(), {}},
      {Variant(), {}}};
  return kTutte;
}

TEST(Validazione, AsksForEachPropertyInOrder) {
  for (const auto& [tipo, passi] : elaborazioni()) {
    testing_support::ContestoDiProva prova;
    prova.prop.TipoElaborazioneBO = tipo;
    // Blanks count as not set.
    prova.prop.BdgTipoScheda = "   ";
    prova.prop.DaData = Variant::Null();
    prova.prop.TipoMovimenti = "  ";
    const auto rifiuta = [&](const char* etichetta) {
      EXPECT_FALSE(IsDatiInputValidi(prova.ctx));
      EXPECT_EQ(prova.ctx.stato(), bdgStatoRifiutato);
      EXPECT_EQ(prova.ctx.errore(), std::string(etichetta) + " : Dato non definito nel BO ");
    };
    rifiuta("SottoTipoBudget ");
    prova.prop.SottoTipoBudget = "01";
    for (const Passo& passo : passi) {
      rifiuta(passo.etichetta);
      passo.imposta(prova.prop);
    }
    EXPECT_TRUE(IsDatiInputValidi(prova.ctx));
    EXPECT_EQ(prova.ctx.stato(), bdgStatoOk);
    EXPECT_EQ(prova.ctx.errore(), "");
  }
}

}  // namespace
}  // namespace bukorval
