#include "host/output/Json.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "host/output/Formats.h"

namespace bukorval::host {
namespace {

/// A double carries every number of up to 15 digits unchanged; a longer one goes as text rather than lose a
/// digit.
nlohmann::ordered_json numeroJson(const std::string& testo) {
  constexpr std::size_t kCifreSicure = 15;
  const auto cifre =
      static_cast<std::size_t>(std::ranges::count_if(testo, [](char c) { return c >= '0' && c <= '9'; }));
  if (cifre > kCifreSicure) return testo;
  if (testo.find('.') == std::string::npos) return std::stoll(testo);
  return std::stod(testo);
}

}  // namespace

nlohmann::ordered_json inJson(const values::Variant& valore, const Colonna& colonna) {
  if (valore.isNothing()) return nullptr;
  if (const auto* logico = valore.get_if<bool>()) return *logico;
  const std::string testo = testoPiano(valore, colonna);
  return valore.isNumber() ? numeroJson(testo) : nlohmann::ordered_json(testo);
}

nlohmann::ordered_json inJson(const Tabella& tabella) {
  auto righe = nlohmann::ordered_json::array();
  for (const auto& riga : tabella.righe) {
    auto& oggetto = righe.emplace_back(nlohmann::ordered_json::object());
    for (std::size_t i = 0; i < riga.size(); ++i)
      oggetto[tabella.colonne[i].nome] = inJson(riga[i], tabella.colonne[i]);
  }
  return righe;
}

}  // namespace bukorval::host
