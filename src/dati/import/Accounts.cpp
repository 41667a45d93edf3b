#include <array>

#include "dati/import/Importer.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

enum : std::size_t { kCodice, kDescrizione, kNatura, kTotale };
const ModelloCsv kModello{"accounts",
                          {{"code", TipoCsv::Testo, true, 15, ""},
                           {"description", TipoCsv::Testo, true, 80, ""},
                           {"nature", TipoCsv::Testo, false, 10, "balance, revenue or cost"},
                           {"total", TipoCsv::Intero, false, 1, "1 for a total of accounts"}}};

/// By the value of CG24_INDCONTORICAV.
constexpr std::array<std::string_view, 3> kNature{"balance", "revenue", "cost"};

class Conti : public Importatore {
 public:
  void leggi(const std::string& file, Importazione& importazione) override {
    lotto_ = leggiCsv(file, kModello, importazione.separatore, importazione.segnalazioni);
    for (const auto& riga : lotto_.righe) {
      const auto codice = values::toText(riga.valori[kCodice]);
      if (codice.empty()) continue;
      if (!importazione.conti.insert(codice).second) {
        importazione.segnalazioni.aggiungi(file, riga.linea, "account " + codice + " stands twice");
      }
      if (natura(riga) == kNature.size()) {
        importazione.segnalazioni.aggiungi(
            file, riga.linea,
            "column nature: '" + values::toText(riga.valori[kNatura]) + "' is not balance, revenue or cost");
      }
    }
  }

  void scrivi(Importazione& importazione) override {
    for (const auto& riga : lotto_.righe) {
      const bool totale = values::toInt32(riga.valori[kTotale]) == 1;
      importazione.archivio.scriviConto(values::toText(riga.valori[kCodice]), riga.valori[kDescrizione],
                                        static_cast<int>(natura(riga)), totale ? 1 : 2);
    }
  }

  std::string esito() const override { return conta(lotto_.righe.size(), "account"); }

 private:
  /// Position in kNature; its size for a word that is none of them.
  static std::size_t natura(const RigaCsv& riga) {
    if (riga.valori[kNatura].isEmpty()) return 0;
    const auto parola = values::toText(riga.valori[kNatura]);
    std::size_t i = 0;
    while (i < kNature.size() && kNature[i] != parola) ++i;
    return i;
  }

  LottoCsv lotto_;
};

}  // namespace

GenereImportazione importaConti() {
  return {kModello.nome, elencoColonne(kModello),
          []() -> std::unique_ptr<Importatore> { return std::make_unique<Conti>(); }};
}

}  // namespace bukorval::host
