#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <string>
#include <tuple>

#include "host/Ambiente.h"
#include "host/Argomenti.h"
#include "host/Avanzamento.h"
#include "host/Comandi.h"
#include "host/ConnessioneOsservata.h"
#include "host/Errori.h"
#include "host/ModelloCsv.h"
#include "host/Selezione.h"
#include "suite/Sessione.h"
#include "values/Conversion.h"

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
  if (values::isBlank(inizio)) throw Rifiuto("There is no accounting year " + values::toPlainText(oggetto.AnnoEsercizioMovimenti));
  if (values::isBlank(oggetto.DaData)) oggetto.DaData = inizio;
  if (values::isBlank(oggetto.AData)) oggetto.AData = fine;
}

ado::RecordsetPtr insieme(std::initializer_list<const char*> campi) {
  auto rst = std::make_shared<ado::Recordset>();
  for (const char* campo : campi) rst->Fields().Append(campo, ado::adVariant, 0, ado::adFldIsNullable);
  rst->Open();
  return rst;
}

const ModelloCsv& modelloPercentuali() {
  static const ModelloCsv kModello{"deviations",
                                   {{"account", TipoCsv::Testo, true, 15, ""},
                                    {"period", TipoCsv::Intero, false, 2, "month; empty for the whole account"},
                                    {"percent", TipoCsv::Importo, true, 0, ""}}};
  return kModello;
}

/// The account's row of RstScostPerConto, made current; added when there is none.
void trovaConto(ado::Recordset& conti, const Variant& conto) {
  conti.Filter("CONTO = '" + values::toPlainText(conto) + "'");
  if (conti.RecordCount() > 0) return;
  conti.AddNew();
  conti["CONTO"].Value(conto);
  conti["FLGPERIODI"].Value(0);
  conti["PERCSCOST"].Value(0);
  conti.Update();
}

/// Reads the deviations of accounts and of their periods into the object's two sets.
void leggiPercentuali(Ambiente& ambiente, const std::string& file) {
  auto& oggetto = ambiente.oggetto();
  oggetto.RstScostPerConto = insieme({"CONTO", "FLGPERIODI", "PERCSCOST"});
  oggetto.RstScostPerPeriodo = insieme({"CONTO", "PERIODO", "PERCSCOST"});
  auto& conti = *oggetto.RstScostPerConto;
  auto& periodi = *oggetto.RstScostPerPeriodo;
  Segnalazioni segnalazioni;
  const auto lotto = leggiCsv(file, modelloPercentuali(), ambiente.sessione().SeparatoreDecimale(), segnalazioni);
  segnalazioni.verifica();
  for (const auto& riga : lotto.righe) {
    const auto& [conto, periodo, percentuale] = std::tie(riga.valori[0], riga.valori[1], riga.valori[2]);
    trovaConto(conti, conto);
    if (values::isBlank(periodo)) {
      conti["PERCSCOST"].Value(percentuale);
    } else {
      conti["FLGPERIODI"].Value(1);
      periodi.AddNew();
      periodi["CONTO"].Value(conto);
      periodi["PERIODO"].Value(periodo);
      periodi["PERCSCOST"].Value(percentuale);
      periodi.Update();
    }
    conti.Update();
    conti.Filter("");
  }
  oggetto.TipoScostamento = bdgScostamentoPerConto;
}

void scrivi(Ambiente& ambiente, bool prova) {
  auto& oggetto = ambiente.oggetto();
  const auto vera = ambiente.connessione();
  oggetto.Connessione(std::make_shared<ConnessioneOsservata>(vera, prova, [] {}));
  oggetto.BdgElaEco_ScriviBudget_DaRstSaldiElaEco();
  oggetto.Connessione(vera);
  ambiente.controlla();
}

void elabora(Ambiente& ambiente, const Opzioni& opzioni) {
  richiedi(ambiente, {"TipoBudget", "SottoTipoBudget", "AnnoEsercizio"});
  completaInput(ambiente);
  auto& oggetto = ambiente.oggetto();
  if (!opzioni.filePercentuali.empty()) {
    leggiPercentuali(ambiente, opzioni.filePercentuali);
  } else if (!opzioni.percentuale.empty()) {
    oggetto.TipoScostamento = bdgScostamentoFisso;
    oggetto.PercentualeScostamento = leggiArgomento(opzioni.percentuale);
  }
  Avanzamento avanzamento;
  avanzamento.collega(oggetto);
  oggetto.BdgElaEco_PopolaRstSaldiElaEco();
  ambiente.controlla();
  if (oggetto.IsSovrascriviEsistenti) {
    auto& righe = *oggetto.RstSaldiElaEco;
    for (; !righe.Eof(); righe.MoveNext()) {
      righe["SOVRASCRIVI"].Value(1);
      righe.Update();
    }
    if (righe.RecordCount() > 0) righe.MoveFirst();
  }
  if (opzioni.scrivi || opzioni.prova) scrivi(ambiente, opzioni.prova);
  auto tabella = daRecordset(*oggetto.RstSaldiElaEco);
  tabella.nascondi({"ID"});
  ambiente.mostra(tabella);
  const auto& mancanti = oggetto.RstContiNonPresentiInStruttura;
  if (mancanti && mancanti->RecordCount() > 0 && (opzioni.scrivi || opzioni.prova))
    std::cerr << mancanti->RecordCount() << " accounts are not in the budget's structure and were not written\n";
}

}  // namespace

Comando comandoElaborateBalances() {
  return {"elaborate-balances", "Propose a budget from accounting balances, and write it",
          "  bukorval elaborate-balances -d demo.db -t 5 -s 01 -y 2026 --percent 5\n"
          "  bukorval elaborate-balances -d demo.db -t 5 -s 01 -y 2026 --percent-file deviations.csv --write\n"
          "Takes the year before the budget's unless options say otherwise. Rows whose card already holds an amount have\n"
          "SOVRASCRIVI 0 and are not written, unless --IsSovrascriviEsistenti true. A budget by months yields no rows.",
          [](CLI::App& app, Ambiente& ambiente) {
            auto opzioni = std::make_shared<Opzioni>();
            app.add_option("--percent", opzioni->percentuale, "one deviation for all balances");
            app.add_option("--percent-file", opzioni->filePercentuali, "CSV with " + elencoColonne(modelloPercentuali()));
            app.add_flag("--write", opzioni->scrivi, "write the proposed rows into the budget");
            app.add_flag("--dry-run", opzioni->prova, "go through the writing too, and take it back");
            app.callback([&ambiente, opzioni] { elabora(ambiente, *opzioni); });
          }};
}

}  // namespace bukorval::host
