#include <CLI/CLI.hpp>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "dati/DetailSnapshot.h"
#include "dati/WatchedRun.h"
#include "dati/import/Deviations.h"
#include "host/Arguments.h"
#include "host/Environment.h"
#include "host/Errors.h"
#include "host/Progress.h"
#include "host/Selection.h"
#include "host/commands/Commands.h"
#include "suite/Sessione.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval::host {
namespace {

using values::Variant;

struct Opzioni {
  std::string percentuale, filePercentuali;
  bool scrivi = false, prova = false;
};

/// The movements' year, dates and kinds when the command line does not say: all of the year before the budget's.
void completaInput(Ambiente& ambiente) {
  auto& oggetto = ambiente.oggetto();
  if (values::isBlank(oggetto.AnnoEsercizioMovimenti))
    oggetto.AnnoEsercizioMovimenti = values::toInt32(oggetto.AnnoEsercizio) - 1;
  if (values::isBlank(oggetto.ProgressivoEsercizioMovimenti)) oggetto.ProgressivoEsercizioMovimenti = 1;
  if (oggetto.TipoMovimenti.empty()) oggetto.TipoMovimenti = "1 = 1";
  if (values::isBlank(oggetto.CodicePdcCoGeDitta)) oggetto.CodicePdcCoGeDitta = ambiente.sessione().CodicePdcCoGe();
  if (!ambiente.scelte.proprieta.contains("TipoScostamento")) oggetto.TipoScostamento = bdgScostamentoNessuno;
  if (!values::isBlank(oggetto.DaData) && !values::isBlank(oggetto.AData)) return;
  Variant inizio, fine;
  oggetto.DeterminaDateInizioFineEsercizio(oggetto.CodiceDitta, oggetto.AnnoEsercizioMovimenti,
                                           oggetto.ProgressivoEsercizioMovimenti, inizio, fine);
  ambiente.controlla();
  if (values::isBlank(inizio))
    throw Rifiuto("There is no accounting year " + values::toPlainText(oggetto.AnnoEsercizioMovimenti));
  if (values::isBlank(oggetto.DaData)) oggetto.DaData = inizio;
  if (values::isBlank(oggetto.AData)) oggetto.AData = fine;
}

/// What the cards of each account hold now, by account and period.
class Presenti {
 public:
  Presenti(const FotoDettagli& foto, const Variant& sede) {
    for (const auto& [chiave, importo] : foto.importi()) {
      const auto& scheda = foto.schede().at(chiave.scheda);
      if (importo.isNothing() || !dellaSede(scheda.sede, sede)) continue;
      auto& presente = importi_[{chiaveConto(scheda.conto), chiave.periodo}];
      presente = presente.isNothing() ? importo : values::add(presente, importo);
    }
  }
  /// Null when they hold nothing.
  Variant importo(const Variant& conto, const Variant& periodo) const {
    const auto trovato = importi_.find({chiaveConto(conto), values::toInt32(periodo)});
    return trovato == importi_.end() ? Variant::Null() : trovato->second;
  }

 private:
  /// Without a site every card counts.
  static bool dellaSede(const Variant& sede, const Variant& cercata) {
    return values::isBlank(cercata) || (!values::isBlank(sede) && values::compare(sede, cercata) == 0);
  }
  static std::string chiaveConto(const Variant& conto) { return values::foldText(values::toPlainText(conto)); }
  std::map<std::pair<std::string, int>, Variant> importi_;
};

/// The proposed rows beside what the cards hold, and what writing them would add.
Tabella proposte(ado::Recordset& righe, const Presenti& presenti) {
  Tabella tabella{{{"CONTO", "Conto"},
                   {"DESCRIZIONE", "Descrizione"},
                   {"PERIODO", "Periodo", true},
                   {"PRESENTE", "Presente", true, 2, false, true},
                   {"IMPORTO", "Proposto", true, 2, false, true},
                   {"DIFFERENZA", "Differenza", true, 2, false, true},
                   {"BUDGETPRESENTE", "BUDGETPRESENTE", true, 0, false, false, true},
                   {"SOVRASCRIVI", "Sovrascrivi", true}},
                  {},
                  {}};
  for (; !righe.Eof(); righe.MoveNext()) {
    const auto& importo = righe["IMPORTO"].Value();
    const auto presente = presenti.importo(righe["CONTO"].Value(), righe["PERIODO"].Value());
    tabella.righe.push_back({righe["CONTO"].Value(), righe["DESCRIZIONE"].Value(), righe["PERIODO"].Value(), presente,
                             importo, values::subtract(importo, values::nvl(presente, 0)),
                             righe["BUDGETPRESENTE"].Value(), righe["SOVRASCRIVI"].Value()});
  }
  if (tabella.righe.size() > 1) tabella.somma();
  return tabella;
}

void sovrascriviTutte(ado::Recordset& righe) {
  for (; !righe.Eof(); righe.MoveNext()) {
    righe["SOVRASCRIVI"].Value(1);
    righe.Update();
  }
  if (righe.RecordCount() > 0) righe.MoveFirst();
}

void spiegaVuoto(CLSKORVAL& oggetto) {
  const bool mensile = oggetto.GetPeriodicitaBudget(oggetto.TipoBudget, oggetto.SottoTipoBudget) == 0;
  std::cerr << (mensile ? "The budget is kept by months: balances give it no rows\n"
                        : "There are no balances in the range\n");
}

void segnalaMancanti(const ado::RecordsetPtr& mancanti) {
  if (!mancanti || mancanti->RecordCount() == 0) return;
  std::cerr << mancanti->RecordCount()
            << " accounts have no card and the budget's structure allows none; they were not written:\n";
  for (mancanti->MoveFirst(); !mancanti->Eof(); mancanti->MoveNext())
    std::cerr << "  " << values::toPlainText((*mancanti)["CONTO"].Value()) << "  "
              << values::toPlainText((*mancanti)["DESCRIZIONE"].Value()) << '\n';
}

/// Writes the proposed rows, or only shows what that changes.
void scrivi(Ambiente& ambiente, const FotoDettagli& prima, const RitaglioDettagli& ritaglio, bool prova) {
  auto& oggetto = ambiente.oggetto();
  const auto vera = ambiente.connessione();
  FotoDettagli dopo = prima;
  oggetto.Connessione(
      std::make_shared<ConnessioneOsservata>(vera, prova, [&] { dopo = FotoDettagli(*vera, ritaglio); }));
  oggetto.BdgElaEco_ScriviBudget_DaRstSaldiElaEco();
  oggetto.Connessione(vera);
  ambiente.controlla();
  const auto cambiamenti = differenze(prima, dopo);
  if (prova) {
    ambiente.mostra(cambiamenti);
  } else {
    auto& righe = *oggetto.RstSaldiElaEco;
    const auto proposte = righe.RecordCount();
    righe.Filter("SOVRASCRIVI = 0");
    ambiente.mostra(
        {{{"PROPOSTE", "Rows proposed", true},
          {"CONSERVATE", "Present and kept", true},
          {"CAMBIATI", "Amounts changed", true},
          {"NUOVE", "New cards", true}},
         {{proposte, righe.RecordCount(), cambiamenti.righe.size(), dopo.schede().size() - prima.schede().size()}},
         {}});
    righe.Filter("");
  }
  segnalaMancanti(oggetto.RstContiNonPresentiInStruttura);
}

void elabora(Ambiente& ambiente, const Opzioni& opzioni) {
  richiediDefinizione(ambiente);
  completaInput(ambiente);
  auto& oggetto = ambiente.oggetto();
  if (!opzioni.filePercentuali.empty()) {
    leggiScostamenti(ambiente, opzioni.filePercentuali);
  } else if (!opzioni.percentuale.empty()) {
    oggetto.TipoScostamento = bdgScostamentoFisso;
    oggetto.PercentualeScostamento = leggiArgomento(opzioni.percentuale);
  }
  Avanzamento avanzamento;
  avanzamento.collega(oggetto);
  oggetto.BdgElaEco_PopolaRstSaldiElaEco();
  ambiente.controlla();
  if (oggetto.RstSaldiElaEco->RecordCount() == 0) spiegaVuoto(oggetto);
  if (oggetto.IsSovrascriviEsistenti) sovrascriviTutte(*oggetto.RstSaldiElaEco);
  const RitaglioDettagli ritaglio{budgetScelto(oggetto), oggetto.TipoDettaglioDestinazione,
                                  oggetto.GetTipoPdC(oggetto.TipoBudget, oggetto.SottoTipoBudget)};
  const FotoDettagli prima(*ambiente.connessione(), ritaglio);
  if (opzioni.scrivi || opzioni.prova) return scrivi(ambiente, prima, ritaglio, opzioni.prova);
  ambiente.mostra(proposte(*oggetto.RstSaldiElaEco, Presenti(prima, oggetto.CodiceSede)));
}

}  // namespace

Comando comandoElaborateBalances() {
  return {"elaborate-balances", "Propose a budget from accounting balances, and write it",
          "  bukorval elaborate-balances -d demo.db -t 5 -s 01 -y 2026 --percent 5\n"
          "  bukorval elaborate-balances -d demo.db -t 5 -s 01 -y 2026 --percent-file deviations.csv --write\n"
          "Shows the proposed rows beside what the cards hold now. Takes the year before the budget's unless options\n"
          "say otherwise. Rows whose card already holds an amount have SOVRASCRIVI 0 and are not written, unless\n"
          "--IsSovrascriviEsistenti. A budget by months yields no rows.",
          [](CLI::App& app, Ambiente& ambiente) {
            auto opzioni = std::make_shared<Opzioni>();
            auto* percentuale = app.add_option("--percent", opzioni->percentuale, "one deviation for all balances");
            app.add_option("--percent-file", opzioni->filePercentuali, "CSV with " + colonneScostamenti())
                ->excludes(percentuale);
            app.add_flag("--write", opzioni->scrivi, "write the proposed rows into the budget, in one transaction");
            app.add_flag("--dry-run", opzioni->prova, "show the amounts that --write would change, and write nothing");
            app.callback([&ambiente, opzioni] { elabora(ambiente, *opzioni); });
          }};
}

}  // namespace bukorval::host
