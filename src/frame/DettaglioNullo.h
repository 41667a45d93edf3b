#pragma once

#include <string>

#include "frame/Enumerazioni.h"
#include "frame/TestoSql.h"

namespace bukorval {

/// The statement that creates one detail of a card, values Null, unless the card has it. The existence test makes
/// it safe to run again. Writes BU66_DETBUDGET.
inline std::string testoDettaglioNullo(const values::Variant& id, BdgTipoDettaglio tipo, int periodo) {
  const std::string scheda = numero(id);
  const std::string kind = numero(tipo);
  const std::string numeroPeriodo = numero(periodo);
  TestoSql sql;
  sql.riga(" IF NOT EXISTS ")
      .riga("         ( ")
      .riga("             SELECT  TOP 1 1 ")
      .riga("             FROM    BU66_DETBUDGET ")
      .riga("             WHERE   BU66_ID_BU65 = ", scheda)
      .riga("             AND     BU66_TIPO = ", kind)
      .riga("             AND     BU66_PERIODO = ", numeroPeriodo)
      .riga("         ) ")
      .riga(" BEGIN ")
      .riga("         INSERT INTO BU66_DETBUDGET ")
      .riga("         (   BU66_ID_BU65, ")
      .riga("             BU66_TIPO, ")
      .riga("             BU66_PERIODO ")
      .riga("         )   ")
      .riga("         VALUES  ")
      .riga("         (   ", scheda, ", ", kind, ", ", numeroPeriodo)
      .riga("         )   ")
      .testo(" END ");
  return sql.str();
}

}  // namespace bukorval
