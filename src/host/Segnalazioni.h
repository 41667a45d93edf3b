#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace bukorval::host {

/// What is wrong with the files of an import, gathered so that everything is told at once.
class Segnalazioni {
 public:
  void aggiungi(std::string_view file, std::size_t linea, std::string_view testo);
  bool vuote() const { return testi_.empty(); }
  /// Throws Rifiuto with the whole list (the first hundred) when there is any; nothing must have been written yet.
  void verifica() const;

 private:
  std::vector<std::string> testi_;
};

}  // namespace bukorval::host
