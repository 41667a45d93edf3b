#pragma once

#include "frame/Contesto.h"

namespace bukorval {

/// Whether the client has set every property that the operation named by `TipoElaborazioneBO` needs. Stops at
/// the first one that is Empty, Null or blank. Outcome: 1 with the property's label and " : Dato non definito
/// nel BO ".
bool IsDatiInputValidi(Contesto& ctx);

}  // namespace bukorval
