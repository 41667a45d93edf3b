#include "dupschede/DateDuplicazione.h"

#include "frame/Trappola.h"
#include "values/Conversion.h"

namespace bukorval {

values::Variant BdgDupSchede_AttualizzaData(Contesto& ctx, const values::Variant& data,
                                            const values::Variant& inizioOrigine,
                                            const values::Variant& inizioDestinazione) {
  return esegui(ctx, "BdgDupSchede_AttualizzaData", values::Variant(), [&]() -> values::Variant {
    if (values::isBlank(data)) return {};
    const auto giorno = values::toDate(data);
    const int mesi = values::monthsBetween(values::toDate(inizioOrigine), giorno);
    const auto spostata = values::toDate(inizioDestinazione).addMonths(mesi);
    if (giorno.day() == giorno.lastOfMonth().day()) return spostata.lastOfMonth();
    return values::Date::Serial(spostata.year(), spostata.month(), giorno.day());
  });
}

}  // namespace bukorval
