#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "values/Errore.h"

/// The encodings that text files come in.
namespace bukorval::dati {

/// Those that a file can be said to have; the first one is what it has when nothing is said.
std::span<const std::string_view> encodings();

/// A text that is not in the encoding it should have.
struct EncodingFault : values::Errore {
  EncodingFault(std::size_t lineOfFault, const std::string& what) : values::Errore(what), line(lineOfFault) {}
  std::size_t line;  ///< from 1
};

/// A file's bytes as UTF-8; a byte-order mark of UTF-8 stays. Throws EncodingFault for bytes that the encoding does not
/// have and for characters that are zero, which no text has; Errore for an encoding that is none.
std::string toUtf8(std::string bytes, std::string_view encoding);

/// Lines of a text end with LF, CR LF or CR.
std::size_t lineEnds(std::string_view text);

}  // namespace bukorval::dati
