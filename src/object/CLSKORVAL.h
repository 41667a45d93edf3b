#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "ado/Dictionary.h"
#include "ado/Types.h"
#include "ado/connection/Connection.h"
#include "ado/recordset/Recordset.h"
#include "frame/Enumerazioni.h"
#include "frame/Eventi.h"
#include "frame/Proprieta.h"
#include "values/Export.h"
#include "values/Variant.h"

namespace bukorval {

class Contesto;
class Identita;

/// The budget business object. Create it, give it a session (`ActiveInterface`) and a connection or connection string,
/// set the properties that select the budget, call a method, then read Stato() and errore().
///
/// This header is the contract of every public member; frame/Proprieta.h that of the plain properties.
///
/// Outcome. No exception leaves a method. Each one (but NVL and BFill) first resets the outcome, then leaves one of:
/// - 0, success.
/// - 1, a refusal with a fixed message. Every method that reads the database gives it when there is neither a
///   connection nor a connection string ("Non è stata definita la stringa di connessione"). An input that is not set is
///   its label and " : Dato non definito nel BO ". What a statement needs as a number and is none ("1 OR 1=1") is
///   'Il valore "1 OR 1=1" non è un numero '; codes are quoted, whatever stands in them. Members name their further
///   refusals.
/// - 99, a trapped run-time error: its description, " in " and the procedure that failed, the innermost one. A
///   connection that cannot be opened is one.
///
/// After 1 or 99 a function returns its neutral value: False, 0, "", Empty or Nothing unless its own text names
/// another. In/out arguments stay as they were unless the text says what they receive.
///
/// Values. A budget is a type (0 to 9) and a subtype (two characters). A card is a BU65_ID, a detail of it a BU66_ID.
/// Amounts have 2 decimals, quantities 3, dates are calendar dates. Blank means Empty, Null or text of blanks.
/// One instance serves one caller at a time.
class BUKORVAL_API CLSKORVAL : public Proprieta {
 public:
  using Variant = values::Variant;

  CLSKORVAL();
  ~CLSKORVAL();
  CLSKORVAL(const CLSKORVAL&) = delete;
  CLSKORVAL& operator=(const CLSKORVAL&) = delete;

  /// Progress events of the long operations. A handler that throws ends the running operation with 99.
  Eventi eventi;

  /// Outcome of the last operation: 0 success, 1 refused, 99 run-time error.
  BdgStato Stato() const;
  /// Text of the last refusal or error, "" after success.
  const std::string& errore() const;
  /// The connection to use from now on. It stays the caller's to close. Nothing means: open one with
  /// `StringaConnessione` when needed. One that an event handler sets serves once the running operation has ended.
  void Connessione(ado::ConnectionPtr connessione);
  /// Connection string for when no connection was given: "Provider=…;Data Source=…". The first method that needs the
  /// database opens the connection; it is then kept, and a later string changes nothing.
  const std::string& StringaConnessione() const;
  void StringaConnessione(std::string valore);

  // ---- Grids

  /// The budget grid: one row per card of the selected budget, with its codes, their descriptions and its totals.
  /// Per measure (IMP amount, QTA1 and QTA2 quantities) it has the sum of budget and of actuals, the latest order that
  /// has a value, and each forecast, in which actual values replace the forecast of their period. Delta columns are
  /// Null, for CalcolaDelta and CalcolaDeltaPercentuale. Descriptions are cut at 40 characters.
  /// Reads the properties `TipoBudget`, `SottoTipoBudget`, `AnnoEsercizio`, `ProgressivoEsercizio`, for type 4
  /// `BdgTipoScheda`, for a budget per site `CodiceSede`; the company is the session's.
  /// Reads BU01_ANABUDGET, BU65_TESBUDGET, BU66_DETBUDGET, for type 5 BU02_TESTADEST, and the description tables.
  /// Nothing after 99; without a connection (1) the empty grid of the type.
  ado::RecordsetPtr RecordSetBudget();
  /// The period grid: one row per period of a card, with the values of budget, actuals, orders and forecasts side by
  /// side and the identity (BU66_ID) of each. A value that the card has not is Null; so are the delta columns. Amounts
  /// have 2 decimals, quantities 3, quantities of orders 2.
  /// @param ID  the card (BU65_ID); 0 gives the empty grid.
  /// Reads the properties `TipoBudget` and `SottoTipoBudget`. Reads BU01_ANABUDGET, BU66_DETBUDGET.
  /// After 99 the rows that were read, or Nothing; without a connection (1) the empty grid.
  ado::RecordsetPtr RecSetPeriodiBudget(const Variant& ID);
  /// The cash-flow terms of a card (BU65_ID), every column. Reads BU67_BDGCASHFLOW.
  ado::RecordsetPtr GetRstBU67(const Variant& MyBU65_ID);

  // ---- Values and cards

  /// Writes one value of a card and stamps the card's last update.
  /// @param MyBU66_ID           the detail row; blank or 0 inserts one, or updates the one that somebody else has
  ///                            inserted meanwhile: a card has one of a kind and period, of orders any number.
  /// @param MyBU65_ID           the card.
  /// @param MyBdgTipoDettaglio  0 budget, 1 actuals, 2 orders, 2 + n forecast n.
  /// @param MyBdgTipoValore     0 amount, 1 quantity 1, 2 quantity 2; any other is refused by the database (99).
  /// @param MyPeriodo           1 to the periods of the year.
  /// @param MyValore            amount with 2 decimals, quantity with 3, as a number or as text with comma or point;
  ///                            blank clears the value. What is no number is an error (99), and nothing is written.
  /// @param MyNewBU66_ID        receives the identity of the row for a blank `MyBU66_ID`; untouched otherwise.
  /// The detail kind, value kind and period serve an insert; an update takes only the value kind. Writes
  /// BU66_DETBUDGET, BU65_TESBUDGET. No transaction: a value whose stamp fails stays written.
  void AggiornaSingoloValoreBU66(const Variant& MyBU66_ID, const Variant& MyBU65_ID,
                                 BdgTipoDettaglio MyBdgTipoDettaglio, BdgTipoValore MyBdgTipoValore,
                                 std::int16_t MyPeriodo, const Variant& MyValore, Variant& MyNewBU66_ID);
  /// Clears amounts and quantities of a card's detail kind, keeping the rows.
  /// @param MyTipoDettaglio  0 budget, 1 actuals, 2 orders, 2 + n forecast n, 99 every kind.
  /// Writes BU66_DETBUDGET; the card's last update stays. A failure reads " in UpdateNullValoriBU66 ", with a blank.
  void UpdateNullValoriBU66(const Variant& MyBU65_ID, BdgTipoDettaglio MyTipoDettaglio);
  /// Whether a card has a detail row for a kind and period.
  /// @param MyPeriodo        the period, 1 to the periods of the year.
  /// @param MyBU66_ID        receives the row's identity, 0 without one.
  /// @param MyImportoIsNull  receives whether the row's amount is missing, True without a row.
  /// Reads BU66_DETBUDGET. After a failure the arguments are those of no row.
  bool GetBdgDettaglioEsiste(const Variant& MyBU65_ID, BdgTipoDettaglio MyTipoDettaglio, BdgPeriodicita MyPeriodo,
                             Variant& MyBU66_ID, Variant& MyImportoIsNull);
  /// Creates a card of the selected budget, with an empty detail for each kind and period and, for type 4, empty
  /// cash-flow terms. Orders have details only in a budget of nature 1.
  /// @param Dict  BU65_ column names and values, written in this order; Nothing or an empty one creates no card. An
  ///              account without its chart takes the budget's. A name that is no column is an error (99), and nothing
  ///              is written.
  /// Reads the properties `TipoBudget`, `SottoTipoBudget`, `AnnoEsercizio`, `ProgressivoEsercizio`; the company is the
  /// session's. Reads BU01_ANABUDGET; writes BU65_TESBUDGET, BU66_DETBUDGET, BU67_BDGCASHFLOW. No transaction of its
  /// own: what was written before a failure stays.
  void InserimentoNuovaSchedaBudget(const ado::DictionaryPtr& Dict);
  /// BU65_ID of the card that the last `InserimentoNuovaSchedaBudget` created, as the database told it right after the
  /// insert; Null when it created none. For C++ clients only.
  const Variant& SchedaInserita() const { return schedaInserita_; }
  /// Nature (sign indicator) of an account, Empty when the chart does not have it.
  /// @param MyTipoPdc    chart kind: 3 reads PC03_ANAGPDC, any other CG24_TABPDC.
  /// @param MyCodicePdc  chart code.
  /// @param MyConto      account code.
  /// The arguments stay as they are.
  Variant GetNaturaConto(BdgTipoPdc& MyTipoPdc, Variant& MyCodicePdc, Variant& MyConto);
  /// Deletes a card (BU65_ID) with all that hangs on it; 0 or blank deletes nothing. The header goes last, and stays
  /// when another user has added details meanwhile. Writes BU66_DETBUDGET, BU65_TESBUDGET; for `TipoBudget` 4 also
  /// BU67_BDGCASHFLOW, BU14_SCADCFLOW, BU90_TABPERCBUD; for 5 also BU63_DETMASTRI. No transaction: what was deleted
  /// before a failure stays deleted. A failure reads " in CancellaRigaBU65 ", with a blank.
  void CancellaRigaBU65(Variant& MyBU65_ID);
  /// Deletes every card header that a company has of a budget, whatever its year. It does not look for details: ask
  /// GetIsBudgetConSolaTestata first. Writes BU65_TESBUDGET.
  void EliminaBudgetConSolaTestata(const Variant& MyCodiceDitta, BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);
  /// Adds to the selected budget the cards that its structure has and the budget lacks, with their empty details: one
  /// for each element, and for each site where the budget is per site. Removes and changes nothing.
  /// The structure is `CodiceStrutturaBU60`, by default the definition's. The sites are the keys of `ElencoSedi`, else
  /// `CodiceSede`, else all of the company; an element that fixes a site has only that one. For type 4 `BdgTipoScheda`,
  /// when set, is the card kind of elements without one. The company is the session's.
  /// Raises the progress events, a step for each card looked at. One transaction.
  /// Refused (1) when `SottoTipoBudget`, `AnnoEsercizio`, `ProgressivoEsercizio` or a structure is missing, or the
  /// structure does not exist ("La struttura CODE non esiste ").
  /// Reads BU01_ANABUDGET, BU60_STRUTTANAG, BU61_STRUTTELEM, CG31_SEDI, BU65_TESBUDGET; writes BU65_TESBUDGET,
  /// BU66_DETBUDGET, for type 4 BU67_BDGCASHFLOW.
  void AllineaBU65_A_StrutturaBU60();

  // ---- The three elaborations

  /// Proposes a budget from accounting balances: fills `RstSaldiElaEco` with one row per account and period.
  /// The rows have CONTO, DESCRIZIONE, PERIODO (counted from the first month of the accounting year), IMPORTO (2
  /// decimals, debit balances positive, deviation applied), BUDGETPRESENTE, SOVRASCRIVI and ID. A row whose card holds
  /// an amount of kind `TipoDettaglioDestinazione` has BUDGETPRESENTE 1 and SOVRASCRIVI 0; any other 0 and 1. A budget
  /// by months (periodicity 0) gets no rows. `RstContiNonPresentiInStruttura` is made empty.
  /// Reads the properties that select the budget, the movements, the accounts and the deviation. `TipoElaborazioneBO`,
  /// when blank, becomes 10. Raises the progress events twice: for the months read, then for the accounts.
  /// Refused (1) when an input of elaboration 10 is missing. A failed accounting situation is 99 with its own text.
  /// After a failure `RstSaldiElaEco` may be incomplete.
  /// Reads BU01_ANABUDGET, CG19_ANADITTAESER, BU65_TESBUDGET, BU66_DETBUDGET, the charts of accounts and their links,
  /// CG41_PRIMANOTA, CG42_MOVCONT. Writes nothing.
  void BdgElaEco_PopolaRstSaldiElaEco();
  /// Writes the rows of `RstSaldiElaEco` with SOVRASCRIVI 1 into the budget, whatever filter is set on them: IMPORTO
  /// becomes the amount of the account's card for `TipoDettaglioDestinazione` and PERIODO. Rows with 0 are left alone.
  /// A missing card is created when its account alone identifies a card of the budget and the structure lists it;
  /// otherwise the account goes to `RstContiNonPresentiInStruttura` (CONTO, DESCRIZIONE), once.
  /// With `ElaboraSoloContiBudgettizzati` no card is created and no account is listed. When several cards share an
  /// account, the oldest is written. A set `CodiceSede` keeps to the cards of that site.
  /// Raises the progress events, a step for each row. One transaction; running it again writes the same values.
  /// Refused (1) when an input of the elaboration in `TipoElaborazioneBO`, the `CodiceSede` of a budget per site or
  /// `RstSaldiElaEco` is missing. A detail kind or PERIODO that the budget does not have is an error (99).
  /// Reads BU01_ANABUDGET, CG19_ANADITTAESER, BU61_STRUTTELEM; writes BU65_TESBUDGET, BU66_DETBUDGET.
  void BdgElaEco_ScriviBudget_DaRstSaldiElaEco();
  /// Recomputes the selected cards from the movements of their accounts: the amounts of `TipoDettaglioDestinazione`,
  /// for the periods from `DaData` to `AData` (all periods when longer than twelve months). A period without movements
  /// becomes 0; a card without movements is left as it is, and so is one without cash-flow terms.
  /// A budget per site is elaborated for each key of `ElencoSedi`, and `CodiceSede` ends as the last; without
  /// `ElencoSedi` it is an error (99). A site without cards is told to the user by the session and passed over.
  /// `TipoElaborazioneBO`, when blank, becomes 40; `DaScheda` and `AScheda` become " " and "Z".
  /// `RstBdgSchedeDaElaborare` receives the cards, of the last site where there are sites, or Nothing. Raises the
  /// progress events for each site, a step for each card. One transaction.
  /// Refused (1) when an input of elaboration 40 is missing. A budget whose year or periodicity does not exist is 99
  /// with a blank description.
  /// Reads BU01_ANABUDGET, CG19_ANADITTAESER, BU65_TESBUDGET, BU67_BDGCASHFLOW, BU90_TABPERCBUD, CG41_PRIMANOTA,
  /// CG42_MOVCONT; writes BU66_DETBUDGET.
  void BdgElaSchede_Elaborazione();
  /// Copies a range of cards into another subtype, accounting year or site: amounts and quantities of
  /// `TipoDettaglioOrigine` become those of `TipoDettaglioDestinazione`, and the cash-flow terms follow. A missing
  /// destination card is created. What an existing one holds is replaced only with `IsSovrascriviEsistenti`. A card
  /// that would be copied onto itself with the same kind, and one without a card code, are left alone. Dates keep their
  /// distance in months from the start of the year. Due dates follow with `IsDuplicaScadenzeCashFlow`.
  /// `TipoElaborazioneBO`, when blank, becomes 42; `DaScheda` and `AScheda` become " " and "Z". Raises the progress
  /// events, a step for each card. One transaction.
  /// Refused (1) when an input of elaboration 42 or the site of a budget per site is missing, or the budgets differ in
  /// periodicity ("I budget di origine e di destinazione hanno periodicità diverse "); the last two end with
  /// " in BdgDupSchede_Duplicazione".
  /// Reads BU01_ANABUDGET, CG19_ANADITTAESER; reads and writes BU65_TESBUDGET, BU66_DETBUDGET, BU67_BDGCASHFLOW,
  /// BU14_SCADCFLOW.
  void BdgDupSchede_Duplicazione();
  /// Whether a company has personalised the levels of a card kind; False for a blank company or kind.
  /// @param MyBdgTipoScheda       0 cost, 1 revenue.
  /// @param MyBdgSchedaNrLivelli  receives the number of levels, when one is stored.
  /// Reads BU05_PERSCHCOSGEN. A failure reads " in GetIsBdgSchedePersonalizzazioneLivelliEsiste ", with a blank.
  bool GetIsBdgSchedePersonalizzazioneLivelliEsiste(const Variant& MyCodiceDitta, const Variant& MyBdgTipoScheda,
                                                    Variant& MyBdgSchedaNrLivelli);
  /// Whether a company has configured exactly a number of levels of a card kind; False for a blank number.
  /// @param MyBdgTipoScheda       0 cost, 1 revenue.
  /// @param MyBdgSchedaNrLivelli  the number of levels.
  /// Reads BU06_CONFIGLIVCOSGEN. A failure reads " in GetIsBdgSchedeConfigurazioneLivelliEsiste ", with a blank.
  bool GetIsBdgSchedeConfigurazioneLivelliEsiste(const Variant& MyCodiceDitta, const Variant& MyBdgTipoScheda,
                                                 const Variant& MyBdgSchedaNrLivelli);

  // ---- Settings of a budget

  /// Whether a budget keeps its cards per site.
  /// @param MyBdgFlgGestioneSede  receives the answer, False for a budget that does not exist and after a failure.
  /// Reads BU01_ANABUDGET.
  void GetGestioneSede(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo, bool& MyBdgFlgGestioneSede);
  /// Whether a budget keeps quantity 1 and quantity 2.
  /// @param MyBdgFlgGestioneQta1, MyBdgFlgGestioneQta2  receive the answers, False for a budget that does not exist and
  ///                                                    after a failure.
  /// Reads BU01_ANABUDGET.
  void GetGestioneQta(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo, bool& MyBdgFlgGestioneQta1,
                      bool& MyBdgFlgGestioneQta2);
  /// Whether a budget keeps ledger detail; False for a budget that does not exist. Reads BU01_ANABUDGET.
  bool GetIsGestioneMastri(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);
  /// From which month a budget counts its periods: 1 January, 0 the start of the accounting year. 1 for a budget that
  /// does not exist and after a failure. Reads BU01_ANABUDGET.
  BdgPeriodoFiscaleSolare GetAnnoBudgetFiscaleSolare(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);
  /// Periodicity of a budget: 0 month, 1 two months, 2 quarter, 3 four months, 4 half-year, 5 year; 99 for a budget
  /// that does not exist. One that is not set is an error (99) and gives 0. Reads BU01_ANABUDGET.
  std::int16_t GetPeriodicitaBudget(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);
  /// Number of forecasts of a budget; 1 for a budget that does not exist, where it is not set and after a failure.
  /// Reads BU01_ANABUDGET.
  std::int16_t GetNumeroForecast(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);
  /// Activities of a budget: 0 not kept, 1 one activity, 2 several; 0 for a budget that does not exist. One that is not
  /// set is an error (99). Reads BU01_ANABUDGET.
  std::int16_t GetTipoGestioneMultiAttivita(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);
  /// Chart kind of a budget: 1 general ledger, 2 reclassification scheme, 3 analytic chart. Only type 5 chooses; any
  /// other is 1, and nothing is read. 0 for a budget that does not exist, 1 after a failure. Reads BU01_ANABUDGET.
  BdgTipoPdc GetTipoPdC(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);
  /// Chart code of a budget. Null when none is set, 0 for a budget that does not exist. When the budget loaded last, by
  /// an elaboration or a new card, is kept on the general ledger: `CodicePdcCoGeDitta`, which takes the session's when
  /// blank, and nothing is read. Reads BU01_ANABUDGET.
  Variant GetCodicePdC(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);
  /// Nature of a budget type: 1 for 0, 1, 6, 7 and 8 (their cards have orders), 2 for 3 and 9, otherwise 0. Reads
  /// nothing.
  BdgNatura GetNaturaBudget(BdgTipo MyBdgTipo);

  // ---- Data of a budget

  /// Whether a company has a card of a budget, in any year. Reads BU65_TESBUDGET.
  bool GetIsBudgetConTestata(const Variant& MyCodiceDitta, BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);
  /// Whether a company has cards of a budget and none of them has a detail, in any year. Reads BU65_TESBUDGET,
  /// BU66_DETBUDGET.
  bool GetIsBudgetConSolaTestata(const Variant& MyCodiceDitta, BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);
  /// Whether a company holds data of a budget; False for a blank company or subtype. The property `TipoBudget`, not
  /// the argument, chooses the table: BU04_BUDGINVEST for 2, otherwise BU65_TESBUDGET; outside 0 to 9 is an error
  /// (99). A failure reads " in GetIsBudgetValorizzatoDitta ", with a blank.
  bool GetIsBudgetValorizzatoDitta(const Variant& MyCodiceDitta, BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);
  /// Whether any company holds data of a budget; False for a blank subtype. The property `TipoBudget`, not the
  /// argument, chooses the table: BU04_BUDGINVEST for 2, BU08_TESBUDCOSGEN for 4, otherwise BU65_TESBUDGET; outside 0
  /// to 9 is an error (99).
  bool GetIsBudgetValorizzato(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);

  // ---- Structures: an element code of three characters per slot

  /// Structure string of a budget, an element code of three characters per slot, as stored; "" for a budget without
  /// one. Reads BU01_ANABUDGET.
  std::string GetStruttura(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);
  /// The elements of a structure string in words, separated by ", "; blank slots are left out. An unknown code is an
  /// error (99). Reads nothing.
  std::string GetDescrizioneStruttura(const Variant& Struttura);
  /// Whether a slot of a budget's structure is the variant ("VAR"). Reads BU01_ANABUDGET.
  bool GetIsStrutturaConVariante(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);
  /// Whether a slot of a budget's structure is an element.
  /// @param ElementoDaCercareInStruttura  the code, in the case it is stored in; a blank one is in no structure.
  /// Reads BU01_ANABUDGET.
  bool GetIsElementoInStruttura(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo,
                                const std::string& ElementoDaCercareInStruttura);
  /// The analysis columns of a budget, BU65_ names separated by commas: the site of a budget per site, the columns of
  /// its type, those of its structure in slot order, the flags of type 4. None stands twice; a budget without any has
  /// the card kind and the card. Reads BU01_ANABUDGET. Without a connection (1) the columns of the type alone.
  std::string GetElencoCampi(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);
  /// Select list that puts descriptions beside codes: "code - description" as NAME_DESCR, cut at 40 characters, Null
  /// where either is missing. A line for each column that has one, begun by the indentation and ", "; "" when there is
  /// none. A code that another column makes unique (a subfamily, an account) is described when that is listed too.
  /// @param ElencoCampi          BU65_ names separated by commas; an unknown one is an error (99).
  /// @param StringaIndentazione  what each line begins with.
  /// Reads nothing.
  std::string GetStringaCodiciDescrizioni(const std::string& ElencoCampi, const std::string& StringaIndentazione = "");
  /// The outer joins that the select list of GetStringaCodiciDescrizioni needs, a line for each. They never multiply
  /// rows.
  /// @param ElencoCampi          BU65_ names separated by commas; an unknown one is an error (99).
  /// @param StringaIndentazione  what each line begins with.
  /// Reads nothing.
  std::string GetStringaJoinCodiciDescrizioni(const std::string& ElencoCampi,
                                              const std::string& StringaIndentazione = "");
  /// Data type of a BU65_TESBUDGET column, without regard to case. An unknown name is an error (99) and gives 0. Reads
  /// nothing.
  ado::DataTypeEnum GetTipoCampo(const std::string& Campo);
  /// The quote that the values of a BU65_TESBUDGET column need in a statement: "'" for text and dates, "" for numbers.
  /// An unknown name is an error (99). Reads nothing.
  Variant GetApiceCampiBU65(const Variant& MyNomeCampo);
  /// Code of the BU60 structure that a budget follows, "" for a budget without one. Reads BU01_ANABUDGET.
  std::string GetStrutturaBU60(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);
  /// Chart kind and chart code that the accounts of a BU60 structure belong to.
  /// @param TipoPdcStrutturaBU60    receives 1 general ledger, 2 reclassification scheme, 3 analytic chart; 0 for a
  ///                                structure that does not exist and after a failure.
  /// @param CodicePdcStrutturaBU60  receives the chart code; Null for a structure that does not exist and after a
  ///                                failure.
  /// Reads BU60_STRUTTANAG.
  void GetStrutturaBU60TipoPdcCodicePdc(const Variant& CodiceStrutturaBU60, BdgTipoPdc& TipoPdcStrutturaBU60,
                                        Variant& CodicePdcStrutturaBU60);
  /// Description of a BU60 structure, "" for one that does not exist. Reads BU60_STRUTTANAG.
  std::string GetDescrizioneStrutturaBU60(const Variant& CodiceStrutturaBU60);

  // ---- Words for codes; nothing is read

  /// A budget type (0 to 9) in words, "" for an unknown one.
  std::string GetDescrizioneTipoBudget(BdgTipo MyBdgTipo);
  /// A budget type (0 to 9) in one or two words, "" for an unknown one.
  std::string GetDescrizioneTipoBudgetShort(BdgTipo MyBdgTipo);
  /// Activities of a budget (0 to 2) in words, "" for an unknown code.
  /// @param MyTipoDes  1 asks for the short form.
  std::string GetDes_BdgTipoGestioneMultiAttivita(BdgTipoGestioneMultiAttivita MyBdgTipoGestioneMultiAttivita,
                                                  const Variant& MyTipoDes = {});
  /// Accounting year (0) or calendar year (1) in words, "" for an unknown code.
  /// @param MyTipoDes  1 asks for the short form.
  std::string GetDes_BdgPeriodoFiscaleSolare(BdgPeriodoFiscaleSolare MyBdgPeriodoFiscaleSolare,
                                             const Variant& MyTipoDes = {});
  /// A periodicity (0 to 5) in words, "" for an unknown code.
  /// @param MyTipoDes  1 asks for the short form.
  std::string GetDes_BdgPeriodicita(BdgPeriodicita MyBdgPeriodicita, const Variant& MyTipoDes = {});
  /// A chart kind (1 to 3) in words, "" for an unknown code.
  /// @param MyTipoDes  1 asks for the short form.
  std::string GetDes_BdgTipoPdc(BdgTipoPdc MyBdgTipoPdc, const Variant& MyTipoDes = {});
  /// "No" for 0 or False, "Sì" for any other number or True, "" for a blank.
  /// @param MyTipoDes  1 asks for the short form.
  std::string GetDes_BdgSiNo(const Variant& MyBdgTipoNoSi, const Variant& MyTipoDes = {});

  // ---- Periods and accounting years: a year is a company, a calendar year and its progressive

  /// Periods per year of a periodicity 0 to 5: 12, 6, 4, 3, 2, 1; Null for any other. Reads nothing.
  Variant GetBdgNrPeriodi(BdgPeriodicita MyBdgPeriodicita);
  /// The period (1 to the periods per year) that a calendar month falls in; 0 for a month outside 1 to 12 or an unknown
  /// periodicity.
  /// @param MyBdgPeriodoSolareFiscale  1 counts months from January, any other from the month of MyBdgDataInizio.
  /// @param MyBdgDataInizio            first date of the budget; when it is needed and blank, the period is 0.
  /// Reads nothing. A failure reads " in GetBdgPeriodo ", with a blank.
  std::int16_t GetBdgPeriodo(std::int16_t MyMese, BdgPeriodicita MyBdgPeriodicita,
                             BdgPeriodoFiscaleSolare MyBdgPeriodoSolareFiscale, const Variant& MyBdgDataInizio);
  /// First and last date of a budget: the accounting year's; of a longer year its first twelve calendar months.
  /// @param MyBdgDataInizio, MyBdgDataFine  receive the dates, Empty for a year that does not exist.
  /// Reads CG19_ANADITTAESER; the budget's type and subtype do not matter. A failure of its own reads
  /// " in GetBdgDataInizioBdgDataFine ", with a blank.
  void GetBdgDataInizioBdgDataFine(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo, const Variant& MyCodiceDitta,
                                   const Variant& MyAnnoEsercizio, const Variant& MyProgressivoEsercizio,
                                   Variant& MyBdgDataInizio, Variant& MyBdgDataFine);
  /// Label of a period in the session's words: "Gennaio", "2° Trimestre"; "" where none can be found. It never reports
  /// an error. Reads CG19_ANADITTAESER for months of a budget that counts them from the accounting year.
  std::string GetDescrizionePeriodo(const Variant& MyCodiceDitta, BdgPeriodicita MyBdgPeriodicita,
                                    BdgPeriodoFiscaleSolare MyBdgPeriodoFiscaleSolare, std::int16_t MyPeriodo,
                                    const Variant& MyAnnoEsercizio, const Variant& MyProgressivoEsercizio);
  /// Description of an account, on the general ledger the company's own wording first; Empty when the chart does not
  /// have it.
  /// @param MyTipoPdc  1 reads CG24_TABPDC with CG39_PRSDESPDC, 2 CG23_RICLBILCEE, 3 PC03_ANAGPDC, any other nothing.
  Variant GetDescrizioneConto(const Variant& MyCodiceDitta, BdgTipoPdc MyTipoPdc, const Variant& MyCodicePdc,
                              const Variant& MyConto);
  /// Progressive of the first accounting year stored for a company and calendar year, 0 without one. Reads
  /// CG19_ANADITTAESER.
  std::int16_t GetProgressivoEsercizio(const Variant& MyCodiceDitta, const Variant& MyAnnoEsercizio);
  /// Whether an accounting year exists. Reads CG19_ANADITTAESER.
  bool EsisteEsercizio(const Variant& MyCodiceDitta, const Variant& MyAnnoEsercizio,
                       const Variant& MyProgressivoEsercizio);
  /// Whether a company has any accounting year of a calendar year. Reads CG19_ANADITTAESER.
  bool EsistonoEsercizi(const Variant& MyCodiceDitta, const Variant& MyAnnoEsercizio);
  /// First and last date of an accounting year.
  /// @param MyDataInizioEsercizio, MyDataFineEsercizio  receive the dates; both stay as they are when the year does not
  ///                                                    exist.
  /// Reads CG19_ANADITTAESER.
  void DeterminaDateInizioFineEsercizio(const Variant& MyCodiceDitta, const Variant& MyAnnoEsercizio,
                                        const Variant& MyProgressivoEsercizio, Variant& MyDataInizioEsercizio,
                                        Variant& MyDataFineEsercizio);
  /// Whether an accounting year is closed; False for one that does not exist. Reads CG19_ANADITTAESER.
  bool GetIsEsercizioChiuso(const Variant& MyCodiceDitta, const Variant& MyAnnoEsercizio,
                            const Variant& MyProgressivoEsercizio);

  // ---- Values. A number as text has a comma or a point; where it has both, the session's decimal sign tells which

  /// MyValore2 - MyValore1; Null when either is Null, Empty counts as 0. Text that is no number is an error (99).
  Variant CalcolaDelta(const Variant& MyValore2, const Variant& MyValore1);
  /// (MyValore2 - MyValore1) / MyValore1 as a ratio: 0.25 is 25 per cent. Null when MyValore2 is Null or MyValore1 is
  /// blank or zero. Text that is no number is an error (99).
  Variant CalcolaDeltaPercentuale(const Variant& MyValore2, const Variant& MyValore1);
  /// ValIfNull for a blank (Null, Empty, text of blanks), otherwise Valore unchanged. Never fails, and leaves the
  /// outcome alone.
  Variant NVL(const Variant& Valore, const Variant& ValIfNull);
  /// The value as text without blanks around it, padded on the right or cut to exactly Pint_Len characters. Null for
  /// Null and Empty; Empty for a value that has no text or a length below 0. Never fails, and leaves the outcome alone.
  Variant BFill(const Variant& Pvar_Stringa, std::int16_t Pint_Len);
  /// The value as text without trailing blanks, "" for Null and Empty. A value that has no text is an error (99).
  Variant RTrimN(const Variant& fvar_Value);
  /// The value as an exact decimal; 0 for Null, Empty and "". What is no number is an error (99).
  Variant CDecN(const Variant& fvar_Value);

 private:
  std::unique_ptr<Identita> identita_;
  std::unique_ptr<Contesto> ctx_;
  Variant schedaInserita_ = Variant::Null();
};

}  // namespace bukorval
