#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace bukorval {

/// Where the last level of an account code that is not all zeros stands: [inizio, fine) in the code. Both are 0 for
/// a code of zeros. What follows the last level of the table counts as one more level.
struct UltimoLivello {
  std::size_t inizio = 0;
  std::size_t fine = 0;
};

inline UltimoLivello ultimoLivello(std::string_view conto, const std::vector<int>& lunghezze) {
  UltimoLivello ultimo;
  std::size_t inizio = 0;
  const auto guarda = [&](std::string_view livello) {
    if (livello.find_first_not_of('0') != std::string_view::npos) ultimo = {inizio, inizio + livello.size()};
    inizio += livello.size();
  };
  for (const int lunghezza : lunghezze)
    if (inizio < conto.size()) guarda(conto.substr(inizio, static_cast<std::size_t>(lunghezza)));
  if (inizio < conto.size()) guarda(conto.substr(inizio));
  return ultimo;
}

}  // namespace bukorval
