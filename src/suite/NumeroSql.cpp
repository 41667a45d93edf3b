#include "suite/NumeroSql.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "values/Conversion.h"

namespace suite {
namespace {

constexpr std::string_view kSpazi = " \t\r\n";

bool cifra(char c) { return c >= '0' && c <= '9'; }

/// Steps over the digits at the front; gives how many there were.
std::size_t salta(std::string_view& testo) {
  const auto fine = std::ranges::find_if_not(testo, cifra);
  const auto quante = static_cast<std::size_t>(fine - testo.begin());
  testo.remove_prefix(quante);
  return quante;
}

bool salta(std::string_view& testo, std::string_view uno) {
  if (testo.empty() || uno.find(testo.front()) == std::string_view::npos) return false;
  testo.remove_prefix(1);
  return true;
}

bool letterale(std::string_view testo) {
  salta(testo, "+-");
  auto cifre = salta(testo);
  if (salta(testo, ".")) cifre += salta(testo);
  if (cifre == 0) return false;
  if (!salta(testo, "eE")) return testo.empty();
  salta(testo, "+-");
  return salta(testo) > 0 && testo.empty();
}

std::string_view senzaSpazi(std::string_view testo) {
  const auto inizio = testo.find_first_not_of(kSpazi);
  if (inizio == std::string_view::npos) return {};
  return testo.substr(inizio, testo.find_last_not_of(kSpazi) + 1 - inizio);
}

}  // namespace

std::optional<std::string> numeroSql(const values::Variant& valore) {
  auto testo = values::toPlainText(valore);
  const auto numero = senzaSpazi(testo);
  if (!numero.empty() && !letterale(numero)) return std::nullopt;
  return testo;
}

}  // namespace suite
