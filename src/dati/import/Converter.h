#pragma once

#include <string>
#include <string_view>

namespace bukorval::dati {

/// Appends what it can of a text in one of the encodings() as UTF-8; false at bytes that the encoding does not have.
/// One source file a platform implements it. Throws values::Errore for an encoding that the system does not know.
bool convertToUtf8(std::string& bytes, std::string_view encoding, std::string& text);

}  // namespace bukorval::dati
