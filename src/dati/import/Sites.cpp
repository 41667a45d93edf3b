#include "dati/import/Importer.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

enum : std::size_t { kCodice, kDescrizione };
const ModelloCsv kModello{
    "sites", {{"code", TipoCsv::Intero, true, 2, "1 to 99"}, {"description", TipoCsv::Testo, true, 40, ""}}};

class Sedi : public Importatore {
 public:
  void leggi(const std::string& file, Importazione& importazione) override {
    lotto_ = leggiCsv(file, kModello, importazione.separatore, importazione.segnalazioni);
    for (const auto& riga : lotto_.righe) {
      if (riga.valori[kCodice].isEmpty()) continue;
      if (!importazione.sedi.insert(values::toInt32(riga.valori[kCodice])).second) {
        importazione.segnalazioni.aggiungi(file, riga.linea,
                                           "site " + values::toText(riga.valori[kCodice]) + " stands twice");
      }
    }
  }

  void scrivi(Importazione& importazione) override {
    for (const auto& riga : lotto_.righe)
      importazione.archivio.scriviSede(riga.valori[kCodice], riga.valori[kDescrizione]);
  }

  std::string esito() const override { return conta(lotto_.righe.size(), "site"); }

 private:
  LottoCsv lotto_;
};

}  // namespace

GenereImportazione importaSedi() {
  return {kModello.nome, elencoColonne(kModello),
          []() -> std::unique_ptr<Importatore> { return std::make_unique<Sedi>(); }};
}

}  // namespace bukorval::host
