#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

#include "values/Variant.h"

namespace bukorval {

/// Builds the text of a statement. Each line of the statement is one line of code; the line break is added here.
class TestoSql {
 public:
  /// Fragments that form one line, then CR LF.
  template <class... Parti>
  TestoSql& riga(const Parti&... parti) {
    (testo_.append(parti), ...);
    testo_.append("\r\n");
    return *this;
  }
  /// Fragments with no line break after them.
  template <class... Parti>
  TestoSql& testo(const Parti&... parti) {
    (testo_.append(parti), ...);
    return *this;
  }
  const std::string& str() const { return testo_; }
  operator std::string_view() const { return testo_; }

 private:
  std::string testo_;
};

/// The words by which values enter a statement. None lets a value bring SQL of its own: what is no number where one is
/// due refuses the operation (Stato 1), a text ends where its quotes end.

/// A number without quotes, its text as it stands; Null, Empty and blank texts as they are. Refuses any other value.
std::string numero(const values::Variant& valore);
template <std::integral T>
std::string numero(T valore) {
  return std::to_string(valore);
}
/// An identifier as a statement carries it: a whole number in digits. Throws for Null and for anything that is no
/// whole number, so that no other text gets between a key and its value.
std::string identificativo(const values::Variant& valore);
/// A text between single quotes, inner quotes doubled; Null and Empty as ''.
std::string testoDati(const values::Variant& valore);
/// The pattern of LIKE, between its quotes, for the texts that begin with this one.
std::string modelloPrefisso(std::string_view prefisso);
/// A code between single quotes, padded with blanks to its width (BFill).
std::string apiciRiempiti(const values::Variant& valore, int larghezza);
/// A value of a detail: "NULL" for a blank, else its text with a decimal point; of a text every comma is a point, and
/// one that then is no number throws.
std::string valoreDecimale(const values::Variant& valore);
/// A condition on the movements (`TipoMovimenti`), as it stands, to be put between parentheses. Refuses what is no
/// condition over their columns alone; a blank one is left to the database.
std::string condizioneMovimenti(std::string_view condizione);

}  // namespace bukorval
