#pragma once

#include <string>

#include "ado/Dictionary.h"
#include "ado/recordset/Recordset.h"
#include "frame/Enumerazioni.h"
#include "suite/ActiveInterface.h"
#include "values/Variant.h"

namespace bukorval {

/// The plain public properties: a read returns what was last written. Dates are calendar dates, percentages plain
/// numbers of percent (10 is ten per cent).
struct Proprieta {
  suite::ActiveInterfacePtr ActiveInterface;  ///< the hosting suite's session

  values::Variant CodiceDitta;           ///< company
  BdgTipo TipoBudget = 0;                ///< budget type, 0 to 9
  values::Variant SottoTipoBudget;       ///< budget subtype, two characters
  values::Variant TipoElaborazioneBO;    ///< 10 economic elaboration, 40 card elaboration, 42 duplication
  values::Variant AnnoEsercizio;         ///< fiscal year of the budget
  values::Variant ProgressivoEsercizio;  ///< progressive of the fiscal year within the year
  values::Variant CodicePdcCoGeDitta;    ///< the company's general-ledger chart code
  values::Variant CodiceSede;            ///< site
  values::Variant CodiceStrutturaBU60;   ///< budget structure
  values::Variant BdgTipoScheda;         ///< card kind: 0 cost, 1 revenue

  ado::RecordsetPtr RstSaldiElaEco;                  ///< proposed rows of the economic elaboration
  ado::RecordsetPtr RstContiNonPresentiInStruttura;  ///< accounts with a balance that the structure lacks

  BdgTipoDettaglio TipoDettaglioDestinazione = 0;  ///< detail kind that the elaborations write
  values::Variant AnnoEsercizioMovimenti;          ///< fiscal year of the source movements
  values::Variant ProgressivoEsercizioMovimenti;   ///< and its progressive
  values::Variant DaConto;                         ///< first account, empty for an open range
  values::Variant AConto;                          ///< last account, empty for an open range
  BdgTipoDataMovimenti TipoDataMovimenti = 0;      ///< 0 registration date, 1 competence dates
  values::Variant DaData;                          ///< first date of the movements
  values::Variant AData;                           ///< last date of the movements
  bool MovimentiConsolidati = false;
  bool MovimentiDaConsolidare = false;
  bool MovimentiPrevisionali = false;
  std::string TipoMovimenti;                   ///< SQL condition that selects movement kinds
  bool GestioneAmmortamenti = false;           ///< include depreciation
  bool GestioneRateiRisconti = false;          ///< include accruals and deferrals
  bool GestioneRettifiche = false;             ///< include adjusting entries after the year end
  bool ElaboraSoloContiBudgettizzati = false;  ///< only accounts that already have a card
  bool IsSovrascriviEsistenti = false;         ///< overwrite existing values
  BdgTipoScostamento TipoScostamento = 0;      ///< source of the deviation percentage: 0, 2, 3 or 99
  values::Variant PercentualeScostamento;      ///< the fixed deviation percentage
  ado::RecordsetPtr RstScostPerConto;          ///< CONTO, FLGPERIODI, PERCSCOST
  ado::RecordsetPtr RstScostPerPeriodo;        ///< CONTO, PERIODO, PERCSCOST
  values::Variant DaScheda;                    ///< first card code, empty for an open range
  values::Variant AScheda;                     ///< last card code, empty for an open range
  bool IsSoloMovCliFor = false;                ///< only movements of the card's customer or supplier
  bool IsApplicaPercentuali = false;           ///< apply distribution and deviation percentages
  ado::DictionaryPtr ElencoSedi;               ///< keys are the sites to elaborate
  ado::RecordsetPtr RstBdgSchedeDaElaborare;   ///< cards selected by the card elaboration

  BdgTipoDettaglio TipoDettaglioOrigine = 0;  ///< detail kind that a duplication reads
  values::Variant BdgDestinazioneSottoTipo;
  values::Variant BdgDestinazioneAnnoEsercizio;
  values::Variant BdgDestinazioneProgressivoEsercizio;
  values::Variant BdgDestinazioneCodiceSede;
  bool IsForzoDuplicazioneContoCliFor = false;    ///< copy the account into newly created cards
  bool IsDuplicaScadenzeCashFlow = false;         ///< copy cash-flow due dates
  bool IsDuplicaScadenzeManualiCashFlow = false;  ///< and the manual ones with them
};

}  // namespace bukorval
