#include <CLI/CLI.hpp>
#include <cstddef>

#include "host/Environment.h"
#include "host/Selection.h"
#include "host/commands/Commands.h"
#include "host/output/Deltas.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

/// A description begins with its code, so the aligned table needs only one of the two columns; a code that
/// nothing describes stands in for its description.
void unisciDescrizioni(Tabella& tabella) {
  for (std::size_t i = 0; i < tabella.colonne.size(); ++i) {
    const auto descrizione = tabella.posizione(tabella.colonne[i].nome + "_DESCR");
    if (!descrizione) continue;
    tabella.colonne[i].secondaria = true;
    tabella.colonne[*descrizione].titolo = tabella.colonne[i].titolo;
    for (auto& riga : tabella.righe) {
      if (values::isBlank(riga[*descrizione])) riga[*descrizione] = riga[i];
    }
  }
}

/// What the selection fixes is the same on every line.
void nascondiSelezione(const Ambiente& ambiente, Tabella& tabella) {
  const auto& proprieta = ambiente.scelte.proprieta;
  if (proprieta.contains("CodiceSede")) tabella.nascondi({"BU65_CODICE_CG31", "BU65_CODICE_CG31_DESCR"});
  if (proprieta.contains("BdgTipoScheda")) tabella.nascondi({"BU65_INDCOSRIC_BU07"});
}

void mostraGriglia(Ambiente& ambiente) {
  richiediBudget(ambiente);
  auto& oggetto = ambiente.oggetto();
  const auto griglia = oggetto.RecordSetBudget();
  ambiente.controlla();
  auto tabella = daRecordset(*griglia);
  tabella.nascondi({"BU65_DITTA_CG18", "BU65_TIPOCF_CG44", "BU65_GRUPPO_CG10", "BU65_CODICE_CG21", "BU65_CODICE_PC01",
                    "BU65_PDCVDS_PC01", "BU65_PDC_PC01", "BU65_FLGBUDGET", "BU65_FLGCFLOW"});
  nascondiSelezione(ambiente, tabella);
  if (ambiente.scelte.formato == "table") unisciDescrizioni(tabella);
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
