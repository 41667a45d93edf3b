#pragma once

#include <string>
#include <string_view>

namespace bukorval::dati {

/// A number that somebody typed, with a point: see values::typedNumber. Throws values::Errore, in the chosen language.
std::string typedNumber(std::string_view text, char separator);

}  // namespace bukorval::dati
