#include <string>

#include "definition/ImpostazioniBudget.h"
#include "definition/Slot.h"
#include "definition/Strutture.h"
#include "frame/Trappola.h"
#include "values/Conversion.h"
#include "values/Text.h"

/// The scans of a structure string: slots of three characters from the first one on.
namespace bukorval {
namespace {

using values::isBlank;
using values::Variant;

bool contiene(Contesto& ctx, BdgTipo tipo, const Variant& sottoTipo, std::string_view elemento) {
  if (isBlank(sottoTipo) || values::trim(elemento).empty()) return false;
  const auto struttura = Strutture(ctx).GetStruttura(tipo, sottoTipo);
  bool trovato = false;
  perOgniSlot(struttura, [&](std::string_view slot) { trovato = trovato || slot == elemento; });
  return trovato;
}

}  // namespace

bool ImpostazioniBudget::GetIsStrutturaConVariante(BdgTipo tipo, const Variant& sottoTipo) const {
  return esegui(ctx_, "GetIsStrutturaConVariante", false, [&] { return contiene(ctx_, tipo, sottoTipo, "VAR"); });
}

bool ImpostazioniBudget::GetIsElementoInStruttura(BdgTipo tipo, const Variant& sottoTipo,
                                                  std::string_view elemento) const {
  return esegui(ctx_, "GetIsElementoInStruttura", false, [&] { return contiene(ctx_, tipo, sottoTipo, elemento); });
}

std::int16_t ImpostazioniBudget::GetBdgNrElementiInStruttura(const Variant& struttura) const {
  return esegui(ctx_, "GetBdgNrElementiInStruttura", std::int16_t{0}, [&] {
    std::int32_t elementi = 0;
    if (!isBlank(struttura)) perOgniElemento(values::toText(struttura), [&](std::string_view) { ++elementi; });
    return values::toInt16(elementi);
  });
}

}  // namespace bukorval
