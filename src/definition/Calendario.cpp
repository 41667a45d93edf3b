#include "definition/Calendario.h"

#include "definition/Periodicita.h"
#include "frame/Trappola.h"
#include "values/Conversion.h"

namespace bukorval {
namespace {

using values::isBlank;
using values::Variant;

constexpr int kMesiAnno = 12;

// Month `mese` counted from the month `inizio`, 1 to 12; 0 for what is no month.
int meseRelativo(int mese, int inizio) {
  if (mese < 1 || mese > kMesiAnno) return 0;
  return (mese - inizio + kMesiAnno) % kMesiAnno + 1;
}

}  // namespace

Variant Calendario::GetBdgNrPeriodi(BdgPeriodicita codice) const {
  return esegui(ctx_, "GetBdgNrPeriodi", Variant(), [&] {
    const auto* p = periodicita(codice);
    return p ? Variant(p->periodi) : Variant::Null();
  });
}

std::int16_t Calendario::GetBdgPeriodo(std::int16_t mese, BdgPeriodicita codice, BdgPeriodoFiscaleSolare solareFiscale,
                                       const Variant& dataInizio) const {
  return esegui(ctx_, "GetBdgPeriodo ", std::int16_t{0}, [&]() -> std::int16_t {
    const auto* p = periodicita(codice);
    if (!p) return 0;
    if (solareFiscale != bdgAnnoSolare && isBlank(dataInizio)) return 0;
    const int inizio = solareFiscale == bdgAnnoSolare ? 1 : values::toDate(dataInizio).month();
    const int relativo = meseRelativo(mese, inizio);
    return static_cast<std::int16_t>((relativo + p->mesi - 1) / p->mesi);
  });
}

void Calendario::GetBdgDataInizioBdgDataFine(BdgTipo, const Variant&, const Variant& ditta, const Variant& anno,
                                             const Variant& progressivo, Variant& dataInizio, Variant& dataFine) const {
  esegui(ctx_, "GetBdgDataInizioBdgDataFine ", [&] {
    // The dates of another year must not stand for those of a year that does not exist.
    auto& inizio = ctx_.dataInizioEsercizio = Variant();
    auto& fine = ctx_.dataFineEsercizio = Variant();
    DeterminaDateInizioFineEsercizio(ditta, values::nvl(anno, 0), values::nvl(progressivo, 0), inizio, fine);
    Variant primo = inizio, ultimo = fine;
    if (!isBlank(inizio) && !isBlank(fine)) {
      const auto da = values::toDate(inizio);
      if (values::monthsBetween(da, values::toDate(fine)) >= kMesiAnno) {
        primo = da.firstOfMonth();
        ultimo = da.firstOfMonth().addMonths(kMesiAnno).addDays(-1);
      }
    }
    dataInizio = primo;
    dataFine = ultimo;
  });
}

}  // namespace bukorval
