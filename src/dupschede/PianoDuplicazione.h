#pragma once

#include "frame/Contesto.h"

namespace bukorval {

/// What one duplication knows about its two budgets; worked out once, before the first card.
struct PianoDuplicazione {
  bool sedeOrigine = false;       ///< the source budget is per site
  bool sedeDestinazione = false;  ///< the destination budget is per site
  values::Variant inizioOrigine, inizioDestinazione, fineDestinazione;
  values::Date adesso;  ///< update stamp of the cards that the run creates
};

/// The two ends of one card's copy.
struct CopiaScheda {
  values::Variant origine;       ///< BU65_ID of the source card
  values::Variant destinazione;  ///< BU65_ID of the destination card
  bool nuova = false;            ///< the destination was created by this run
};

}  // namespace bukorval
