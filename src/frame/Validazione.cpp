#include "frame/Validazione.h"

#include <array>
#include <span>
#include <string>

#include "frame/Trappola.h"
#include "values/Arithmetic.h"
#include "values/Conversion.h"
#include "values/Errore.h"

namespace bukorval {

namespace {

using P = Proprieta;
using values::Variant;

template <auto Campo>
Variant leggi(const Proprieta& prop) {
  return prop.*Campo;
}

/// A property and the label that messages give it. Numbers and Booleans are always set; they stand here so
/// that the table says what each operation needs.
struct Controllo {
  const char* etichetta;
  Variant (*leggi)(const Proprieta&);
};

constexpr Controllo kDitta{"CodiceDitta ", leggi<&P::CodiceDitta>};
constexpr Controllo kTipoScheda{"BdgTipoScheda ", leggi<&P::BdgTipoScheda>};
constexpr Controllo kAnno{"AnnoEsercizio ", leggi<&P::AnnoEsercizio>};
constexpr Controllo kProgressivo{"ProgressivoEsercizio ", leggi<&P::ProgressivoEsercizio>};
constexpr Controllo kDaData{"DaData ", leggi<&P::DaData>};
constexpr Controllo kAData{"AData ", leggi<&P::AData>};
constexpr Controllo kDestinazione{"TipoDettaglioDestinazione ", leggi<&P::TipoDettaglioDestinazione>};
constexpr Controllo kTipoMovimenti{"Tipo movimento da elaborare ", leggi<&P::TipoMovimenti>};

constexpr std::array kSempre{
    Controllo{"TipoBudget ", leggi<&P::TipoBudget>},
    Controllo{"SottoTipoBudget ", leggi<&P::SottoTipoBudget>},
};

constexpr std::array kEconomica{
    kDitta,
    Controllo{"CodicePdCCoGeDitta ", leggi<&P::CodicePdcCoGeDitta>},
    kAnno,
    kProgressivo,
    Controllo{"AnnoEsercizioMovimenti ", leggi<&P::AnnoEsercizioMovimenti>},
    Controllo{"ProgressivoEsercizioMovimenti ", leggi<&P::ProgressivoEsercizioMovimenti>},
    kDaData,
    kAData,
    kDestinazione,
    kTipoMovimenti,
    Controllo{"Sovrascrivi esistenti ", leggi<&P::IsSovrascriviEsistenti>},
};

constexpr std::array kSchede{kTipoScheda, kDitta, kAnno, kProgressivo, kDaData, kAData, kDestinazione, kTipoMovimenti};

constexpr std::array kDuplicazione{
    kDitta,
    kTipoScheda,
    kAnno,
    kProgressivo,
    Controllo{"TipoDettaglioOrigine ", leggi<&P::TipoDettaglioOrigine>},
    Controllo{"BdgDestinazioneSottoTipo ", leggi<&P::BdgDestinazioneSottoTipo>},
    Controllo{"BdgDestinazioneAnnoEsercizio ", leggi<&P::BdgDestinazioneAnnoEsercizio>},
    Controllo{"BdgDestinazioneProgressivoEsercizio ", leggi<&P::BdgDestinazioneProgressivoEsercizio>},
    kDestinazione,
    Controllo{"IsForzoDuplicazioneContoCliFor ", leggi<&P::IsForzoDuplicazioneContoCliFor>},
};

struct Elaborazione {
  int tipo;
  std::span<const Controllo> controlli;
};

constexpr std::array kElaborazioni{
    Elaborazione{bdgElaborazioneEconomica, kEconomica},
    Elaborazione{bdgElaborazioneSchede, kSchede},
    Elaborazione{bdgDuplicazioneSchede, kDuplicazione},
};

/// What is no number names no elaboration.
bool isTipo(const Variant& valore, int tipo) {
  try {
    return values::compare(valore, tipo) == 0;
  } catch (const values::Errore&) {
    return false;
  }
}

void verificaTutti(const Contesto& ctx, std::span<const Controllo> controlli) {
  for (const Controllo& controllo : controlli)
    if (values::isBlank(controllo.leggi(ctx.prop))) rifiutaNonDefinito(controllo.etichetta);
}

}  // namespace

bool IsDatiInputValidi(Contesto& ctx) {
  return esegui(ctx, "IsDatiInputValidi", false, [&] {
    verificaTutti(ctx, kSempre);
    for (const Elaborazione& elaborazione : kElaborazioni)
      if (isTipo(ctx.prop.TipoElaborazioneBO, elaborazione.tipo)) verificaTutti(ctx, elaborazione.controlli);
    return true;
  });
}

}  // namespace bukorval
