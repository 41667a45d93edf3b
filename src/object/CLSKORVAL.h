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
#include "values/Variant.h"

namespace bukorval {

class Contesto;
class Identita;

/// The budget business object. Create it, give it a session (`ActiveInterface`) and a connection or
/// connection string, set the properties that select the budget, call a method, then read Stato() and
/// errore().
///
/// Outcome: no exception leaves a method. Each one (but NVL and BFill) first resets the outcome, then leaves
/// 0 for success; 1 when it was refused for missing input or data, with a fixed message; 99 for a trapped
/// run-time error, its description followed by " in " and the procedure that failed. A method that did not
/// succeed returns its neutral value and leaves its in/out arguments as its own text says. A budget is a type
/// (0 to 9) and a subtype (two characters). Amounts have 2 decimals, quantities 3, dates are calendar dates.
/// One instance serves one caller at a time.
class CLSKORVAL : public Proprieta {
 public:
  using Variant = values::Variant;

  CLSKORVAL();
  ~CLSKORVAL();
  CLSKORVAL(const CLSKORVAL&) = delete;
  CLSKORVAL& operator=(const CLSKORVAL&) = delete;

  /// Progress of the long steps; a handler that throws ends the running operation with 99.
  Eventi eventi;

  /// Outcome of the last operation: 0, 1 or 99.
  BdgStato Stato() const;
  /// Text of the last refusal or error; empty after success.
  const std::string& errore() const;
  /// The connection to use from now on; it stays the caller's to close. Nothing means: make one when needed.
  void Connessione(ado::ConnectionPtr connessione);
  /// Connection string for when no connection was given: "Provider=…;Data Source=…".
  const std::string& StringaConnessione() const;
  void StringaConnessione(std::string valore);

  // ---- Grids

  /// The budget grid: one row per card of the selected budget with its codes, descriptions and totals; delta
  /// columns are Null, for CalcolaDelta and CalcolaDeltaPercentuale. Reads `TipoBudget`, `SottoTipoBudget`,
  /// `AnnoEsercizio`, `ProgressivoEsercizio`, `CodiceSede`, `BdgTipoScheda` and the session's company. Reads
  /// BU01_ANABUDGET, BU65_TESBUDGET, BU66_DETBUDGET. No set after a failure; an empty grid without
  /// connection.
  ado::RecordsetPtr RecordSetBudget();
  /// One row per period of a card (BU65_ID), the detail kinds side by side; 0 gives the empty grid.
  /// Reads BU01_ANABUDGET, BU66_DETBUDGET.
  ado::RecordsetPtr RecSetPeriodiBudget(const Variant& ID);
  /// The cash-flow rows of a card (BU65_ID). Reads BU67_BDGCASHFLOW.
  ado::RecordsetPtr GetRstBU67(const Variant& MyBU65_ID);

  // ---- Values and cards

  /// Writes one value of a card; a Null value clears it. A MyBU66_ID of Null or 0 inserts a new row.
  /// @param MyBdgTipoDettaglio  0 budget, 1 actuals, 2 orders, 2 + n forecast n.
  /// @param MyBdgTipoValore     0 amount, 1 quantity 1, 2 quantity 2.
  /// @param MyPeriodo           1 to the periods of the year.
  /// @param MyValore            amount with 2 decimals, quantity with 3, as a number or as text with comma or
  /// point.
  /// @param MyNewBU66_ID        receives the new row's identity; untouched by an update.
  /// Writes BU66_DETBUDGET and the last-update date in BU65_TESBUDGET.
  void AggiornaSingoloValoreBU66(const Variant& MyBU66_ID, const Variant& MyBU65_ID,
                                 BdgTipoDettaglio MyBdgTipoDettaglio, BdgTipoValore MyBdgTipoValore,
                                 std::int16_t MyPeriodo, const Variant& MyValore, Variant& MyNewBU66_ID);
  /// Clears the values of a card's detail kind (99: every kind), keeping the rows. Writes BU66_DETBUDGET.
  void UpdateNullValoriBU66(const Variant& MyBU65_ID, BdgTipoDettaglio MyTipoDettaglio);
  /// Whether the card has a row for the kind and period. MyBU66_ID receives its identity, 0 without one;
  /// MyImportoIsNull whether its amount is Null, true without a row. Reads BU66_DETBUDGET.
  bool GetBdgDettaglioEsiste(const Variant& MyBU65_ID, BdgTipoDettaglio MyTipoDettaglio, BdgPeriodicita MyPeriodo,
                             Variant& MyBU66_ID, Variant& MyImportoIsNull);
  /// Creates a card of the selected budget from column names and values (BU65_ columns), with its empty
  /// details and, for type 4, its empty cash-flow row. An empty dictionary, or none, writes nothing. Writes
  /// BU65_TESBUDGET, BU66_DETBUDGET, BU67_BDGCASHFLOW.
  void InserimentoNuovaSchedaBudget(const ado::DictionaryPtr& Dict);
  /// Nature (sign indicator) of an account of the chart. Reads PC03_ANAGPDC for kind 3, CG24_TABPDC
  /// otherwise.
  Variant GetNaturaConto(BdgTipoPdc& MyTipoPdc, Variant& MyCodicePdc, Variant& MyConto);
  /// Deletes a card with all that hangs on it; 0 or Null deletes nothing. Writes BU66_DETBUDGET,
  /// BU65_TESBUDGET; for type 4 also BU67_BDGCASHFLOW, BU14_SCADCFLOW, BU90_TABPERCBUD; for type 5 also
  /// BU63_DETMASTRI.
  void CancellaRigaBU65(Variant& MyBU65_ID);
  /// Deletes a company's card headers of a budget without looking for details (see
  /// GetIsBudgetConSolaTestata). Writes BU65_TESBUDGET.
  void EliminaBudgetConSolaTestata(const Variant& MyCodiceDitta, BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);
  /// Adds the cards that the budget's structure (`CodiceStrutturaBU60`, by default the definition's) has and
  /// the budget lacks, for each site where it is per site, in one transaction; removes nothing. 1 when an
  /// input is missing or the structure does not exist. Raises the progress events. Reads BU60_STRUTTANAG,
  /// BU61_STRUTTELEM; writes BU65_TESBUDGET, BU66_DETBUDGET, for type 4 BU67_BDGCASHFLOW.
  void AllineaBU65_A_StrutturaBU60();

  // ---- The three elaborations

  /// Fills `RstSaldiElaEco` with one row per account and period from the accounting balances, and
  /// `RstContiNonPresentiInStruttura`. 1 when an input is missing. Writes nothing. Raises the progress
  /// events.
  void BdgElaEco_PopolaRstSaldiElaEco();
  /// Writes the rows of `RstSaldiElaEco` with SOVRASCRIVI 1 into the cards, in one transaction.
  /// Writes BU65_TESBUDGET, BU66_DETBUDGET.
  void BdgElaEco_ScriviBudget_DaRstSaldiElaEco();
  /// Recomputes the selected cards from accounting movements, in one transaction. 1 when an input is missing.
  /// Reads CG41_PRIMANOTA, CG42_MOVCONT, BU90_TABPERCBUD; writes BU66_DETBUDGET.
  void BdgElaSchede_Elaborazione();
  /// Copies a range of cards into another subtype, year or site, in one transaction. 1 when an input is
  /// missing. Writes BU65_TESBUDGET, BU66_DETBUDGET, BU67_BDGCASHFLOW, BU14_SCADCFLOW.
  void BdgDupSchede_Duplicazione();
  /// Whether the company has personalised the levels of a card kind; MyBdgSchedaNrLivelli then receives their
  /// number, when one is stored. Reads BU05_PERSCHCOSGEN.
  bool GetIsBdgSchedePersonalizzazioneLivelliEsiste(const Variant& MyCodiceDitta, const Variant& MyBdgTipoScheda,
                                                    Variant& MyBdgSchedaNrLivelli);
  /// Whether exactly MyBdgSchedaNrLivelli levels of the card kind are configured. Reads BU06_CONFIGLIVCOSGEN.
  bool GetIsBdgSchedeConfigurazioneLivelliEsiste(const Variant& MyCodiceDitta, const Variant& MyBdgTipoScheda,
                                                 const Variant& MyBdgSchedaNrLivelli);

  // ---- Settings of a budget (BU01_ANABUDGET); in brackets the value for a budget that does not exist

  /// Whether cards are kept per site [false].
  void GetGestioneSede(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo, bool& MyBdgFlgGestioneSede);
  /// Whether quantity 1 and quantity 2 are kept [both false].
  void GetGestioneQta(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo, bool& MyBdgFlgGestioneQta1,
                      bool& MyBdgFlgGestioneQta2);
  /// Whether ledger detail is kept [false].
  bool GetIsGestioneMastri(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);
  /// 1 when months count from January, 0 when from the start of the accounting year [1].
  BdgPeriodoFiscaleSolare GetAnnoBudgetFiscaleSolare(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);
  /// Periodicity 0 to 5 [99]; 0 without a connection.
  std::int16_t GetPeriodicitaBudget(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);
  /// Number of forecasts [1].
  std::int16_t GetNumeroForecast(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);
  /// Multi-activity kind [0].
  std::int16_t GetTipoGestioneMultiAttivita(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);
  /// Chart kind 1 to 3 [0]; budgets of any type but 5 are kept on the company's general ledger, 1.
  BdgTipoPdc GetTipoPdC(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);
  /// Chart code, Null when none is set [0]; `CodicePdcCoGeDitta`, by default the session's, when the loaded
  /// budget is kept on the general ledger.
  Variant GetCodicePdC(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);
  /// 1 for types 0, 1, 6, 7, 8; 2 for types 3 and 9; otherwise 0. Reads nothing.
  BdgNatura GetNaturaBudget(BdgTipo MyBdgTipo);

  // ---- Data of a budget

  /// Whether the company has a card of the budget. Reads BU65_TESBUDGET.
  bool GetIsBudgetConTestata(const Variant& MyCodiceDitta, BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);
  /// Whether it has cards and none has a detail. Reads BU65_TESBUDGET, BU66_DETBUDGET.
  bool GetIsBudgetConSolaTestata(const Variant& MyCodiceDitta, BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);
  /// Whether the company holds data of the budget. `TipoBudget` chooses the table: BU04_BUDGINVEST for 2,
  /// otherwise BU65_TESBUDGET.
  bool GetIsBudgetValorizzatoDitta(const Variant& MyCodiceDitta, BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);
  /// Whether any company does. `TipoBudget` chooses the table: BU04_BUDGINVEST for 2, BU08_TESBUDCOSGEN for
  /// 4, otherwise BU65_TESBUDGET.
  bool GetIsBudgetValorizzato(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);

  // ---- Structures: an element code of three characters per slot

  /// The structure string of a budget, "" without one. Reads BU01_ANABUDGET.
  std::string GetStruttura(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);
  /// The elements of a structure string in words.
  std::string GetDescrizioneStruttura(const Variant& Struttura);
  /// Whether a slot of the budget's structure is the variant ("VAR"). Reads BU01_ANABUDGET.
  bool GetIsStrutturaConVariante(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);
  /// Whether a slot of the budget's structure is the element. Reads BU01_ANABUDGET.
  bool GetIsElementoInStruttura(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo,
                                const std::string& ElementoDaCercareInStruttura);
  /// The analysis columns of a budget, comma-separated BU65_ names. Reads BU01_ANABUDGET.
  std::string GetElencoCampi(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);
  /// Select list of the codes with their descriptions (NAME_DESCR), one indented line per column.
  std::string GetStringaCodiciDescrizioni(const std::string& ElencoCampi, const std::string& StringaIndentazione = "");
  /// The joins that select list needs, one indented line per clause.
  std::string GetStringaJoinCodiciDescrizioni(const std::string& ElencoCampi,
                                              const std::string& StringaIndentazione = "");
  /// Data type of a BU65_TESBUDGET column.
  ado::DataTypeEnum GetTipoCampo(const std::string& Campo);
  /// The quote that a BU65_TESBUDGET column's values need in a statement: "'" or "".
  Variant GetApiceCampiBU65(const Variant& MyNomeCampo);
  /// Code of the budget's BU60 structure, "" without one. Reads BU01_ANABUDGET.
  std::string GetStrutturaBU60(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo);
  /// Chart kind and chart code of a BU60 structure. Reads BU60_STRUTTANAG.
  void GetStrutturaBU60TipoPdcCodicePdc(const Variant& CodiceStrutturaBU60, BdgTipoPdc& TipoPdcStrutturaBU60,
                                        Variant& CodicePdcStrutturaBU60);
  /// Description of a BU60 structure. Reads BU60_STRUTTANAG.
  std::string GetDescrizioneStrutturaBU60(const Variant& CodiceStrutturaBU60);

  // ---- Words for codes, "" for an unknown code; MyTipoDes 1 asks for the short form

  std::string GetDescrizioneTipoBudget(BdgTipo MyBdgTipo);
  std::string GetDescrizioneTipoBudgetShort(BdgTipo MyBdgTipo);
  std::string GetDes_BdgTipoGestioneMultiAttivita(BdgTipoGestioneMultiAttivita MyBdgTipoGestioneMultiAttivita,
                                                  const Variant& MyTipoDes = {});
  std::string GetDes_BdgPeriodoFiscaleSolare(BdgPeriodoFiscaleSolare MyBdgPeriodoFiscaleSolare,
                                             const Variant& MyTipoDes = {});
  std::string GetDes_BdgPeriodicita(BdgPeriodicita MyBdgPeriodicita, const Variant& MyTipoDes = {});
  std::string GetDes_BdgTipoPdc(BdgTipoPdc MyBdgTipoPdc, const Variant& MyTipoDes = {});
  std::string GetDes_BdgSiNo(const Variant& MyBdgTipoNoSi, const Variant& MyTipoDes = {});

  // ---- Periods and accounting years; the questions about years give false without a connection

  /// Periods per year of a periodicity 0 to 5: 12, 6, 4, 3, 2, 1; Null for any other.
  Variant GetBdgNrPeriodi(BdgPeriodicita MyBdgPeriodicita);
  /// The period (1 to the periods per year) that a calendar month falls in; 0 for a month outside 1 to 12 or
  /// an unknown periodicity. MyBdgDataInizio, the budget's first date, gives the first month when
  /// MyBdgPeriodoSolareFiscale is not 1.
  std::int16_t GetBdgPeriodo(std::int16_t MyMese, BdgPeriodicita MyBdgPeriodicita,
                             BdgPeriodoFiscaleSolare MyBdgPeriodoSolareFiscale, const Variant& MyBdgDataInizio);
  /// First and last date of the budget: the accounting year's, but never more than twelve months.
  /// Reads CG19_ANADITTAESER.
  void GetBdgDataInizioBdgDataFine(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo, const Variant& MyCodiceDitta,
                                   const Variant& MyAnnoEsercizio, const Variant& MyProgressivoEsercizio,
                                   Variant& MyBdgDataInizio, Variant& MyBdgDataFine);
  /// Label of a period: a month name, or its number and the period word. Never reports an error.
  std::string GetDescrizionePeriodo(const Variant& MyCodiceDitta, BdgPeriodicita MyBdgPeriodicita,
                                    BdgPeriodoFiscaleSolare MyBdgPeriodoFiscaleSolare, std::int16_t MyPeriodo,
                                    const Variant& MyAnnoEsercizio, const Variant& MyProgressivoEsercizio);
  /// Description of an account; Empty when the chart does not have it. Reads CG24_TABPDC with CG39_PRSDESPDC
  /// (kind 1), CG23_RICLBILCEE (2) or PC03_ANAGPDC (3).
  Variant GetDescrizioneConto(const Variant& MyCodiceDitta, BdgTipoPdc MyTipoPdc, const Variant& MyCodicePdc,
                              const Variant& MyConto);
  /// Progressive of the company's accounting year, 0 without one. Reads CG19_ANADITTAESER.
  std::int16_t GetProgressivoEsercizio(const Variant& MyCodiceDitta, const Variant& MyAnnoEsercizio);
  /// Whether the accounting year exists.
  bool EsisteEsercizio(const Variant& MyCodiceDitta, const Variant& MyAnnoEsercizio,
                       const Variant& MyProgressivoEsercizio);
  /// Whether any accounting year of that calendar year exists.
  bool EsistonoEsercizi(const Variant& MyCodiceDitta, const Variant& MyAnnoEsercizio);
  /// First and last date of an accounting year; both stay as they are when it does not exist.
  void DeterminaDateInizioFineEsercizio(const Variant& MyCodiceDitta, const Variant& MyAnnoEsercizio,
                                        const Variant& MyProgressivoEsercizio, Variant& MyDataInizioEsercizio,
                                        Variant& MyDataFineEsercizio);
  /// Whether the accounting year is closed.
  bool GetIsEsercizioChiuso(const Variant& MyCodiceDitta, const Variant& MyAnnoEsercizio,
                            const Variant& MyProgressivoEsercizio);

  // ---- Values

  /// MyValore2 - MyValore1; Null when either is Null.
  Variant CalcolaDelta(const Variant& MyValore2, const Variant& MyValore1);
  /// (MyValore2 - MyValore1) / MyValore1, a ratio (0.25 for 25 %); Null when either is Null or MyValore1 is
  /// zero.
  Variant CalcolaDeltaPercentuale(const Variant& MyValore2, const Variant& MyValore1);
  /// ValIfNull for Null, Empty and text of blanks; otherwise Valore unchanged. Leaves the outcome alone.
  Variant NVL(const Variant& Valore, const Variant& ValIfNull);
  /// Text trimmed, then padded with blanks or cut to exactly Pint_Len characters; Null for Null and Empty.
  /// Leaves the outcome alone.
  Variant BFill(const Variant& Pvar_Stringa, std::int16_t Pint_Len);
  /// Text without trailing blanks; "" for Null and Empty.
  Variant RTrimN(const Variant& fvar_Value);
  /// The exact decimal of a value, read with the session's decimal sign when it is text; 0 for Null, Empty
  /// and "".
  Variant CDecN(const Variant& fvar_Value);

 private:
  std::unique_ptr<Identita> identita_;
  std::unique_ptr<Contesto> ctx_;
};

}  // namespace bukorval
