#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include "dati/DetailSnapshot.h"
#include "dati/WatchedRun.h"
#include "host/Environment.h"
#include "host/Errors.h"
#include "host/Progress.h"
#include "host/Selection.h"
#include "host/commands/Commands.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

using values::Variant;

/// What is not said of the destination is the source's.
void completaDestinazione(Ambiente& ambiente) {
  auto& oggetto = ambiente.oggetto();
  const auto completa = [](Variant& destinazione, const Variant& origine) {
    if (values::isBlank(destinazione)) destinazione = origine;
  };
  completa(oggetto.BdgDestinazioneSottoTipo, oggetto.SottoTipoBudget);
  completa(oggetto.BdgDestinazioneAnnoEsercizio, oggetto.AnnoEsercizio);
  completa(oggetto.BdgDestinazioneProgressivoEsercizio, oggetto.ProgressivoEsercizio);
  completa(oggetto.BdgDestinazioneCodiceSede, oggetto.CodiceSede);
}

/// Raises or lowers the copied amounts through the object's own update, one by one.
int applicaPercentuale(Ambiente& ambiente, const FotoDettagli& prima, const FotoDettagli& dopo,
                       const Variant& percentuale) {
  auto& oggetto = ambiente.oggetto();
  const Variant fattore =
      values::add(1, values::divide(values::toDecimal(percentuale), values::Decimal::FromScaled(100)));
  int cambiati = 0;
  for (const auto& [chiave, importo] : dopo.importi()) {
    if (importo.isNothing()) continue;
    const auto vecchio = prima.importi().find(chiave);
    if (vecchio != prima.importi().end() && !vecchio->second.isNothing() &&
        values::compare(vecchio->second, importo) == 0)
      continue;
    Variant dettaglio, senzaImporto, nuovo;
    oggetto.GetBdgDettaglioEsiste(chiave.scheda, oggetto.TipoDettaglioDestinazione, chiave.periodo, dettaglio,
                                  senzaImporto);
    ambiente.controlla();
    const Variant scostato = values::toDecimal(values::multiply(importo, fattore)).rounded(2);
    oggetto.AggiornaSingoloValoreBU66(dettaglio, chiave.scheda, oggetto.TipoDettaglioDestinazione, bdgValoreImporto,
                                      static_cast<std::int16_t>(chiave.periodo), scostato, nuovo);
    ambiente.controlla();
    ++cambiati;
  }
  return cambiati;
}

struct Opzioni {
  bool prova = false;
  std::string percentuale;
};

void duplica(Ambiente& ambiente, const Opzioni& opzioni) {
  richiediBudget(ambiente);
  if (opzioni.prova && !opzioni.percentuale.empty())
    throw ErroreUso("--percent changes what a run has written; it does not go with --dry-run");
  completaDestinazione(ambiente);
  auto& oggetto = ambiente.oggetto();
  const RitaglioDettagli ritaglio{{oggetto.CodiceDitta, oggetto.TipoBudget, oggetto.BdgDestinazioneSottoTipo,
                                   oggetto.BdgDestinazioneAnnoEsercizio, oggetto.BdgDestinazioneProgressivoEsercizio},
                                  oggetto.TipoDettaglioDestinazione};
  const auto vera = ambiente.connessione();
  const FotoDettagli prima(*vera, ritaglio);
  FotoDettagli dopo;
  oggetto.Connessione(
      std::make_shared<ConnessioneOsservata>(vera, opzioni.prova, [&] { dopo = FotoDettagli(*vera, ritaglio); }));
  Avanzamento avanzamento;
  avanzamento.collega(oggetto);
  oggetto.BdgDupSchede_Duplicazione();
  oggetto.Connessione(vera);
  ambiente.controlla();
  const auto cambiamenti = differenze(prima, dopo);
  if (opzioni.prova) return ambiente.mostra(cambiamenti);
  int scostati = 0;
  if (!opzioni.percentuale.empty()) scostati = applicaPercentuale(ambiente, prima, dopo, Variant(opzioni.percentuale));
  const auto nuove = static_cast<int>(dopo.schede().size()) - static_cast<int>(prima.schede().size());
  ambiente.mostra({{{"NUOVE", "New cards", true},
                    {"IMPORTI", "Amounts written", true},
                    {"SCOSTATI", "Amounts changed by --percent", true}},
                   {{nuove, cambiamenti.righe.size(), scostati}},
                   {}});
}

}  // namespace

Comando comandoDuplicate() {
  return {"duplicate", "Copy cards into another year, subtype or site",
          "  bukorval duplicate -d demo.db -t 4 -s 01 -y 2025 --BdgTipoScheda 0 --CodiceSede 1 \\\n"
          "      --BdgDestinazioneAnnoEsercizio 2026 --BdgDestinazioneProgressivoEsercizio 1 --percent 5\n"
          "What is not said of the destination is the source's. --IsSovrascriviEsistenti replaces values that\n"
          "destination cards have; --IsDuplicaScadenzeCashFlow makes their due dates.",
          [](CLI::App& app, Ambiente& ambiente) {
            auto opzioni = std::make_shared<Opzioni>();
            app.add_flag("--dry-run", opzioni->prova, "show the amounts it would write, and write nothing");
            app.add_option("--percent", opzioni->percentuale, "deviation applied to the copied amounts afterwards");
            app.callback([&ambiente, opzioni] { duplica(ambiente, *opzioni); });
          }};
}

}  // namespace bukorval::host
