#pragma once

#include <memory>

#include "frame/Contesto.h"
#include "suite/Servizi.h"
#include "values/Date.h"

namespace bukorval {

/// The accounting situation component, set up once for a run and asked month by month.
class SituazioneMese {
 public:
  explicit SituazioneMese(Contesto& ctx);

  /// The balances of the month that begins on the given day. A failure of the component ends the running operation
  /// with 99 and a text that carries the component's own Stato and errore.
  ado::Recordset& leggi(const values::Date& inizioMese);

 private:
  void impostaSelezione();
  void impostaOpzioni();
  values::Date fineElaborazione(const values::Date& fineMese) const;

  Contesto& ctx_;
  std::shared_ptr<suite::SituazioneContabile> situazione_;
  values::Variant fineEsercizioMovimenti_;
};

}  // namespace bukorval
