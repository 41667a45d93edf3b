#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "ado/connection/Connection.h"
#include "values/Errore.h"
#include "values/Export.h"
#include "values/Variant.h"

/// The suite's services that the budget object uses, created by class name.
namespace suite {

inline constexpr std::string_view kServizioDate = "NEXOR_LibSrv.ServizioDate";
inline constexpr std::string_view kServizioAritmetico = "NEXOR_LibSrv.ServizioAritmetico";
inline constexpr std::string_view kServizioEsercizi = "NEXOR_LibSrv.ServizioEsercizi";
inline constexpr std::string_view kSituazioneContabile = "VELMARO_EPCALC.CLSVELMARO_EPCALC";

/// Parses a date given as text and renders it for the database.
class BUKORVAL_API ServizioDate : public values::Object {
 public:
  virtual void Data(std::string_view testo) = 0;
  /// 0 when the text was a date.
  virtual int CodiceErrore() const = 0;
  /// "yyyymmdd" or "yyyymmdd hh:mm:ss", without quotes.
  virtual std::string DataDB() const = 0;
};

/// Decimal rounding.
class BUKORVAL_API ServizioAritmetico : public values::Object {
 public:
  /// Mode 5 rounds halves away from zero; a result with more than `precisione` digits throws.
  virtual values::Variant Arrotonda(const values::Variant& valore, int precisione, int decimali, int modo) = 0;
};

/// Accounting years of a company (CG19_ANADITTAESER).
class BUKORVAL_API ServizioEsercizi : public values::Object {
 public:
  virtual void Connessione(ado::ConnectionPtr connessione) = 0;
  virtual bool Esiste(const values::Variant& ditta, const values::Variant& anno,
                      const values::Variant& progressivo) = 0;
  virtual bool EsisteAnno(const values::Variant& ditta, const values::Variant& anno) = 0;
  /// Leaves both dates as they are when the year does not exist.
  virtual void DateInizioFine(const values::Variant& ditta, const values::Variant& anno,
                              const values::Variant& progressivo, values::Variant& inizio, values::Variant& fine) = 0;
  virtual bool Chiuso(const values::Variant& ditta, const values::Variant& anno,
                      const values::Variant& progressivo) = 0;
};

/// Economic and patrimonial situation: balances per general-ledger account for a date range.
/// The properties are set, the method is called, then Stato, errore and RecordsetSituazioneEP are read.
class BUKORVAL_API SituazioneContabile : public values::Object {
 public:
  ado::ConnectionPtr Connection;
  std::string ConnectionString;
  values::Variant Ditta, SedeDaElaborare, GruppoPdC, AnnoEsercizio, ProgrEsercizio;
  values::Variant DataInizioElab, DataFineElab;
  values::Variant TipoData, TipiMov_WhereCondition;
  values::Variant SaldoDiversoDaZero, SimulaSaldoApertura, SimulaAmmortamenti, SimulaAmmCivilistico;
  values::Variant TipoAmmortamento, SimulaRisconti, SimulaRimanenzeFinali, TipoConti, NumLivelli, Intermedi;
  values::Variant PiuAttivita, MastroClienti, MastroFornitori, PercDiRicarica, Situazione;
  values::Variant ProvenienzaRichiestaElaborazione, FiltroConto;

  virtual void CreaRecordsetSituazioneEconomicaPatrimoniale() = 0;

  /// 0 after success.
  int Stato = 0;
  std::string errore;
  /// Fields conto, ATTIVITA (debit balances), PASSIVITA (credit balances); decimal(15,2), one of the two Null.
  ado::RecordsetPtr RecordsetSituazioneEP;
};

using Creatore = std::function<std::shared_ptr<values::Object>()>;

/// Makes a class known under a name; a later registration replaces an earlier one, so a host can put its own.
BUKORVAL_API void registraServizio(std::string_view nome, Creatore creatore);
/// Throws Errore "ActiveX component can't create object: NAME" for an unknown name.
BUKORVAL_API std::shared_ptr<values::Object> creaOggetto(std::string_view nome);

/// creaOggetto, seen as the interface T; throws when the object is of another class.
template <class T>
std::shared_ptr<T> creaServizio(std::string_view nome) {
  auto servizio = std::dynamic_pointer_cast<T>(creaOggetto(nome));
  if (!servizio) throw values::Errore("Class does not support the expected interface: " + std::string(nome));
  return servizio;
}

}  // namespace suite
