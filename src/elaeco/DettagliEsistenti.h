#pragma once

#include <string>

#include "frame/Contesto.h"

namespace bukorval {

/// The text that reads the cards of the selection with their details of kind TipoDettaglioDestinazione, for the
/// account range. Reads BU65_TESBUDGET, BU66_DETBUDGET.
std::string testoDettagliEsistenti(Contesto& ctx);

}  // namespace bukorval
