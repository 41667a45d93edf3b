#include <iostream>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "dati/CardStore.h"
#include "dati/RowInsert.h"
#include "dati/import/FinanceChart.h"
#include "dati/import/FinanceFolder.h"
#include "dati/import/Importer.h"
#include "frame/TestoSql.h"
#include "frame/Transazione.h"
#include "host/Errors.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

constexpr BdgTipo kTipo = bdgTipoSpeseGenerali;
constexpr const char* kSottotipo = "01";
/// The account; site, card kind and code are every such budget's.
constexpr const char* kStruttura = "CON";

/// What identifies a card of one year: site, department, account.
using Posto = std::tuple<int, int, std::string>;
/// A card's values by detail kind and month.
using ValoriMensili = std::map<std::pair<BdgTipoDettaglio, int>, values::Decimal>;

int annoDi(const ImportoFinance& importo) { return importo.mese.year(); }

class ImportaFinance {
 public:
  ImportaFinance(Ambiente& ambiente, const DatiFinance& dati)
      : ambiente_(ambiente), importazione_(ambiente), archivio_(importazione_.archivio), dati_(dati) {}

  void esegui() {
    if (archivio_.haConti() || archivio_.haMovimenti() || archivio_.haBudget(kTipo, kSottotipo)) {
      throw Rifiuto("The company has accounts, movements or budgets already: create a new one with `bukorval create`");
    }
    Transazione transazione(archivio_.connessione());
    scriviStruttura();
    scriviMovimenti();
    scriviSchede();
    transazione.conferma();
    for (const auto& esito : esiti_) std::cout << "Imported " << esito << '\n';
  }

 private:
  void scriviStruttura() {
    TestoSql sql;
    sql.riga(" UPDATE CG18_ANADITTE ")
        .riga("    SET CG18_STRUTTCONTI = ", numero(kStrutturaFinance))
        .riga(" WHERE  CG18_CODICE = ", numero(archivio_.ditta()));
    archivio_.connessione().Execute(sql);
    std::set<int> anni;
    for (const auto& importo : dati_.importi) anni.insert(annoDi(importo));
    for (const int anno : anni) {
      if (!archivio_.haAnno(anno)) archivio_.scriviAnno(anno);
    }
    for (const auto& [codice, descrizione] : dati_.sedi) archivio_.scriviSede(codice, descrizione);
    const auto conti = contiFinance(dati_);
    for (const auto& [codice, conto] : conti) {
      archivio_.scriviConto(codice, conto.descrizione, conto.natura, conto.totale ? 1 : 2);
    }
    RigaDati("BU01_ANABUDGET")
        .colonna("BU01_INDTIPO", kTipo)
        .colonna("BU01_SOTTOTIPO", kSottotipo)
        .colonna("BU01_DESCR", "Budget per sede e reparto")
        .colonna("BU01_STRUTTURA", kStruttura)
        .colonna("BU01_FLGSEDI", 1)
        .colonna("BU01_INDPERIODO", 0)
        .colonna("BU01_INDPERFISO", 1)
        .colonna("BU01_NUMFORECAST", dati_.haPrevisioni() ? 1 : 0)
        .inserisci(archivio_.connessione());
    esiti_.push_back(conta(conti.size(), "account") + ", " + conta(dati_.sedi.size(), "site") + ", " +
                     conta(anni.size(), "accounting year"));
  }

  /// One registration for each site and month, a line for each amount; a negative one goes to the other side.
  void scriviMovimenti() {
    auto prossima = archivio_.ultimaRegistrazione() + 1;
    std::map<std::pair<int, values::Date>, std::pair<std::int64_t, int>> registrazioni;
    std::size_t righe = 0;
    for (const auto& importo : dati_.importi) {
      if (importo.scenario != Scenario::Consuntivo) continue;
      auto [posizione, nuova] = registrazioni.try_emplace({importo.sede, importo.mese}, prossima, 0);
      auto& [registrazione, riga] = posizione->second;
      if (nuova) {
        ++prossima;
        archivio_.scrivi(Registrazione{registrazione, importo.mese, annoDi(importo), 1, importo.sede, 0, importo.mese,
                                       "Movimenti del mese"});
      }
      const bool negativo = importo.importo.isNegative();
      archivio_.scrivi(RigaMovimento{registrazione,
                                     ++riga,
                                     contoFinance(importo),
                                     importo.sede,
                                     {},
                                     {},
                                     dati_.eRicavo(importo.conto) != negativo,
                                     negativo ? -importo.importo : importo.importo});
      ++righe;
    }
    esiti_.push_back(conta(righe, "movement") + " in " + conta(registrazioni.size(), "registration"));
  }

  /// Every year with a budget gets a card for each place that has an amount in that year.
  void scriviSchede() {
    std::map<int, std::map<Posto, ValoriMensili>> anni;
    std::size_t importi = 0;
    for (const auto& importo : dati_.importi) {
      if (importo.scenario == Scenario::Consuntivo) continue;
      const auto tipo = importo.scenario == Scenario::Budget ? bdgDettaglioBudget : bdgDettaglioOrdini + 1;
      auto& valori = anni[annoDi(importo)][{importo.sede, importo.reparto, importo.conto}];
      auto& valore = valori[{tipo, importo.mese.month()}];
      valore = valore + importo.importo;
      ++importi;
    }
    for (const auto& importo : dati_.importi) {
      const auto anno = anni.find(annoDi(importo));
      if (anno != anni.end()) anno->second.try_emplace({importo.sede, importo.reparto, importo.conto});
    }
    for (const auto& [anno, schede] : anni) scriviAnno(anno, schede);
    esiti_.push_back(conta(importi, "budget amount"));
  }

  void scriviAnno(int anno, const std::map<Posto, ValoriMensili>& schede) {
    auto& oggetto = ambiente_.oggetto();
    oggetto.TipoBudget = kTipo;
    oggetto.SottoTipoBudget = kSottotipo;
    oggetto.AnnoEsercizio = anno;
    oggetto.ProgressivoEsercizio = 1;
    SchedeBudget budget(ambiente_);
    for (const auto& [posto, valori] : schede) {
      const auto scheda = budget.trovaOCrea(chiave(posto));
      for (const auto& [dove, valore] : valori) {
        budget.scrivi(scheda, dove.first, dove.second, bdgValoreImporto, valore);
      }
    }
    esiti_.push_back(conta(schede.size(), "card") + " of " + std::to_string(anno));
  }

  ChiaveScheda chiave(const Posto& posto) {
    const auto& [sede, reparto, conto] = posto;
    const int tipoScheda = dati_.eRicavo(conto) ? 1 : 0;
    const auto scheda = schedaFinance(conto, reparto);
    archivio_.scriviCodiceScheda(tipoScheda, scheda, descrizioneFinance(dati_, conto, reparto));
    return {{"BU65_CODICE_CG31", sede},
            {"BU65_INDCOSRIC_BU07", tipoScheda},
            {"BU65_SCHEDA_BU07", scheda},
            {"BU65_CONTO_CG24", contoFinance(conto, reparto)}};
  }

  Ambiente& ambiente_;
  Importazione importazione_;
  Archivio& archivio_;
  const DatiFinance& dati_;
  std::vector<std::string> esiti_;  ///< told when everything is written
};

}  // namespace

void importaFinance(Ambiente& ambiente, const std::string& cartella) {
  Segnalazioni segnalazioni;
  const auto dati = leggiFinance(cartella, segnalazioni);
  segnalazioni.verifica();
  ImportaFinance(ambiente, dati).esegui();
}

}  // namespace bukorval::host
