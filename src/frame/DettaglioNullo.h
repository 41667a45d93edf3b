#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "frame/Enumerazioni.h"
#include "frame/TestoSql.h"

namespace bukorval {

/// The statements that create the details of one card, values Null, unless the card has them. The existence test makes
/// them safe to run again. A card has dozens of details: what does not change between them is built once.
/// Writes BU66_DETBUDGET.
class TestoDettaglioNullo {
 public:
  /// @param id  the card (BU65_ID).
  explicit TestoDettaglioNullo(const values::Variant& id) {
    const std::string scheda = numero(id);
    TestoSql inizio;
    inizio.riga(" IF NOT EXISTS ")
        .riga("         ( ")
        .riga("             SELECT  TOP 1 1 ")
        .riga("             FROM    BU66_DETBUDGET ")
        .riga("             WHERE   BU66_ID_BU65 = ", scheda)
        .testo("             AND     BU66_TIPO = ");
    TestoSql inserimento;
    inserimento.riga()
        .riga("         ) ")
        .riga(" BEGIN ")
        .riga("         INSERT INTO BU66_DETBUDGET ")
        .riga("         (   BU66_ID_BU65, ")
        .riga("             BU66_TIPO, ")
        .riga("             BU66_PERIODO ")
        .riga("         )   ")
        .riga("         VALUES  ")
        .testo("         (   ", scheda, ", ");
    testo_ = inizio.str();
    lunghezzaInizio_ = testo_.size();
    inserimento_ = inserimento.str();
    testo_.reserve(testo_.size() + inserimento_.size() + 128);
  }

  /// The statement for one detail; the view is valid until the next call.
  std::string_view dettaglio(BdgTipoDettaglio tipo, int periodo) {
    const std::string kind = numero(tipo);
    const std::string numeroPeriodo = numero(periodo);
    testo_.resize(lunghezzaInizio_);
    testo_.append(kind).append("\r\n             AND     BU66_PERIODO = ").append(numeroPeriodo).append(inserimento_);
    testo_.append(kind).append(", ").append(numeroPeriodo).append("\r\n         )   \r\n END ");
    return testo_;
  }

 private:
  std::string testo_, inserimento_;
  std::size_t lunghezzaInizio_ = 0;
};

/// The statement for a single detail.
inline std::string testoDettaglioNullo(const values::Variant& id, BdgTipoDettaglio tipo, int periodo) {
  return std::string(TestoDettaglioNullo(id).dettaglio(tipo, periodo));
}

}  // namespace bukorval
