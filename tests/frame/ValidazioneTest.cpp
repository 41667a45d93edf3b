#include "frame/Validazione.h"
#include "support/TestContext.h"

namespace {

using namespace bukorval;

/// What an operation asks for, by the label that messages give it; a text of movements stands for itself.
const std::map<std::string, Variant Proprieta::*> kProperties = {
    {"CodiceDitta", &Proprieta::CodiceDitta},
    {"CodicePdCCoGeDitta", &Proprieta::CodicePdcCoGeDitta},
    {"AnnoEsercizio", &Proprieta::AnnoEsercizio},
    {"ProgressivoEsercizio", &Proprieta::ProgressivoEsercizio},
    {"AnnoEsercizioMovimenti", &Proprieta::AnnoEsercizioMovimenti},
    {"ProgressivoEsercizioMovimenti", &Proprieta::ProgressivoEsercizioMovimenti},
    {"DaData", &Proprieta::DaData},
    {"AData", &Proprieta::AData},
    {"BdgTipoScheda", &Proprieta::BdgTipoScheda},
    {"SottoTipoBudget", &Proprieta::SottoTipoBudget},
    {"BdgDestinazioneSottoTipo", &Proprieta::BdgDestinazioneSottoTipo},
    {"BdgDestinazioneAnnoEsercizio", &Proprieta::BdgDestinazioneAnnoEsercizio},
    {"BdgDestinazioneProgressivoEsercizio", &Proprieta::BdgDestinazioneProgressivoEsercizio}};

TEST(Validazione, AsksForEachPropertyInOrder) {
  const std::string movements = "Tipo movimento da elaborare";
  const std::pair<Variant, std::vector<std::string>> elaborations[] = {
      {10,
       {"CodiceDitta", "CodicePdCCoGeDitta", "AnnoEsercizio", "ProgressivoEsercizio", "AnnoEsercizioMovimenti",
        "ProgressivoEsercizioMovimenti", "DaData", "AData", movements}},
      {"40", {"BdgTipoScheda", "CodiceDitta", "AnnoEsercizio", "ProgressivoEsercizio", "DaData", "AData", movements}},
      {42.0,
       {"CodiceDitta", "BdgTipoScheda", "AnnoEsercizio", "ProgressivoEsercizio", "BdgDestinazioneSottoTipo",
        "BdgDestinazioneAnnoEsercizio", "BdgDestinazioneProgressivoEsercizio"}},
      {99, {}},
      {"altro", {}},
      {Variant::Null(), {}},
      {Variant(), {}}};
  for (const auto& [type, labels] : elaborations) {
    testing_support::TestContext context;
    auto& prop = context.prop = Proprieta{};
    prop.TipoElaborazioneBO = type;
    // Blanks count as not set.
    prop.BdgTipoScheda = "   ";
    prop.DaData = Variant::Null();
    prop.TipoMovimenti = "  ";
    const auto expectRefusal = [&](const std::string& label) {
      EXPECT_FALSE(IsDatiInputValidi(context.ctx));
      EXPECT_EQ(context.outcome(), "1 " + label + "  : Dato non definito nel BO ");
      if (label == movements)
        prop.TipoMovimenti = " 1 = 1";
      else
        prop.*kProperties.at(label) = "1";
    };
    expectRefusal("SottoTipoBudget");
    for (const auto& label : labels) expectRefusal(label);
    EXPECT_TRUE(IsDatiInputValidi(context.ctx));
    EXPECT_EQ(context.outcome(), "0 ");
  }
}

}  // namespace
