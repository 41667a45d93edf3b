#include "dati/RowInsert.h"
#include "dati/import/Importer.h"
#include "host/Errors.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

enum : std::size_t {
  kTipo,
  kSottotipo,
  kDescrizione,
  kStruttura,
  kSedi,
  kPeriodicita,
  kSolare,
  kForecast,
  kQta1,
  kQta2
};
const ModelloCsv kModello{"definitions",
                          {{"type", TipoCsv::Intero, true, 1, "0 to 9"},
                           {"subtype", TipoCsv::Testo, true, 2, ""},
                           {"description", TipoCsv::Testo, false, 40, ""},
                           {"structure", TipoCsv::Testo, true, 120, "element codes of three letters"},
                           {"per_site", TipoCsv::Intero, false, 1, "1 for cards per site"},
                           {"periodicity", TipoCsv::Intero, false, 1,
                            "0 monthly, 1 two months, 2 quarters, 3 four months, 4 half-years, 5 year"},
                           {"from_january", TipoCsv::Intero, false, 1, "0 for months from the accounting year's first"},
                           {"forecasts", TipoCsv::Intero, false, 1, "how many"},
                           {"quantity1", TipoCsv::Intero, false, 1, "1 when it is kept"},
                           {"quantity2", TipoCsv::Intero, false, 1, "1 when it is kept"}}};

class Definizioni : public Importatore {
 public:
  void leggi(const std::string& file, Importazione& importazione) override {
    lotto_ = leggiCsv(file, kModello, importazione.separatore, importazione.segnalazioni);
    std::set<std::string> viste;
    for (const auto& riga : lotto_.righe) {
      if (riga.valori[kTipo].isEmpty() || riga.valori[kSottotipo].isEmpty()) continue;
      const auto nome = values::toText(riga.valori[kTipo]) + " " + values::toText(riga.valori[kSottotipo]);
      const bool doppia = !viste.insert(nome).second;
      if (doppia || importazione.archivio.haBudget(riga.valori[kTipo], riga.valori[kSottotipo])) {
        importazione.segnalazioni.aggiungi(file, riga.linea, "budget " + nome + " is defined already");
      }
      if (values::toText(riga.valori[kStruttura]).size() % 3 != 0) {
        importazione.segnalazioni.aggiungi(file, riga.linea, "column structure: codes of three letters are needed");
      }
    }
  }

  void scrivi(Importazione& importazione) override {
    for (const auto& riga : lotto_.righe) {
      const auto numero = [&](std::size_t campo, int altrimenti) {
        return values::nvl(riga.valori[campo], altrimenti);
      };
      RigaDati("BU01_ANABUDGET")
          .colonna("BU01_INDTIPO", riga.valori[kTipo])
          .colonna("BU01_SOTTOTIPO", riga.valori[kSottotipo])
          .colonna("BU01_DESCR", riga.valori[kDescrizione])
          .colonna("BU01_STRUTTURA", riga.valori[kStruttura])
          .colonna("BU01_FLGSEDI", numero(kSedi, 0))
          .colonna("BU01_INDPERIODO", numero(kPeriodicita, 0))
          .colonna("BU01_INDPERFISO", numero(kSolare, 1))
          .colonna("BU01_NUMFORECAST", numero(kForecast, 0))
          .colonna("BU01_FLGGESQTA", numero(kQta1, 0))
          .colonna("BU01_FLGGESQTA2", numero(kQta2, 0))
          .inserisci(importazione.archivio.connessione());
    }
  }

  std::string esito() const override { return conta(lotto_.righe.size(), "budget definition"); }

 private:
  LottoCsv lotto_;
};

}  // namespace

GenereImportazione importaDefinizioni() {
  return {kModello.nome, elencoColonne(kModello),
          []() -> std::unique_ptr<Importatore> { return std::make_unique<Definizioni>(); }};
}

}  // namespace bukorval::host
