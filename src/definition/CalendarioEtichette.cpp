#include <exception>
#include <string>

#include "definition/Calendario.h"
#include "definition/Periodicita.h"
#include "frame/Trappola.h"
#include "values/Conversion.h"

/// Labels of periods, in the words of the session's catalogue.
namespace bukorval {
namespace {

using values::Variant;

constexpr int kMesi[] = {28193, 26677, 36998, 7054, 36596, 29285, 36373, 5820, 52092, 42872, 40573, 22569};

/// A label is never worth an error: what cannot be found stays empty.
template <class Passo>
auto senzaErrori(Passo passo) -> decltype(passo()) {
  try {
    return passo();
  } catch (const std::exception&) {
    return {};
  }
}

std::string testoCatalogo(const Contesto& ctx, int messaggio) {
  return senzaErrori([&] { return values::toText(values::nvl(ctx.sessione().TestoMessaggio(messaggio), "")); });
}

std::string nomeMese(const Contesto& ctx, int mese) {
  return mese >= 1 && mese <= 12 ? testoCatalogo(ctx, kMesi[mese - 1]) : std::string();
}

}  // namespace

std::string Calendario::GetDescrizionePeriodo(const Variant& ditta, BdgPeriodicita codice,
                                              BdgPeriodoFiscaleSolare fiscaleSolare, std::int16_t periodo,
                                              const Variant& anno, const Variant& progressivo) const {
  return esegui(ctx_, "GetDescrizionePeriodo", std::string(), [&]() -> std::string {
    const auto* p = periodicita(codice);
    if (!p) return {};
    if (codice == kAnnuale) return testoCatalogo(ctx_, p->messaggio);
    if (codice != kMensile) return std::to_string(periodo) + "° " + testoCatalogo(ctx_, p->messaggio);
    if (fiscaleSolare == bdgAnnoSolare) return nomeMese(ctx_, periodo);

    // Without the year's start the period's month is unknown: better no label than another month's.
    const int primoMese = senzaErrori([&] {
      Variant inizio, fine;
      DeterminaDateInizioFineEsercizio(ditta, anno, progressivo, inizio, fine);
      return values::toDate(inizio).month();
    });
    if (primoMese == 0) return {};
    const int mese = periodo + primoMese - 1;
    return nomeMese(ctx_, mese > 12 ? mese - 12 : mese);
  });
}

}  // namespace bukorval
