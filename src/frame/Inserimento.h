#pragma once

#include <string>
#include <string_view>

namespace bukorval {

/// The two lists of an insert, column by column.
class Inserimento {
 public:
  /// @param valore  the value's text as the statement carries it: quoted, or NULL, or an expression.
  Inserimento& colonna(std::string_view nome, std::string_view valore) {
    const std::string_view separatore = colonne_.empty() ? "" : ", ";
    colonne_.append(separatore).append(nome);
    valori_.append(separatore).append(valore);
    return *this;
  }
  /// Whether the list holds the text of the name.
  bool contiene(std::string_view nome) const { return colonne_.find(nome) != std::string::npos; }

  const std::string& colonne() const { return colonne_; }
  const std::string& valori() const { return valori_; }

 private:
  std::string colonne_, valori_;
};

}  // namespace bukorval
