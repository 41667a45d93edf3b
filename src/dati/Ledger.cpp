#include "dati/Ledger.h"

#include <utility>

#include "dati/RowInsert.h"
#include "frame/TestoSql.h"
#include "values/Conversion.h"

namespace bukorval::host {

Archivio::Archivio(ado::Connection& connessione, values::Variant ditta, values::Variant gruppo)
    : connessione_(connessione), ditta_(std::move(ditta)), gruppo_(std::move(gruppo)) {}

bool Archivio::esiste(std::string_view tabella, const std::string& condizione) const {
  TestoSql sql;
  sql.riga(" SELECT TOP 1 1 ").riga(" FROM   ", tabella, " WITH (NOLOCK) ").riga(" WHERE  ", condizione);
  return connessione_.Execute(sql)->RecordCount() > 0;
}

bool Archivio::haConto(const std::string& conto) const {
  return esiste("CG24_TABPDC", "CG24_GRUPPO_CG10 = " + numero(gruppo_) + " AND CG24_CONTO = " + testoDati(conto));
}

bool Archivio::haConti() const { return esiste("CG24_TABPDC", "CG24_GRUPPO_CG10 = " + numero(gruppo_)); }

bool Archivio::haMovimenti() const { return esiste("CG41_PRIMANOTA", "CG41_DITTA_CG18 = " + numero(ditta_)); }

bool Archivio::haSede(const values::Variant& sede) const {
  return esiste("CG31_SEDI", "CG31_DITTA_CG18 = " + numero(ditta_) + " AND CG31_CODICE = " + numero(sede));
}

bool Archivio::haAnno(int anno) const {
  return esiste("CG19_ANADITTAESER", "CG19_DITTA_CG18 = " + numero(ditta_) + " AND CG19_ANNO = " + numero(anno));
}

bool Archivio::haBudget(const values::Variant& tipo, const values::Variant& sottotipo) const {
  return esiste("BU01_ANABUDGET", "BU01_INDTIPO = " + numero(tipo) + " AND BU01_SOTTOTIPO = " + testoDati(sottotipo));
}

std::optional<AnnoContabile> Archivio::annoDi(const values::Date& data) const {
  TestoSql sql;
  sql.riga(" SELECT CG19_ANNO, CG19_PROGESER, CG19_DATAINIZIO, CG19_DATAFINE ")
      .riga(" FROM   CG19_ANADITTAESER WITH (NOLOCK) ")
      .riga(" WHERE  CG19_DITTA_CG18 = ", numero(ditta_))
      .riga(" AND    CG19_DATAINIZIO <= '", data.toSql(), "'")
      .riga(" AND    CG19_DATAFINE >= '", data.toSql(), "'");
  const auto rs = connessione_.Execute(sql);
  if (rs->RecordCount() == 0) return std::nullopt;
  const auto valore = [&](const char* campo) { return rs->Fields().Item(campo).Value(); };
  return AnnoContabile{valore("CG19_ANNO"), valore("CG19_PROGESER"), valore("CG19_DATAINIZIO"),
                       valore("CG19_DATAFINE")};
}

std::int64_t Archivio::ultimaRegistrazione() const {
  TestoSql sql;
  sql.riga(" SELECT MAX(CG41_NUMREG) AS NUMREG ")
      .riga(" FROM   CG41_PRIMANOTA WITH (NOLOCK) ")
      .riga(" WHERE  CG41_DITTA_CG18 = ", numero(ditta_));
  return values::toInt64(values::nvl(connessione_.Execute(sql)->Fields().Item("NUMREG").Value(), 0));
}

void Archivio::scriviAnno(int anno) {
  RigaDati("CG19_ANADITTAESER")
      .colonna("CG19_DITTA_CG18", ditta_)
      .colonna("CG19_ANNO", anno)
      .colonna("CG19_PROGESER", 1)
      .colonna("CG19_DATAINIZIO", values::Date::FromYmd(anno, 1, 1))
      .colonna("CG19_DATAFINE", values::Date::FromYmd(anno, 12, 31))
      .inserisci(connessione_);
}

void Archivio::scriviSede(const values::Variant& sede, const values::Variant& descrizione) {
  if (haSede(sede)) {
    TestoSql sql;
    sql.riga(" UPDATE CG31_SEDI ")
        .riga("    SET CG31_DESCR = N", testoDati(descrizione))
        .riga(" WHERE  CG31_DITTA_CG18 = ", numero(ditta_))
        .riga(" AND    CG31_CODICE = ", numero(sede));
    connessione_.Execute(sql);
    return;
  }
  RigaDati("CG31_SEDI")
      .colonna("CG31_DITTA_CG18", ditta_)
      .colonna("CG31_CODICE", sede)
      .colonna("CG31_DESCR", descrizione)
      .inserisci(connessione_);
}

void Archivio::scriviConto(const std::string& conto, const values::Variant& descrizione, int natura, int tipo) {
  if (haConto(conto)) {
    TestoSql sql;
    sql.riga(" UPDATE CG24_TABPDC ")
        .riga("    SET CG24_DESCR = N", testoDati(descrizione))
        .riga("      , CG24_INDTIPOCONTO = ", numero(tipo))
        .riga("      , CG24_INDCONTORICAV = ", numero(natura))
        .riga(" WHERE  CG24_GRUPPO_CG10 = ", numero(gruppo_))
        .riga(" AND    CG24_CONTO = ", testoDati(conto));
    connessione_.Execute(sql);
    return;
  }
  RigaDati("CG24_TABPDC")
      .colonna("CG24_GRUPPO_CG10", gruppo_)
      .colonna("CG24_CONTO", conto)
      .colonna("CG24_DESCR", descrizione)
      .colonna("CG24_INDTIPOCONTO", tipo)
      .colonna("CG24_INDCONTORICAV", natura)
      .inserisci(connessione_);
}

void Archivio::scrivi(const Registrazione& r) {
  RigaDati("CG41_PRIMANOTA")
      .colonna("CG41_DITTA_CG18", ditta_)
      .colonna("CG41_NUMREG", r.numero)
      .colonna("CG41_DATAREG", r.data)
      .colonna("CG41_ANNO_CG19", r.anno)
      .colonna("CG41_PROGESER_CG19", r.progressivo)
      .colonna("CG41_INDPROVREG", 0)
      .colonna("CG41_CODICE_CG31", r.sede)
      .colonna("CG41_INDTIPOMOV", r.tipo)
      .colonna("CG41_DATADOC", r.dataDocumento)
      .colonna("CG41_DESCR", r.descrizione)
      .inserisci(connessione_);
}

void Archivio::scrivi(const RigaMovimento& m) {
  RigaDati("CG42_MOVCONT")
      .colonna("CG42_DITTA_CG18", ditta_)
      .colonna("CG42_NUMREG_CG41", m.registrazione)
      .colonna("CG42_NUMRIGACONT", m.riga)
      .colonna("CG42_GRUPPO_CG10", gruppo_)
      .colonna("CG42_CONTOPAR_CG24", m.conto)
      .colonna("CG42_INDDAAV", m.avere ? 2 : 1)
      .colonna("CG42_IMPTOTALE", m.importo)
      .colonna("CG42_FLGCOMP", m.inizioCompetenza.isNothing() ? 0 : 1)
      .colonna("CG42_DATAINICOMP", m.inizioCompetenza)
      .colonna("CG42_DATAFINCOMP", m.fineCompetenza)
      .colonna("CG42_CODICE_CG31", m.sede)
      .inserisci(connessione_);
}

void Archivio::scriviCodiceScheda(int tipoScheda, const std::string& scheda, const values::Variant& descrizione) {
  const std::string condizione = "BU07_DITTA_CG18 = " + numero(ditta_) + " AND BU07_INDCOSRIC = " + numero(tipoScheda) +
                                 " AND BU07_SCHEDA = " + testoDati(scheda);
  if (esiste("BU07_SCHEDECOSGEN", condizione)) return;
  RigaDati("BU07_SCHEDECOSGEN")
      .colonna("BU07_DITTA_CG18", ditta_)
      .colonna("BU07_INDCOSRIC", tipoScheda)
      .colonna("BU07_SCHEDA", scheda)
      .colonna("BU07_DESCR", descrizione)
      .inserisci(connessione_);
}

}  // namespace bukorval::host
