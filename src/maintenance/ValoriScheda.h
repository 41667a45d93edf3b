#pragma once

#include <cstdint>
#include <string>

#include "frame/Contesto.h"

namespace bukorval {

/// The values of a card, one detail row per kind and period.
/// The contracts of public members stand in object/CLSKORVAL.h.
class ValoriScheda {
 public:
  explicit ValoriScheda(Contesto& ctx) : ctx_(ctx) {}

  void AggiornaSingoloValoreBU66(const values::Variant& dettaglio, const values::Variant& scheda, BdgTipoDettaglio tipo,
                                 BdgTipoValore tipoValore, std::int16_t periodo, const values::Variant& valore,
                                 values::Variant& nuovoDettaglio);

  void UpdateNullValoriBU66(const values::Variant& scheda, BdgTipoDettaglio tipo);

  bool GetBdgDettaglioEsiste(const values::Variant& scheda, BdgTipoDettaglio tipo, int periodo,
                             values::Variant& dettaglio, values::Variant& importoIsNull);

 private:
  values::Variant inserisci(const std::string& scheda, BdgTipoDettaglio tipo, BdgTipoValore tipoValore,
                            std::int16_t periodo, const std::string& valore);

  Contesto& ctx_;
};

}  // namespace bukorval
