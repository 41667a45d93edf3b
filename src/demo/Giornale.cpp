#include "demo/Giornale.h"

#include "values/Variant.h"

namespace demo {
namespace {

constexpr int kRateoRisconto = 1;

}  // namespace

void Giornale::registra(const Registrazione& testata, const std::vector<Riga>& righe) {
  ++numero_;
  scriviTestata(testata);
  int numero = 0;
  for (const auto& riga : righe) {
    scriviRiga(testata, riga, ++numero);
    if (testata.tipoMovimento != 0 || testata.provenienza != 0 || !riga.causale.empty()) continue;
    auto& mesi = saldi_[{testata.data.year(), testata.sede}][riga.conto];
    mesi[static_cast<std::size_t>(testata.data.month() - 1)] += riga.importo;
  }
}

void Giornale::scriviTestata(const Registrazione& testata) {
  RowInsert riga("CG41_PRIMANOTA");
  riga.set("CG41_DITTA_CG18", kDitta).set("CG41_NUMREG", numero_).set("CG41_DATAREG", testata.data);
  riga.set("CG41_ANNO_CG19", testata.data.year())
      .set("CG41_PROGESER_CG19", 1)
      .set("CG41_INDPROVREG", testata.provenienza);
  riga.set("CG41_CODICE_CG31", testata.sede)
      .set("CG41_INDTIPOMOV", testata.tipoMovimento)
      .set("CG41_DESCR", testata.descrizione);
  if (testata.clifor != 0) {
    riga.set("CG41_DATADOC", testata.data.addDays(-3)).set("CG41_NUMDOC", std::to_string(numero_ + 1000));
    riga.set("CG41_DITTACF_CG18", kDitta)
        .set("CG41_TIPOCF_CG44", testata.tipoCliFor)
        .set("CG41_CLIFOR_CG44", testata.clifor);
  }
  riga.run(connessione_);
}

void Giornale::scriviRiga(const Registrazione& testata, const Riga& riga, int numero) {
  const bool dare = riga.importo >= 0;
  RowInsert inserimento("CG42_MOVCONT");
  inserimento.set("CG42_DITTA_CG18", kDitta).set("CG42_NUMREG_CG41", numero_).set("CG42_NUMRIGACONT", numero);
  inserimento.set("CG42_GRUPPO_CG10", kPianoConti).set("CG42_CONTOPAR_CG24", riga.conto);
  inserimento.set("CG42_INDDAAV", dare ? 1 : 2).set("CG42_IMPTOTALE", euro(dare ? riga.importo : -riga.importo));
  inserimento.set("CG42_CODICE_CG33", riga.causale);
  if (riga.mesiCompetenza > 0) {
    const auto inizio = testata.data.firstOfMonth();
    inserimento.set("CG42_FLGCOMP", 1).set("CG42_INDRATRIS", kRateoRisconto).set("CG42_DATAINICOMP", inizio);
    inserimento.set("CG42_DATAFINCOMP", inizio.addMonths(riga.mesiCompetenza).addDays(-1));
  }
  inserimento.run(connessione_);
}

Mesi Giornale::saldi(int anno, int sede, std::string_view prefisso) const {
  Mesi totale{};
  for (const auto& [chiave, conti] : saldi_) {
    if (chiave.first != anno || (sede != 0 && chiave.second != sede)) continue;
    for (const auto& [conto, mesi] : conti) {
      if (!conto.starts_with(prefisso)) continue;
      for (std::size_t m = 0; m < mesi.size(); ++m) totale[m] += mesi[m];
    }
  }
  return totale;
}

}  // namespace demo
