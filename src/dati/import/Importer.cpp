#include "dati/import/Importer.h"

#include <vector>

#include "suite/Sessione.h"
#include "values/Conversion.h"

namespace bukorval::host {

Importazione::Importazione(Ambiente& a)
    : ambiente(a),
      archivio(*a.connessione(), a.sessione().CodiceDitta(), a.sessione().CodicePdcCoGe()),
      separatore(a.sessione().SeparatoreDecimale()) {}

bool Importazione::haConto(const std::string& conto) {
  if (conti.contains(conto) || contiNoti_.contains(conto)) return true;
  if (!archivio.haConto(conto)) return false;
  contiNoti_.insert(conto);
  return true;
}

bool Importazione::haSede(const values::Variant& sede) {
  const int codice = values::toInt32(sede);
  if (sedi.contains(codice) || sediNote_.contains(codice)) return true;
  if (!archivio.haSede(sede)) return false;
  sediNote_.insert(codice);
  return true;
}

std::span<const GenereImportazione> generiImportazione() {
  static const std::vector<GenereImportazione> kGeneri{importaConti(), importaSedi(), importaDefinizioni(),
                                                       importaMovimenti(), importaValori()};
  return kGeneri;
}

std::string conta(std::size_t numero, const std::string& nome) {
  return std::to_string(numero) + " " + nome + (numero == 1 ? "" : "s");
}

}  // namespace bukorval::host
