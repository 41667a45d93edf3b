#pragma once

#include <string>

#include "ado/Dictionary.h"
#include "ado/recordset/Recordset.h"
#include "frame/Enumerazioni.h"
#include "suite/ActiveInterface.h"
#include "values/Variant.h"

namespace bukorval {

/// The plain public properties: a read returns what was last written. Blank means Empty, Null or text of blanks. Dates
/// are calendar dates; percentages are plain numbers of percent (10 is ten per cent).
///
/// The elaborations are the economic one (BdgElaEco_PopolaRstSaldiElaEco, then the writing of balances,
/// BdgElaEco_ScriviBudget_DaRstSaldiElaEco), that of cards (BdgElaSchede_Elaborazione) and duplication
/// (BdgDupSchede_Duplicazione). An input that an elaboration needs is refused when blank (Stato 1) unless its text says
/// otherwise; elsewhere the database refuses the blank (99).
struct Proprieta {
  /// The hosting suite's session: company of the grid, of new cards and of the alignment, ledger accounts, account
  /// levels, words, messages and decimal sign. Nothing: what needs it fails (99), the decimal sign is a comma.
  suite::ActiveInterfacePtr ActiveInterface;

  /// Company, a whole number. The three elaborations need it; the grid, new cards and the alignment take the session's.
  values::Variant CodiceDitta;
  /// Budget type, 0 to 9: 0 sales, 1 purchases, 2 investments, 3 production, 4 general expenses, 5 economic, 6 agents,
  /// 7 outside processing, 8 job orders, 9 production resources. With the subtype it selects the budget of every
  /// operation that takes no type of its own.
  BdgTipo TipoBudget = 0;
  /// Budget subtype, two characters. With the type it selects the budget; the elaborations and the alignment need it.
  values::Variant SottoTipoBudget;
  /// Elaboration whose inputs are checked: 10 economic, 40 cards, 42 duplication. The elaborations set a
  /// blank one to their own, but for the writing of balances. Blank there, and any other value, checks the subtype
  /// alone.
  values::Variant TipoElaborazioneBO;
  /// Fiscal year of the budget, four digits. The budget grid, new cards, the alignment and the elaborations need it.
  values::Variant AnnoEsercizio;
  /// Progressive of the fiscal year within the year. The budget grid, new cards, the alignment and the elaborations
  /// need it.
  values::Variant ProgressivoEsercizio;
  /// The company's general-ledger chart code. The economic elaboration needs it. GetCodicePdC, asked for a budget on
  /// the general ledger, sets a blank one to the session's.
  values::Variant CodicePdcCoGeDitta;
  /// Site, a whole number. For a budget per site the budget grid, duplication (of the source) and the writing of
  /// balances need it. Blank: the balances of all sites; the alignment takes all sites. The elaboration of cards sets
  /// it to each key of `ElencoSedi` in turn.
  values::Variant CodiceSede;
  /// Code of the BU60 structure that the alignment and the writing of balances follow; when blank, the budget
  /// definition's.
  values::Variant CodiceStrutturaBU60;
  /// Card kind: 0 cost, 1 revenue. The budget grid of type 4, the elaboration of cards and duplication need it. The
  /// alignment of type 4 gives it to elements without a kind; blank gives none.
  values::Variant BdgTipoScheda;

  /// Proposed rows of the economic elaboration: CONTO, DESCRIZIONE, PERIODO, IMPORTO (2 decimals), BUDGETPRESENTE,
  /// SOVRASCRIVI, ID. BdgElaEco_PopolaRstSaldiElaEco makes the set, the client may edit it, the writing needs it and
  /// writes the rows with SOVRASCRIVI 1.
  ado::RecordsetPtr RstSaldiElaEco;
  /// Accounts with a balance that have no card and get none: CONTO, DESCRIZIONE. The economic elaboration makes the
  /// set, and its writing fills it.
  ado::RecordsetPtr RstContiNonPresentiInStruttura;
  /// Balances of the last proposal that no reclassification link takes, deviations included: CONTO, DESCRIZIONE, ANNO,
  /// MESE, IMPORTO. For a host of ours alone: no member of the interface. Nothing for a general-ledger budget.
  ado::RecordsetPtr RstSaldiSenzaCollegamento;

  /// Detail kind that the elaborations write: 0 budget, 1 actuals, 2 orders, 2 + n forecast n. The writing of balances
  /// fails (99) for a kind that the budget does not have.
  BdgTipoDettaglio TipoDettaglioDestinazione = 0;
  /// Fiscal year of the source movements. The economic elaboration and that of cards need it; blank ends the latter
  /// with 99.
  values::Variant AnnoEsercizioMovimenti;
  /// Progressive of the fiscal year of the source movements. The economic elaboration and that of cards need it; blank
  /// ends the latter with 99.
  values::Variant ProgressivoEsercizioMovimenti;
  /// First account of the economic elaboration, on the budget's own chart; blank leaves the range open.
  values::Variant DaConto;
  /// Last account of the economic elaboration, on the budget's own chart; blank leaves the range open.
  values::Variant AConto;
  /// Date by which the economic elaboration and that of cards take a movement: 0 registration date, 1 competence
  /// dates. For any other the former takes competence dates and the latter finds no amounts.
  BdgTipoDataMovimenti TipoDataMovimenti = 0;
  /// First date of the movements. The elaboration of cards needs it; the economic one too, and begins with its month.
  values::Variant DaData;
  /// Last date of the movements. The economic elaboration and that of cards need it.
  values::Variant AData;
  /// Kept for the client; no operation reads it. `TipoMovimenti` says whether consolidated movements count.
  bool MovimentiConsolidati = false;
  /// Kept for the client; no operation reads it. `TipoMovimenti` says whether movements still to be consolidated count.
  bool MovimentiDaConsolidare = false;
  /// Kept for the client; no operation reads it. `TipoMovimenti` says whether forecast movements count.
  bool MovimentiPrevisionali = false;
  /// SQL condition that selects movement kinds ("CG41_INDTIPOMOV = 0"), put into the statement as it is, between
  /// parentheses. The economic elaboration and that of cards need it, and refuse (1) what is not one condition over
  /// the columns of CG41_PRIMANOTA and CG42_MOVCONT: see suite/CondizioneMovimenti.h.
  std::string TipoMovimenti;
  /// Whether the economic elaboration includes simulated depreciation.
  bool GestioneAmmortamenti = false;
  /// Whether the economic elaboration includes accruals and deferrals: a movement with a competence interval counts by
  /// its days.
  bool GestioneRateiRisconti = false;
  /// Whether the economic elaboration includes adjusting entries: the last month of the movements' year then reaches to
  /// the end of the next.
  bool GestioneRettifiche = false;
  /// Whether the writing of balances keeps to accounts that already have a card: no card is created, no account listed.
  bool ElaboraSoloContiBudgettizzati = false;
  /// Whether duplication replaces what a destination card already holds. The economic elaboration has SOVRASCRIVI row
  /// by row instead.
  bool IsSovrascriviEsistenti = false;
  /// Whether the economic elaboration proposes rows for a budget kept by months too, one a month. For C++ clients only:
  /// without it such a budget gets no rows.
  bool ProponiBudgetMensili = false;
  /// Source of the deviation percentage of the economic elaboration: 0 `PercentualeScostamento`, 2 `RstScostPerConto`,
  /// 3 `RstScostPerPeriodo`, 99 or any other none.
  BdgTipoScostamento TipoScostamento = 0;
  /// The one deviation percentage, for `TipoScostamento` 0; 10 raises balances by ten per cent, blank by nothing.
  values::Variant PercentualeScostamento;
  /// Deviation percentages by general-ledger account, for `TipoScostamento` 2: CONTO, FLGPERIODI, PERCSCOST. The
  /// nearest account up the tree with a percentage counts; FLGPERIODI other than 0 looks in `RstScostPerPeriodo`.
  /// Nothing is an error (99). The search changes the set's filter.
  ado::RecordsetPtr RstScostPerConto;
  /// Deviation percentages by general-ledger account and calendar month, for `TipoScostamento` 3 and for the accounts
  /// that `RstScostPerConto` sends here: CONTO, PERIODO (1 to 12), PERCSCOST. Nothing is an error (99). The search
  /// changes the set's filter.
  ado::RecordsetPtr RstScostPerPeriodo;
  /// First card code of the elaboration of cards and of duplication; when blank they set it to " ".
  values::Variant DaScheda;
  /// Last card code of the elaboration of cards and of duplication; when blank they set it to "Z".
  values::Variant AScheda;
  /// Whether the elaboration of cards takes only movements of the customer (revenue) or supplier (cost) that the card's
  /// cash-flow terms name; a card without one takes all.
  bool IsSoloMovCliFor = false;
  /// Whether the elaboration of cards applies the card's distribution percentage, then its deviation percentage, each
  /// rounded to 2 decimals.
  bool IsApplicaPercentuali = false;
  /// Sites, as keys, of the elaboration of cards, which fails (99) with Nothing for a budget per site; the alignment
  /// takes `CodiceSede` when there is none.
  ado::DictionaryPtr ElencoSedi;
  /// Cards that the elaboration of cards selected last, with their cash-flow terms; Nothing when there were none.
  ado::RecordsetPtr RstBdgSchedeDaElaborare;

  /// Detail kind that duplication reads: 0 budget, 1 actuals, 2 orders, 2 + n forecast n.
  BdgTipoDettaglio TipoDettaglioOrigine = 0;
  /// Subtype, two characters, that duplication writes; the type is `TipoBudget`. Duplication needs it.
  values::Variant BdgDestinazioneSottoTipo;
  /// Fiscal year, four digits, that duplication writes. Duplication needs it.
  values::Variant BdgDestinazioneAnnoEsercizio;
  /// Progressive of the fiscal year that duplication writes. Duplication needs it.
  values::Variant BdgDestinazioneProgressivoEsercizio;
  /// Site that duplication writes. Duplication into a budget per site needs it; new cards of any other have it as well,
  /// and none when blank.
  values::Variant BdgDestinazioneCodiceSede;
  /// Whether duplication writes the source's account and general-ledger chart into the cards it creates once more; the
  /// copy of the header has brought them already.
  bool IsForzoDuplicazioneContoCliFor = false;
  /// Whether duplication from budget to budget details (kinds 0) makes the destination's automatic due dates anew from
  /// its amounts and cash-flow terms.
  bool IsDuplicaScadenzeCashFlow = false;
  /// Whether the manual due dates follow as well, for `IsDuplicaScadenzeCashFlow`; a destination that has some keeps
  /// them unless `IsSovrascriviEsistenti` is set.
  bool IsDuplicaScadenzeManualiCashFlow = false;
};

}  // namespace bukorval
