#pragma once

#include <cstdint>

#include "frame/Contesto.h"

namespace bukorval {

/// The values of a card, one detail row per kind and period.
class ValoriScheda {
 public:
  explicit ValoriScheda(Contesto& ctx) : ctx_(ctx) {}

  /// Writes one value and stamps the card's last update.
  /// @param dettaglio     the detail row (BU66_ID); Null or 0 inserts one.
  /// @param scheda        the card (BU65_ID).
  /// @param tipo          0 budget, 1 actuals, 2 orders, 2 + n forecast n.
  /// @param tipoValore    0 amount (2 decimals), 1 and 2 quantities (3 decimals).
  /// @param periodo       1 to the periods of the year.
  /// @param valore        a number of any kind or as text with comma or point; blank clears the value. Text that is no
  ///                      number is an error (99) and nothing is written.
  /// @param nuovoDettaglio  receives the identity of an inserted row.
  /// No transaction: a value whose stamp fails stays written. Writes BU66_DETBUDGET, BU65_TESBUDGET.
  void AggiornaSingoloValoreBU66(const values::Variant& dettaglio, const values::Variant& scheda, BdgTipoDettaglio tipo,
                                 BdgTipoValore tipoValore, std::int16_t periodo, const values::Variant& valore,
                                 values::Variant& nuovoDettaglio);

  /// Clears the values of a card's detail kind (99: every kind), keeping the rows. Writes BU66_DETBUDGET.
  void UpdateNullValoriBU66(const values::Variant& scheda, BdgTipoDettaglio tipo);

  /// Whether the card has a row for the kind and period.
  /// @param dettaglio       receives its BU66_ID, 0 without one.
  /// @param importoIsNull   receives whether its amount is missing, true without a row.
  /// Reads BU66_DETBUDGET.
  bool GetBdgDettaglioEsiste(const values::Variant& scheda, BdgTipoDettaglio tipo, int periodo,
                             values::Variant& dettaglio, values::Variant& importoIsNull);

 private:
  Contesto& ctx_;
};

}  // namespace bukorval
