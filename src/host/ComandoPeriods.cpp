#include <CLI/CLI.hpp>
#include <cstddef>
#include <memory>
#include <string>

#include "host/Ambiente.h"
#include "host/Argomenti.h"
#include "host/Comandi.h"
#include "host/Delta.h"
#include "host/Selezione.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

/// Puts the name of each period after its number.
void aggiungiNomi(CLSKORVAL& oggetto, Tabella& tabella) {
  const auto periodo = tabella.posizione("PERIODO");
  if (!periodo) return;
  const auto periodicita = oggetto.GetPeriodicitaBudget(oggetto.TipoBudget, oggetto.SottoTipoBudget);
  const auto fiscale = oggetto.GetAnnoBudgetFiscaleSolare(oggetto.TipoBudget, oggetto.SottoTipoBudget);
  const auto dopo = static_cast<std::ptrdiff_t>(*periodo) + 1;
  tabella.colonne.insert(tabella.colonne.begin() + dopo, {"DESCRIZIONE", "Descrizione"});
  for (auto& riga : tabella.righe) {
    riga.insert(riga.begin() + dopo,
                oggetto.GetDescrizionePeriodo(oggetto.CodiceDitta, periodicita, fiscale,
                                              values::toInt16(riga[*periodo]), oggetto.AnnoEsercizio,
                                              oggetto.ProgressivoEsercizio));
  }
}

void mostraPeriodi(Ambiente& ambiente, const std::string& scheda) {
  const auto identificativo = leggiArgomento(scheda);
  selezionaDaScheda(ambiente, identificativo);
  auto& oggetto = ambiente.oggetto();
  const auto periodi = oggetto.RecSetPeriodiBudget(identificativo);
  ambiente.controlla();
  auto tabella = daRecordset(*periodi);
  aggiungiNomi(oggetto, tabella);
  for (auto& colonna : tabella.colonne) colonna.secondaria = colonna.nome.starts_with("ID_");
  segnaTotali(tabella);
  tabella.somma();
  riempiDelta(oggetto, tabella);
  ambiente.mostra(tabella);
}

}  // namespace

Comando comandoPeriods() {
  return {"periods", "Show one card period by period",
          "  bukorval periods 12 -d demo.db\n"
          "CARD is the identifier that `bukorval grid` shows in its first column (BU65_ID).",
          [](CLI::App& app, Ambiente& ambiente) {
            auto scheda = std::make_shared<std::string>();
            app.add_option("CARD", *scheda, "identifier of the card")->required();
            app.callback([&ambiente, scheda] { mostraPeriodi(ambiente, *scheda); });
          }};
}

}  // namespace bukorval::host
