#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <vector>

#include "dati/DetailSnapshot.h"
#include "dati/WatchedRun.h"
#include "frame/BudgetAnno.h"
#include "frame/TestoSql.h"
#include "host/Environment.h"
#include "host/Progress.h"
#include "host/Selection.h"
#include "host/commands/Commands.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

/// The sites that have cards in the selected budget, in order.
ado::DictionaryPtr sediConSchede(Ambiente& ambiente) {
  const auto& oggetto = ambiente.oggetto();
  TestoSql sql;
  sql.riga(" SELECT DISTINCT BU65_CODICE_CG31 FROM BU65_TESBUDGET WITH (NOLOCK) ")
      .testo(condizioniSchede(budgetScelto(oggetto)))
      .riga(" AND    BU65_CODICE_CG31 IS NOT NULL ")
      .riga(" ORDER BY BU65_CODICE_CG31 ");
  auto sedi = std::make_shared<ado::Dictionary>();
  const auto righe = ambiente.connessione()->Execute(sql);
  for (; !righe->Eof(); righe->MoveNext()) {
    const auto& sede = (*righe)["BU65_CODICE_CG31"].Value();
    sedi->Add(sede, sede);
  }
  return sedi;
}

/// What a month-end run means when the command line does not say otherwise: all movements of the budget's own year,
/// into the actuals, for every site.
void completaInput(Ambiente& ambiente) {
  auto& oggetto = ambiente.oggetto();
  const auto& date = ambiente.scelte.proprieta;
  if (values::isBlank(oggetto.AnnoEsercizioMovimenti)) oggetto.AnnoEsercizioMovimenti = oggetto.AnnoEsercizio;
  if (values::isBlank(oggetto.ProgressivoEsercizioMovimenti))
    oggetto.ProgressivoEsercizioMovimenti = oggetto.ProgressivoEsercizio;
  if (oggetto.TipoMovimenti.empty()) oggetto.TipoMovimenti = "1 = 1";
  if (!date.contains("TipoDettaglioDestinazione")) oggetto.TipoDettaglioDestinazione = bdgDettaglioConsuntivo;
  if (values::isBlank(oggetto.DaData) || values::isBlank(oggetto.AData)) {
    values::Variant inizio, fine;
    oggetto.GetBdgDataInizioBdgDataFine(oggetto.TipoBudget, oggetto.SottoTipoBudget, oggetto.CodiceDitta,
                                        oggetto.AnnoEsercizio, oggetto.ProgressivoEsercizio, inizio, fine);
    ambiente.controlla();
    if (values::isBlank(oggetto.DaData)) oggetto.DaData = inizio;
    if (values::isBlank(oggetto.AData)) oggetto.AData = fine;
  }
  bool perSede = false;
  oggetto.GetGestioneSede(oggetto.TipoBudget, oggetto.SottoTipoBudget, perSede);
  ambiente.controlla();
  if (!perSede || (oggetto.ElencoSedi && oggetto.ElencoSedi->Count() > 0)) return;
  oggetto.ElencoSedi = std::make_shared<ado::Dictionary>();
  if (values::isBlank(oggetto.CodiceSede))
    oggetto.ElencoSedi = sediConSchede(ambiente);
  else
    oggetto.ElencoSedi->Add(oggetto.CodiceSede, oggetto.CodiceSede);
}

/// One run of the object for a card kind, watched and summed up.
void elaboraTipo(Ambiente& ambiente, int tipoScheda, bool prova, RiepilogoSedi& riepilogo, Tabella& cambiamenti) {
  auto& oggetto = ambiente.oggetto();
  oggetto.BdgTipoScheda = tipoScheda;
  const RitaglioDettagli ritaglio{budgetScelto(oggetto), oggetto.TipoDettaglioDestinazione};
  const auto vera = ambiente.connessione();
  const FotoDettagli prima(*vera, ritaglio);
  FotoDettagli dopo;
  oggetto.Connessione(
      std::make_shared<ConnessioneOsservata>(vera, prova, [&] { dopo = FotoDettagli(*vera, ritaglio); }));
  Avanzamento avanzamento;
  avanzamento.collega(oggetto);
  // The cards of each site pass by as they are elaborated.
  const auto passo = oggetto.eventi.StepProcess;
  oggetto.eventi.StepProcess = [&](values::Variant& fatti) {
    riepilogo.selezionata((*oggetto.RstBdgSchedeDaElaborare)["BU65_CODICE_CG31"].Value());
    if (passo) passo(fatti);
  };
  oggetto.BdgElaSchede_Elaborazione();
  oggetto.Connessione(vera);
  oggetto.eventi = {};
  ambiente.controlla();
  riepilogo.cambiate(prima, dopo);
  auto trovate = differenze(prima, dopo);
  if (cambiamenti.colonne.empty()) cambiamenti.colonne = trovate.colonne;
  for (auto& riga : trovate.righe) cambiamenti.righe.push_back(std::move(riga));
}

void elabora(Ambiente& ambiente, bool prova) {
  richiediDefinizione(ambiente);
  completaInput(ambiente);
  std::vector<int> tipi = {0, 1};
  const auto& scelto = ambiente.oggetto().BdgTipoScheda;
  if (!values::isBlank(scelto)) tipi = {values::toInt32(scelto)};
  RiepilogoSedi riepilogo;
  Tabella cambiamenti;
  for (const int tipo : tipi) elaboraTipo(ambiente, tipo, prova, riepilogo, cambiamenti);
  if (prova) return ambiente.mostra(cambiamenti);
  ambiente.mostra(riepilogo.tabella());
}

}  // namespace

Comando comandoElaborateCards() {
  return {
      "elaborate-cards", "Recompute the cards' values from accounting movements",
      "  bukorval elaborate-cards -d demo.db -t 4 -s 01 -y 2025 --dry-run\n"
      "Takes every site and both card kinds, the budget's own year and all movements unless options say otherwise:\n"
      "--CodiceSede, --BdgTipoScheda, --DaData, --AData, --TipoMovimenti, --TipoDataMovimenti 1 (competence),\n"
      "--DaScheda, --AScheda, --IsApplicaPercentuali, --TipoDettaglioDestinazione. One transaction per card kind.",
      [](CLI::App& app, Ambiente& ambiente) {
        auto prova = std::make_shared<bool>(false);
        app.add_flag("--dry-run", *prova, "show the differences it would write, and write nothing");
        app.callback([&ambiente, prova] { elabora(ambiente, *prova); });
      }};
}

}  // namespace bukorval::host
