#include "host/Segnalazioni.h"

#include <algorithm>

#include "host/Errori.h"

namespace bukorval::host {

void Segnalazioni::aggiungi(std::string_view file, std::size_t linea, std::string_view testo) {
  testi_.push_back(std::string(file).append(":").append(std::to_string(linea)).append(": ").append(testo));
}

void Segnalazioni::verifica() const {
  constexpr std::size_t kMostrate = 100;
  if (testi_.empty()) return;
  std::string tutto;
  for (std::size_t i = 0; i < std::min(kMostrate, testi_.size()); ++i) tutto += testi_[i] + '\n';
  if (testi_.size() > kMostrate) tutto += "... and " + std::to_string(testi_.size() - kMostrate) + " more\n";
  const std::string numero = testi_.size() == 1 ? "1 problem" : std::to_string(testi_.size()) + " problems";
  throw Rifiuto(tutto + numero + ": nothing was imported");
}

}  // namespace bukorval::host
