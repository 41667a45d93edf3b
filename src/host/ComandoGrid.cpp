#include <CLI/CLI.hpp>

#include "host/Ambiente.h"
#include "host/Comandi.h"
#include "host/Delta.h"
#include "host/Selezione.h"

namespace bukorval::host {
namespace {

void mostraGriglia(Ambiente& ambiente) {
  richiediBudget(ambiente);
  auto& oggetto = ambiente.oggetto();
  const auto griglia = oggetto.RecordSetBudget();
  ambiente.controlla();
  auto tabella = daRecordset(*griglia);
  tabella.nascondi({"BU65_DITTA_CG18", "BU65_TIPOCF_CG44", "FLGESISTECRITPREL"});
  segnaTotali(tabella);
  tabella.somma();
  riempiDelta(oggetto, tabella);
  ambiente.mostra(tabella);
}

}  // namespace

Comando comandoGrid() {
  return {"grid", "Show the cards of a budget with their totals and deltas",
          "  bukorval grid -d demo.db -t 4 -s 01 -y 2025 --BdgTipoScheda 0 --CodiceSede 1\n"
          "Budget type 4 is kept by card kind (0 cost, 1 revenue), some budgets by site: then both are needed.",
          [](CLI::App& app, Ambiente& ambiente) { app.callback([&ambiente] { mostraGriglia(ambiente); }); }};
}

}  // namespace bukorval::host
