#include <gtest/gtest.h>

#include <functional>

#include "frame/Validazione.h"
#include "support/TestContext.h"

namespace bukorval {
namespace {

using values::Variant;

/// A property that an operation asks for, and how to fill it.
struct Step {
  const char* label;
  std::function<void(Proprieta&)> fill;
};

TEST(Validazione, AsksForEachPropertyInOrder) {
  const Step company{"CodiceDitta ", [](Proprieta& p) { p.CodiceDitta = 1; }};
  const Step year{"AnnoEsercizio ", [](Proprieta& p) { p.AnnoEsercizio = 2011; }};
  const Step number{"ProgressivoEsercizio ", [](Proprieta& p) { p.ProgressivoEsercizio = "1"; }};
  const Step from{"DaData ", [](Proprieta& p) { p.DaData = "01/01/2011"; }};
  const Step to{"AData ", [](Proprieta& p) { p.AData = "31/12/2011"; }};
  const Step cardKind{"BdgTipoScheda ", [](Proprieta& p) { p.BdgTipoScheda = 0; }};
  const Step movements{"Tipo movimento da elaborare ", [](Proprieta& p) { p.TipoMovimenti = " 1 = 1"; }};
  const std::pair<Variant, std::vector<Step>> elaborations[] = {
      {10,
       {company,
        {"CodicePdCCoGeDitta ", [](Proprieta& p) { p.CodicePdcCoGeDitta = 1; }},
        year,
        number,
        {"AnnoEsercizioMovimenti ", [](Proprieta& p) { p.AnnoEsercizioMovimenti = 2010; }},
        {"ProgressivoEsercizioMovimenti ", [](Proprieta& p) { p.ProgressivoEsercizioMovimenti = 1; }},
        from,
        to,
        movements}},
      {"40", {cardKind, company, year, number, from, to, movements}},
      {42.0,
       {company,
        cardKind,
        year,
        number,
        {"BdgDestinazioneSottoTipo ", [](Proprieta& p) { p.BdgDestinazioneSottoTipo = "01"; }},
        {"BdgDestinazioneAnnoEsercizio ", [](Proprieta& p) { p.BdgDestinazioneAnnoEsercizio = 2012; }},
        {"BdgDestinazioneProgressivoEsercizio ", [](Proprieta& p) { p.BdgDestinazioneProgressivoEsercizio = 1; }}}},
      {99, {}},
      {"altro", {}},
      {Variant::Null(), {}},
      {Variant(), {}}};
  for (const auto& [type, steps] : elaborations) {
    testing_support::TestContext context;
    auto& prop = context.prop = Proprieta{};
    prop.TipoElaborazioneBO = type;
    // Blanks count as not set.
    prop.BdgTipoScheda = "   ";
    prop.DaData = Variant::Null();
    prop.TipoMovimenti = "  ";
    const auto expectRefusal = [&](const char* label) {
      EXPECT_FALSE(IsDatiInputValidi(context.ctx));
      EXPECT_EQ(context.outcome(), "1 " + std::string(label) + " : Dato non definito nel BO ");
    };
    expectRefusal("SottoTipoBudget ");
    prop.SottoTipoBudget = "01";
    for (const Step& step : steps) {
      expectRefusal(step.label);
      step.fill(prop);
    }
    EXPECT_TRUE(IsDatiInputValidi(context.ctx));
    EXPECT_EQ(context.outcome(), "0 ");
  }
}

}  // namespace
}  // namespace bukorval
