#include "dati/import/CsvModel.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>

#include "dati/import/CsvReader.h"
#include "host/Errors.h"
#include "values/Conversion.h"
#include "values/Errore.h"
#include "values/Text.h"

namespace bukorval::host {
namespace {

values::Errore inaccettabile(std::string_view testo, const std::string& perche) {
  return values::Errore("'" + std::string(testo) + "' " + perche);
}

values::Variant leggiDecimale(std::string_view testo, int interi, int decimali, char separatore) {
  values::Decimal numero;
  try {
    numero = values::toDecimal(testo, separatore).normalized();
  } catch (const values::Errore&) {
    throw inaccettabile(testo, "is not a number");
  }
  if (numero.scale() > decimali) throw inaccettabile(testo, "has more than " + std::to_string(decimali) + " decimals");
  if (numero.integerDigits() > interi) throw inaccettabile(testo, "is too large");
  return numero;
}

values::Variant leggiIntero(std::string_view testo, int cifre) {
  const bool soloCifre = std::ranges::all_of(testo, [](char c) { return c >= '0' && c <= '9'; });
  if (!soloCifre) throw inaccettabile(testo, "is not a whole number");
  if (testo.size() > static_cast<std::size_t>(cifre))
    throw inaccettabile(testo, "has more than " + std::to_string(cifre) + " digits");
  return std::stoll(std::string(testo));
}

/// For each field of the file, its position in the model; nothing for a column the model does not know.
std::vector<std::optional<std::size_t>> mappa(const LettoreCsv& lettore, const ModelloCsv& modello,
                                              const std::string& file, Segnalazioni& segnalazioni) {
  std::vector<std::optional<std::size_t>> posizioni;
  std::vector<bool> presenti(modello.campi.size());
  for (const auto& nome : lettore.intestazione()) {
    auto& posizione = posizioni.emplace_back();
    for (std::size_t i = 0; i < modello.campi.size(); ++i) {
      if (values::compareText(modello.campi[i].nome, nome) == 0) posizione = i;
    }
    if (!posizione) {
      segnalazioni.aggiungi(file, 1, "unknown column '" + nome + "'");
    } else if (presenti[*posizione]) {
      segnalazioni.aggiungi(file, 1, "column '" + nome + "' stands twice");
    } else {
      presenti[*posizione] = true;
    }
  }
  for (std::size_t i = 0; i < presenti.size(); ++i) {
    if (presenti[i] || !modello.campi[i].obbligatorio) continue;
    segnalazioni.aggiungi(file, 1, "column '" + std::string(modello.campi[i].nome) + "' is missing");
  }
  return posizioni;
}

void leggiRiga(RigaCsv& riga, const std::vector<std::string>& campi,
               const std::vector<std::optional<std::size_t>>& posizioni, const ModelloCsv& modello, char separatore,
               const std::string& file, Segnalazioni& segnalazioni) {
  for (std::size_t i = 0; i < campi.size(); ++i) {
    if (!posizioni[i]) continue;
    const auto& campo = modello.campi[*posizioni[i]];
    try {
      riga.valori[*posizioni[i]] = leggiValore(campi[i], campo, separatore);
    } catch (const values::Errore& e) {
      segnalazioni.aggiungi(file, riga.linea, "column " + std::string(campo.nome) + ": " + e.what());
    }
  }
}

}  // namespace

std::string elencoColonne(const ModelloCsv& modello) {
  std::string elenco;
  for (const auto& campo : modello.campi) {
    std::string voce(campo.nome);
    if (!campo.aiuto.empty()) voce.append(": ").append(campo.aiuto);
    if (!campo.obbligatorio) voce = '[' + voce + ']';
    elenco += (elenco.empty() ? "" : ", ") + voce;
  }
  return elenco;
}

values::Variant leggiValore(std::string_view testo, const CampoCsv& campo, char separatore) {
  testo = values::trim(testo);
  if (testo.empty()) {
    if (campo.obbligatorio) throw values::Errore("a value is needed");
    return {};
  }
  switch (campo.tipo) {
    case TipoCsv::Intero: return leggiIntero(testo, campo.larghezza);
    case TipoCsv::Importo: return leggiDecimale(testo, 13, 2, separatore);
    case TipoCsv::Quantita: return leggiDecimale(testo, 11, 3, separatore);
    case TipoCsv::Data:
      if (const auto data = values::Date::TryParse(testo)) return *data;
      throw inaccettabile(testo, "is not a date");
    case TipoCsv::Testo: break;
  }
  if (values::length(testo) > static_cast<std::size_t>(campo.larghezza)) {
    throw inaccettabile(testo, "has more than " + std::to_string(campo.larghezza) + " characters");
  }
  return testo;
}

LottoCsv leggiCsv(const std::string& file, const ModelloCsv& modello, char separatore, Segnalazioni& segnalazioni) {
  std::ifstream ingresso(file, std::ios::binary);
  std::error_code ignorato;
  if (!ingresso || std::filesystem::is_directory(file, ignorato)) throw Rifiuto("Cannot open " + file);
  LottoCsv lotto{file, {}};
  LettoreCsv lettore(ingresso);
  const auto prima = segnalazioni.numero();
  const auto posizioni = mappa(lettore, modello, file, segnalazioni);
  if (segnalazioni.numero() > prima) return lotto;  // the lines cannot be told apart
  std::vector<std::string> campi;
  while (lettore.prossima(campi)) {
    if (campi.size() != posizioni.size()) {
      segnalazioni.aggiungi(
          file, lettore.linea(),
          std::to_string(campi.size()) + " fields where the header has " + std::to_string(posizioni.size()));
      continue;
    }
    lotto.righe.push_back({lettore.linea(), std::vector<values::Variant>(modello.campi.size())});
    leggiRiga(lotto.righe.back(), campi, posizioni, modello, separatore, file, segnalazioni);
  }
  return lotto;
}

}  // namespace bukorval::host
