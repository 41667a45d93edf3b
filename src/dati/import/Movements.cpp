#include <map>
#include <optional>

#include "dati/import/Importer.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

enum : std::size_t { kNumero, kData, kConto, kSegno, kImporto, kSede, kTipo, kDocumento, kInizio, kFine, kDescrizione };
const ModelloCsv kModello{"movements",
                          {{"registration", TipoCsv::Intero, false, 9, "lines with one number belong together"},
                           {"date", TipoCsv::Data, true, 0, ""},
                           {"account", TipoCsv::Testo, true, 15, ""},
                           {"side", TipoCsv::Testo, false, 1, "D debit or C credit, by default D"},
                           {"amount", TipoCsv::Importo, true, 0, ""},
                           {"site", TipoCsv::Intero, false, 2, ""},
                           {"kind", TipoCsv::Intero, false, 1, "0 consolidated, 1 to be consolidated, 2 forecast"},
                           {"document_date", TipoCsv::Data, false, 0, ""},
                           {"competence_from", TipoCsv::Data, false, 0, ""},
                           {"competence_to", TipoCsv::Data, false, 0, ""},
                           {"description", TipoCsv::Testo, false, 60, ""}}};

class Movimenti : public Importatore {
 public:
  void leggi(const std::string& file, Importazione& importazione) override {
    lotto_ = leggiCsv(file, kModello, importazione.separatore, importazione.segnalazioni);
    for (const auto& riga : lotto_.righe) {
      for (const auto& problema : problemi(riga, importazione)) {
        importazione.segnalazioni.aggiungi(file, riga.linea, problema);
      }
    }
  }

  void scrivi(Importazione& importazione) override {
    auto prossimo = importazione.archivio.ultimaRegistrazione() + 1;
    struct Aperta {
      values::Variant numero;
      int righe;
    };
    std::map<std::string, Aperta> aperte;
    for (const auto& riga : lotto_.righe) {
      const auto& v = riga.valori;
      const auto nome = v[kNumero].isEmpty() ? "#" + std::to_string(riga.linea) : values::toText(v[kNumero]);
      auto [posizione, nuova] = aperte.try_emplace(nome, Aperta{prossimo, 0});
      if (nuova) {
        const auto anno = anni_.at(values::toDate(v[kData]));
        importazione.archivio.scrivi(Registrazione{prossimo++, v[kData], anno.anno, anno.progressivo, v[kSede],
                                                   values::nvl(v[kTipo], 0), v[kDocumento], v[kDescrizione]});
      }
      importazione.archivio.scrivi(RigaMovimento{posizione->second.numero, ++posizione->second.righe, v[kConto],
                                                 v[kSede], v[kInizio], v[kFine], avere(riga), v[kImporto]});
    }
    registrazioni_ = aperte.size();
  }

  std::string esito() const override {
    return conta(lotto_.righe.size(), "movement") + " in " + conta(registrazioni_, "registration");
  }

 private:
  static bool avere(const RigaCsv& riga) { return values::toText(riga.valori[kSegno]) == "C"; }

  std::vector<std::string> problemi(const RigaCsv& riga, Importazione& importazione) {
    const auto& v = riga.valori;
    std::vector<std::string> trovati;
    if (!v[kConto].isEmpty() && !importazione.haConto(values::toText(v[kConto]))) {
      trovati.push_back("no account " + values::toText(v[kConto]));
    }
    if (!v[kSede].isEmpty() && !importazione.haSede(v[kSede])) trovati.push_back("no site " + values::toText(v[kSede]));
    const auto segno = values::toText(v[kSegno]);
    if (!segno.empty() && segno != "D" && segno != "C") trovati.push_back("column side: '" + segno + "' is not D or C");
    if (!v[kInizio].isEmpty() && !v[kFine].isEmpty() && values::compare(v[kInizio], v[kFine]) > 0) {
      trovati.push_back("competence ends before it begins");
    }
    if (!v[kData].isEmpty() && !trovaAnno(values::toDate(v[kData]), importazione)) {
      trovati.push_back("no accounting year holds " + values::toText(v[kData]));
    }
    if (!v[kNumero].isEmpty() && !stessaTestata(riga)) {
      trovati.push_back("registration " + values::toText(v[kNumero]) + " has another date on line " +
                        std::to_string(testate_.at(values::toText(v[kNumero])).linea));
    }
    return trovati;
  }

  bool trovaAnno(const values::Date& data, Importazione& importazione) {
    if (anni_.contains(data)) return true;
    const auto anno = importazione.archivio.annoDi(data);
    if (anno) anni_.emplace(data, *anno);
    return anno.has_value();
  }

  /// The lines of one registration have its date.
  bool stessaTestata(const RigaCsv& riga) {
    const auto [prima, nuova] =
        testate_.try_emplace(values::toText(riga.valori[kNumero]), Testata{riga.linea, riga.valori[kData]});
    return nuova || prima->second.data == riga.valori[kData];
  }

  struct Testata {
    std::size_t linea;
    values::Variant data;
  };

  LottoCsv lotto_;
  std::map<values::Date, AnnoContabile> anni_;
  std::map<std::string, Testata> testate_;
  std::size_t registrazioni_ = 0;
};

}  // namespace

GenereImportazione importaMovimenti() {
  return {kModello.nome, elencoColonne(kModello),
          []() -> std::unique_ptr<Importatore> { return std::make_unique<Movimenti>(); }};
}

}  // namespace bukorval::host
