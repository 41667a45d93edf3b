#include "dati/import/FinanceChart.h"

#include <algorithm>
#include <set>

#include "values/Text.h"

namespace bukorval::host {
namespace {

constexpr std::size_t kLarghezzaConto = 4;
constexpr std::size_t kLarghezzaDescrizione = 40;

std::string conZeri(const std::string& codice, std::size_t larghezza) {
  return std::string(larghezza - std::min(larghezza, codice.size()), '0') + codice;
}

int natura(const DatiFinance& dati, const std::string& conto) {
  const auto& tipo = dati.conti.at(conto).tipo;
  if (tipo == "Revenue") return 1;
  return tipo == "Expenditures" ? 2 : 0;
}

/// A group is called like its only account, else like the parent of its first one.
std::string nomeGruppo(const DatiFinance& dati, const std::set<std::string>& conti) {
  const auto& primo = dati.conti.at(*conti.begin());
  const auto padre = dati.conti.find(primo.padre);
  return conti.size() == 1 || padre == dati.conti.end() ? primo.descrizione : padre->second.descrizione;
}

}  // namespace

std::string contoFinance(const std::string& conto, int reparto) {
  return conZeri(conto, kLarghezzaConto) + conZeri(std::to_string(reparto), kLarghezzaConto);
}

std::string contoFinance(const ImportoFinance& importo) { return contoFinance(importo.conto, importo.reparto); }

std::string schedaFinance(const std::string& conto, int reparto) {
  return conZeri(conto, kLarghezzaConto) + conZeri(std::to_string(reparto), 2);
}

std::string descrizioneFinance(const DatiFinance& dati, const std::string& conto, int reparto) {
  const auto nome = dati.conti.at(conto).descrizione + " - " + dati.reparti.at(reparto);
  return std::string(values::rtrim(values::left(nome, kLarghezzaDescrizione)));
}

std::map<std::string, ContoSuite> contiFinance(const DatiFinance& dati) {
  std::map<std::string, ContoSuite> tutti;
  std::map<std::string, std::set<std::string>> gruppi;
  for (const auto& importo : dati.importi) {
    const auto& conto = importo.conto;
    const int tipo = natura(dati, conto);
    tutti[contoFinance(importo)] = {descrizioneFinance(dati, conto, importo.reparto), tipo, false};
    tutti[contoFinance(conto, 0)] = {dati.conti.at(conto).descrizione, tipo, true};
    gruppi[conZeri(conto, kLarghezzaConto).substr(0, 2)].insert(conto);
  }
  // 6000 and the group of the accounts 60xx share the code 60000000, which then is the group's.
  for (const auto& [gruppo, conti] : gruppi) {
    tutti[contoFinance(gruppo + "00", 0)] = {nomeGruppo(dati, conti), natura(dati, *conti.begin()), true};
  }
  return tutti;
}

}  // namespace bukorval::host
