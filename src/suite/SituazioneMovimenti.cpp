#include "suite/SituazioneMovimenti.h"

#include <algorithm>
#include <exception>
#include <map>
#include <optional>
#include <string>

#include "suite/Competenza.h"
#include "suite/CondizioneMovimenti.h"
#include "suite/Denaro.h"
#include "suite/Esercizi.h"
#include "suite/NumeroSql.h"
#include "values/Conversion.h"
#include "values/Errore.h"
#include "values/Text.h"

namespace suite {
namespace {

using values::Date;
using values::Decimal;
using values::Variant;

constexpr const char* kDataCompetenza = "ISNULL(ISNULL(CG42_DATAINICOMP, CG41_DATADOC), CG41_DATAREG)";
constexpr const char* kImportoConSegno = "CASE WHEN CG42_INDDAAV = 2 THEN 0 - CG42_IMPTOTALE ELSE CG42_IMPTOTALE END";
/// A line that accruals spread over its competence interval.
constexpr const char* kRigaConIntervallo =
    "(CG42_DATAINICOMP IS NOT NULL AND CG42_DATAFINCOMP IS NOT NULL AND CG42_DATAFINCOMP >= CG42_DATAINICOMP"
    " AND ISNULL(CG42_INDRATRIS, 0) <> 4)";

struct ConfrontoConti {
  bool operator()(const std::string& a, const std::string& b) const { return values::compareText(a, b) < 0; }
};
using Saldi = std::map<std::string, Decimal, ConfrontoConti>;

std::string primoGiorno(const SituazioneContabile& s) {
  return "'" + values::toDate(s.DataInizioElab).dateOnly().toSql() + "'";
}
/// The range ends before this day: entries of its last day count whatever their time.
std::string giornoDopo(const SituazioneContabile& s) {
  return "'" + values::toDate(s.DataFineElab).dateOnly().addDays(1).toSql() + "'";
}
std::string testo(const Variant& valore) { return values::toPlainText(valore); }
std::string numero(const Variant& valore) {
  if (auto numero = numeroSql(valore)) return *std::move(numero);
  throw values::Errore("Type mismatch: \"" + testo(valore) + "\" is no number");
}
std::string condizione(const Variant& valore) {
  auto condizione = testo(valore);
  if (const auto motivo = rifiutoCondizioneMovimenti(condizione))
    throw values::Errore("The condition on movements is refused: " + *motivo);
  return condizione;
}
bool acceso(const Variant& valore) { return !values::isBlank(valore) && values::toInt32(valore) != 0; }

/// The last day of the movements' accounting year; nothing when the calendar does not have it.
std::optional<Date> fineEsercizio(const SituazioneContabile& s) {
  Esercizi esercizi;
  esercizi.Connessione(s.Connection);
  Variant inizio, fine;
  esercizi.DateInizioFine(s.Ditta, s.AnnoEsercizio, s.ProgrEsercizio, inizio, fine);
  if (values::isBlank(fine)) return std::nullopt;
  return values::toDate(fine).dateOnly();
}

std::string esercizio(const SituazioneContabile& s) {
  return testo(s.Ditta) + "/" + testo(s.AnnoEsercizio) + "/" + testo(s.ProgrEsercizio);
}

/// What counts of the days beyond the accounting year: in a range that begins inside it and ends in a later month the
/// entries that adjust it, in ranges after that one what it has not counted.
class OltreEsercizio {
 public:
  OltreEsercizio(const SituazioneContabile& s, std::optional<RettificheContate>& contate)
      : fine_(values::toDate(s.DataFineElab)) {
    const auto ultimo = fineEsercizio(s);
    if (!ultimo) return;
    const Date inizio = values::toDate(s.DataInizioElab);
    if (inizio > *ultimo) {
      if (contate && contate->esercizio == esercizio(s) && inizio <= contate->fino)
        condizione_ = {">=", contate->fino.addDays(1), "ISNULL(CG41_FLGRETTIF, 0) = 0"};
    } else if (fine_.dateOnly() > ultimo->lastOfMonth()) {
      condizione_ = {"<", ultimo->addDays(1), "CG41_FLGRETTIF <> 0"};
      contate = RettificheContate{esercizio(s), fine_.dateOnly()};
      fine_ = *ultimo;
    }
  }

  /// The last day on which competence accrues.
  const Date& fine() const { return fine_; }
  /// "" when every line of the range counts.
  std::string condizione(const std::string& giorno) const {
    if (!condizione_) return {};
    return " AND (" + giorno + " " + condizione_->confronto + " '" + condizione_->giorno.toSql() + "' OR " +
           condizione_->altrimenti + ")";
  }

 private:
  struct Condizione {
    const char* confronto;
    Date giorno;
    const char* altrimenti;
  };
  Date fine_;
  std::optional<Condizione> condizione_;
};

/// Which movements count, whatever their dates.
std::string condizioni(const SituazioneContabile& s) {
  std::string sql = " WHERE CG41_DITTA_CG18 = " + numero(s.Ditta);
  sql += " AND CG41_ANNO_CG19 = " + numero(s.AnnoEsercizio);
  sql += " AND CG41_PROGESER_CG19 = " + numero(s.ProgrEsercizio);
  sql += acceso(s.SimulaAmmCivilistico) ? " AND CG41_INDPROVREG IN (0, " + numero(s.TipoAmmortamento) + ")"
                                        : std::string(" AND CG41_INDPROVREG = 0");
  if (!values::isBlank(s.GruppoPdC)) sql += " AND CG42_GRUPPO_CG10 = " + numero(s.GruppoPdC);
  if (!values::isBlank(s.SedeDaElaborare))
    sql += " AND ISNULL(CG42_CODICE_CG31, CG41_CODICE_CG31) = " + numero(s.SedeDaElaborare);
  if (!values::isBlank(s.TipiMov_WhereCondition)) sql += " AND (" + condizione(s.TipiMov_WhereCondition) + ")";
  return sql + testo(values::nvl(s.FiltroConto, ""));
}

std::string origine() {
  return " FROM CG42_MOVCONT WITH (NOLOCK) INNER JOIN CG41_PRIMANOTA WITH (NOLOCK)"
         " ON CG42_DITTA_CG18 = CG41_DITTA_CG18 AND CG42_NUMREG_CG41 = CG41_NUMREG";
}

void somma(Saldi& saldi, const Variant& conto, const Variant& importo) {
  auto& saldo = saldi[testo(conto)];
  saldo = saldo + values::toDecimal(values::nvl(importo, 0));
}

void aggiungiPerData(const SituazioneContabile& s, const OltreEsercizio& oltre, Saldi& saldi) {
  const std::string giorno = acceso(s.TipoData) ? kDataCompetenza : "CG41_DATAREG";
  std::string sql = "SELECT CG42_CONTOPAR_CG24 AS CONTO, SUM(" + std::string(kImportoConSegno) + ") AS SALDO";
  sql += origine() + condizioni(s);
  sql += " AND " + giorno + " >= " + primoGiorno(s) + " AND " + giorno + " < " + giornoDopo(s);
  sql += oltre.condizione(giorno);
  if (acceso(s.SimulaRisconti)) sql += std::string(" AND NOT ") + kRigaConIntervallo;
  sql += " GROUP BY CG42_CONTOPAR_CG24";
  const auto rst = s.Connection->Execute(sql);
  for (; !rst->Eof(); rst->MoveNext()) somma(saldi, (*rst)["CONTO"].Value(), (*rst)["SALDO"].Value());
}

void aggiungiPerCompetenza(const SituazioneContabile& s, const OltreEsercizio& oltre, Saldi& saldi) {
  std::string sql = "SELECT CG42_CONTOPAR_CG24 AS CONTO, " + std::string(kImportoConSegno) + " AS IMPORTO,";
  sql += " CG42_DATAINICOMP, CG42_DATAFINCOMP" + origine() + condizioni(s) + " AND " + kRigaConIntervallo;
  // A line that begins beyond the year accrues nothing: its account gets no row of zeros.
  sql += " AND CG42_DATAINICOMP < '" + oltre.fine().dateOnly().addDays(1).toSql() + "'";
  sql += " AND CG42_DATAFINCOMP >= " + primoGiorno(s);
  const auto rst = s.Connection->Execute(sql);
  const Date da = values::toDate(s.DataInizioElab);
  const Date& a = oltre.fine();
  for (; !rst->Eof(); rst->MoveNext())
    somma(saldi, (*rst)["CONTO"].Value(),
          quotaNelPeriodo(values::toDecimal(values::nvl((*rst)["IMPORTO"].Value(), 0)),
                          values::toDate((*rst)["CG42_DATAINICOMP"].Value()),
                          values::toDate((*rst)["CG42_DATAFINCOMP"].Value()), da, a));
}

ado::RecordsetPtr inDueColonne(const Saldi& saldi, bool senzaZeri) {
  auto rst = std::make_shared<ado::Recordset>();
  rst->Fields().Append("conto", ado::adVarWChar, 15, ado::adFldIsNullable);
  for (const char* nome : {"ATTIVITA", "PASSIVITA"}) {
    auto& campo = rst->Fields().Append(nome, ado::adDecimal, 0, ado::adFldIsNullable);
    campo.Precision(15);
    campo.NumericScale(kDecimaliImporto);
  }
  rst->Open();
  for (const auto& [conto, saldo] : saldi) {
    if (senzaZeri && saldo.isZero()) continue;
    rst->AddNew();
    (*rst)["conto"].Value(conto);
    if (saldo.isNegative())
      (*rst)["PASSIVITA"].Value(-saldo);
    else
      (*rst)["ATTIVITA"].Value(saldo);
    rst->Update();
  }
  if (rst->RecordCount() > 0) rst->MoveFirst();
  return rst;
}

}  // namespace

void SituazioneMovimenti::calcola() {
  if (!Connection) throw values::Errore("The accounting situation has no connection");
  Saldi saldi;
  const OltreEsercizio oltre(*this, contate_);
  aggiungiPerData(*this, oltre, saldi);
  if (acceso(SimulaRisconti)) aggiungiPerCompetenza(*this, oltre, saldi);
  RecordsetSituazioneEP = inDueColonne(saldi, acceso(SaldoDiversoDaZero));
}

void SituazioneMovimenti::CreaRecordsetSituazioneEconomicaPatrimoniale() {
  Stato = 0;
  errore.clear();
  RecordsetSituazioneEP = nullptr;
  try {
    calcola();
  } catch (const std::exception& e) {
    Stato = 99;
    errore = e.what();
  }
}

}  // namespace suite
