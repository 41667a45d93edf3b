#include "host/Stampa.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>

#include "host/StampaFormati.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

std::string campoCsv(const std::string& testo) {
  if (testo.find_first_of(",\"\r\n") == std::string::npos) return testo;
  std::string citato = "\"";
  for (const char c : testo) citato.append(c == '"' ? 2 : 1, c);
  return citato + '"';
}

/// A double carries every number of up to 15 digits unchanged; a longer one goes as text rather than lose a digit.
nlohmann::ordered_json numeroJson(const std::string& testo) {
  constexpr std::size_t kCifreSicure = 15;
  const auto cifre = static_cast<std::size_t>(std::ranges::count_if(testo, [](char c) { return c >= '0' && c <= '9'; }));
  if (cifre > kCifreSicure) return testo;
  if (testo.find('.') == std::string::npos) return std::stoll(testo);
  return std::stod(testo);
}

nlohmann::ordered_json valoreJson(const values::Variant& valore, const Colonna& colonna) {
  if (valore.isNothing()) return nullptr;
  if (const auto* logico = valore.get_if<bool>()) return *logico;
  const std::string testo = testoPiano(valore, colonna);
  return valore.isNumber() ? numeroJson(testo) : nlohmann::ordered_json(testo);
}

}  // namespace

void stampaCsv(std::ostream& uscita, const Tabella& tabella) {
  for (std::size_t i = 0; i < tabella.colonne.size(); ++i) {
    uscita << (i > 0 ? "," : "") << campoCsv(tabella.colonne[i].nome);
  }
  uscita << '\n';
  for (const auto& riga : tabella.righe) {
    for (std::size_t i = 0; i < riga.size(); ++i) {
      uscita << (i > 0 ? "," : "") << campoCsv(testoPiano(riga[i], tabella.colonne[i]));
    }
    uscita << '\n';
  }
}

void stampaJson(std::ostream& uscita, const Tabella& tabella) {
  auto righe = nlohmann::ordered_json::array();
  for (const auto& riga : tabella.righe) {
    auto& oggetto = righe.emplace_back(nlohmann::ordered_json::object());
    for (std::size_t i = 0; i < riga.size(); ++i) oggetto[tabella.colonne[i].nome] = valoreJson(riga[i], tabella.colonne[i]);
  }
  uscita << righe.dump(2) << '\n';
}

void stampa(std::ostream& uscita, const Tabella& tabella, const OpzioniStampa& opzioni) {
  switch (opzioni.formato) {
    case Formato::Tabella:
      return stampaAllineata(uscita, tabella, opzioni);
    case Formato::Csv:
      return stampaCsv(uscita, tabella);
    case Formato::Json:
      return stampaJson(uscita, tabella);
  }
}

}  // namespace bukorval::host
