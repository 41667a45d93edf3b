#include "dati/import/Problems.h"

#include <algorithm>
#include <tuple>

#include "host/Errors.h"

namespace bukorval::host {

void Segnalazioni::aggiungi(std::string_view file, std::size_t linea, std::string_view testo) {
  segnalazioni_.push_back({std::string(file), linea, std::string(testo)});
}

void Segnalazioni::verifica() const {
  constexpr std::size_t kMostrate = 100;
  const auto numero = segnalazioni_.size();
  if (numero == 0) return;
  auto ordinate = segnalazioni_;
  std::ranges::stable_sort(ordinate, {}, [](const auto& s) { return std::tie(s.file, s.linea); });
  std::string tutto = (numero == 1 ? "1 problem" : std::to_string(numero) + " problems") + ", nothing was imported:";
  for (std::size_t i = 0; i < std::min(kMostrate, numero); ++i) {
    tutto += '\n' + ordinate[i].file + ':' + std::to_string(ordinate[i].linea) + ": " + ordinate[i].testo;
  }
  if (numero > kMostrate) tutto += "\n... and " + std::to_string(numero - kMostrate) + " more";
  throw Rifiuto(tutto);
}

}  // namespace bukorval::host
