#include "dati/import/FinanceFolder.h"

#include <algorithm>
#include <filesystem>

#include "dati/import/CsvModel.h"
#include "host/Errors.h"
#include "values/Conversion.h"
#include "values/Errore.h"

namespace bukorval::host {
namespace {

constexpr char kPunto = '.';

const ModelloCsv kConti{"accounts",
                        {{"code", TipoCsv::Testo, true, 4, ""},
                         {"parent", TipoCsv::Testo, false, 4, ""},
                         {"description", TipoCsv::Testo, true, 80, ""},
                         {"type", TipoCsv::Testo, false, 20, ""},
                         {"operator", TipoCsv::Testo, false, 1, ""}}};

/// Sites and departments.
const ModelloCsv kCodici{"codes",
                         {{"code", TipoCsv::Intero, true, 2, ""},
                          {"parent", TipoCsv::Intero, false, 2, ""},
                          {"description", TipoCsv::Testo, true, 80, ""}}};

enum : std::size_t { kData, kSede, kReparto, kScenario, kConto, kImporto };
const ModelloCsv kImporti{"amounts",
                          {{"date", TipoCsv::Data, true, 0, ""},
                           {"site", TipoCsv::Intero, true, 2, ""},
                           {"department", TipoCsv::Intero, true, 2, ""},
                           {"scenario", TipoCsv::Testo, true, 10, ""},
                           {"account", TipoCsv::Testo, true, 4, ""},
                           {"amount", TipoCsv::Importo, true, 0, ""}}};

std::map<int, std::string> leggiCodici(const std::string& file, Segnalazioni& segnalazioni) {
  std::map<int, std::string> codici;
  for (const auto& riga : leggiCsv(file, kCodici, kPunto, segnalazioni).righe) {
    if (riga.valori[0].isEmpty()) continue;
    codici[values::toInt32(riga.valori[0])] = values::toText(riga.valori[2]);
  }
  return codici;
}

Scenario leggiScenario(const std::string& testo) {
  if (testo == "actual") return Scenario::Consuntivo;
  if (testo == "budget") return Scenario::Budget;
  if (testo == "forecast") return Scenario::Previsione;
  throw values::Errore("column scenario: '" + testo + "' is not actual, budget or forecast");
}

ImportoFinance leggiImporto(const RigaCsv& riga, const DatiFinance& dati) {
  ImportoFinance importo{
      meseDi(values::toDate(riga.valori[kData])), values::toInt32(riga.valori[kSede]),
      values::toInt32(riga.valori[kReparto]),     leggiScenario(values::toText(riga.valori[kScenario])),
      values::toText(riga.valori[kConto]),        values::toDecimal(riga.valori[kImporto])};
  if (!dati.conti.contains(importo.conto)) throw values::Errore("no account " + importo.conto);
  if (!dati.sedi.contains(importo.sede)) throw values::Errore("no site " + std::to_string(importo.sede));
  if (!dati.reparti.contains(importo.reparto)) {
    throw values::Errore("no department " + std::to_string(importo.reparto));
  }
  return importo;
}

bool completa(const RigaCsv& riga) {
  return std::ranges::none_of(riga.valori, [](const auto& valore) { return valore.isEmpty(); });
}

}  // namespace

bool DatiFinance::eRicavo(const std::string& conto) const {
  const auto& tipo = conti.at(conto).tipo;
  return tipo == "Revenue" || tipo == "Liabilities";
}

bool DatiFinance::haPrevisioni() const {
  return std::ranges::any_of(importi, [](const auto& importo) { return importo.scenario == Scenario::Previsione; });
}

values::Date meseDi(const values::Date& giorno) {
  return (giorno.day() <= 15 ? giorno.addMonths(-1) : giorno).lastOfMonth();
}

DatiFinance leggiFinance(const std::string& cartella, Segnalazioni& segnalazioni) {
  if (!std::filesystem::is_directory(cartella)) {
    throw Rifiuto("There is no folder " + cartella +
                  ": give the one that holds amounts.csv, accounts.csv, sites.csv and departments.csv");
  }
  const auto file = [&](const char* nome) { return (std::filesystem::path(cartella) / nome).string(); };
  DatiFinance dati;
  for (const auto& riga : leggiCsv(file("accounts.csv"), kConti, kPunto, segnalazioni).righe) {
    if (riga.valori[0].isEmpty()) continue;
    const auto testo = [&](std::size_t campo) { return values::toText(riga.valori[campo]); };
    dati.conti[testo(0)] = {testo(1), testo(2), testo(3)};
  }
  dati.sedi = leggiCodici(file("sites.csv"), segnalazioni);
  dati.reparti = leggiCodici(file("departments.csv"), segnalazioni);
  const auto importi = leggiCsv(file("amounts.csv"), kImporti, kPunto, segnalazioni);
  dati.importi.reserve(importi.righe.size());
  for (const auto& riga : importi.righe) {
    if (!completa(riga)) continue;
    try {
      dati.importi.push_back(leggiImporto(riga, dati));
    } catch (const values::Errore& e) {
      segnalazioni.aggiungi(importi.file, riga.linea, e.what());
    }
  }
  return dati;
}

}  // namespace bukorval::host
