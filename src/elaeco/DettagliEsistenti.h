#pragma once

#include <string>
#include <string_view>

#include "frame/Contesto.h"

namespace bukorval {

/// The card column that holds the account, by chart kind.
std::string_view colonnaConto(BdgTipoPdc tipoPdc);

/// The text that reads the cards of the selection with their details of kind TipoDettaglioDestinazione, for the
/// account range. Reads BU65_TESBUDGET, BU66_DETBUDGET.
std::string testoDettagliEsistenti(Contesto& ctx);

}  // namespace bukorval
