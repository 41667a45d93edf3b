#pragma once

#include <functional>
#include <string>

#include "frame/Identita.h"

namespace bukorval {

/// Where trace lines go.
using CanaleTraccia = std::function<void(const std::string& riga)>;

/// Sends the trace lines of every instance to `canale` from now on; none brings the platform's debug channel
/// back.
void impostaCanaleTraccia(CanaleTraccia canale);

/// The two lines that bracket the life of an instance, "ZUMA:|" + identifier + "|INI|BUKORVAL|CLSKORVAL" and
/// the same with "TER". A channel that fails is ignored.
void tracciaCreazione(Identita& identita) noexcept;
void tracciaRilascio(Identita& identita) noexcept;

}  // namespace bukorval
