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
  std::size_t numero() const { return segnalazioni_.size(); }
  /// Throws Rifiuto with the list by file and line (the first hundred) when there is any; nothing must have
  /// been written yet.
  void verifica() const;

 private:
  struct Segnalazione {
    std::string file;
    std::size_t linea;
    std::string testo;
  };
  std::vector<Segnalazione> segnalazioni_;
};

}  // namespace bukorval::host
