#include "definition/Calendario.h"
#include "frame/Connessione.h"
#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "values/Conversion.h"

/// Accounting years and account descriptions, as the suite's tables and services hold them.
namespace bukorval {
namespace {

using values::Variant;

/// Asks a new accounting-year service.
template <class Domanda>
decltype(auto) chiediServizio(Contesto& ctx, Domanda domanda) {
  creaConnessioneDB(ctx);
  const auto servizio = suite::creaServizio<suite::ServizioEsercizi>(suite::kServizioEsercizi);
  servizio->Connessione(ctx.connessionePtr());
  return domanda(*servizio);
}

TestoSql contoCoGe(const Variant& ditta, const Variant& codicePdc, const Variant& conto) {
  TestoSql sql;
  sql.riga(" SELECT CASE WHEN CG39_DESCR IS NULL ")
      .riga("             THEN CG24_DESCR ")
      .riga("             ELSE CG39_DESCR ")
      .riga("        END AS DESCRIZIONECONTO ")
      .riga(" FROM  CG24_TABPDC WITH (NOLOCK) ")
      .riga("      LEFT OUTER JOIN CG39_PRSDESPDC WITH (NOLOCK) ")
      .riga("      ON CG39_DITTA_CG18 = ", numero(ditta))
      .riga("      AND CG39_GRUPPO_CG10 = CG24_GRUPPO_CG10 ")
      .riga("      AND CG39_CONTO_CG24 = CG24_CONTO ")
      .riga(" WHERE CG24_GRUPPO_CG10 = ", numero(codicePdc))
      .riga(" AND   CG24_CONTO = ", testoDati(conto));
  return sql;
}

TestoSql contoRiclassificato(const Variant& codicePdc, const Variant& conto) {
  TestoSql sql;
  sql.riga(" SELECT CG23_DESCR AS DESCRIZIONECONTO ")
      .riga(" FROM   CG23_RICLBILCEE WITH (NOLOCK) ")
      .riga(" WHERE  CG23_CODICE_CG21 = ", numero(codicePdc))
      .riga(" AND    CG23_CODICE = ", testoDati(conto));
  return sql;
}

TestoSql contoAnalitico(const Variant& codicePdc, const Variant& conto) {
  TestoSql sql;
  sql.riga(" SELECT PC03_DESCR AS DESCRIZIONECONTO ")
      .riga(" FROM   PC03_ANAGPDC WITH (NOLOCK) ")
      .riga(" WHERE  PC03_CODICE_PC01 = ", numero(codicePdc))
      .riga(" AND    PC03_CONTO = ", testoDati(conto));
  return sql;
}

}  // namespace

Variant Calendario::GetDescrizioneConto(const Variant& ditta, BdgTipoPdc tipoPdc, const Variant& codicePdc,
                                        const Variant& conto) const {
  return esegui(ctx_, "GetDescrizioneConto", Variant(), [&] {
    if (tipoPdc < bdgPdcCoGe || tipoPdc > bdgPdcAnalitico) return Variant();
    creaConnessioneDB(ctx_);
    const auto sql = tipoPdc == bdgPdcCoGe             ? contoCoGe(ditta, codicePdc, conto)
                     : tipoPdc == bdgPdcRiclassificato ? contoRiclassificato(codicePdc, conto)
                                                       : contoAnalitico(codicePdc, conto);
    const auto rs = ctx_.connessione().Execute(sql);
    return rs->Eof() ? Variant() : rs->Fields().Item("DESCRIZIONECONTO").Value();
  });
}

std::int16_t Calendario::GetProgressivoEsercizio(const Variant& ditta, const Variant& anno) const {
  return esegui(ctx_, "GetProgressivoEsercizio", std::int16_t{0}, [&]() -> std::int16_t {
    creaConnessioneDB(ctx_);
    TestoSql sql;
    sql.riga(" SELECT CG19_PROGESER ")
        .riga(" FROM   CG19_ANADITTAESER WITH (NOLOCK)")
        .riga(" WHERE  CG19_DITTA_CG18 = ", numero(ditta))
        .riga(" AND    CG19_ANNO = ", numero(anno));
    const auto rs = ctx_.connessione().Execute(sql);
    return rs->Eof() ? std::int16_t{0} : values::toInt16(values::nvl(rs->Fields().Item("CG19_PROGESER").Value(), 0));
  });
}

bool Calendario::EsisteEsercizio(const Variant& ditta, const Variant& anno, const Variant& progressivo) const {
  return esegui(ctx_, "EsisteEsercizio", false, [&] {
    return chiediServizio(ctx_, [&](auto& servizio) { return servizio.Esiste(ditta, anno, progressivo); });
  });
}

bool Calendario::EsistonoEsercizi(const Variant& ditta, const Variant& anno) const {
  return esegui(ctx_, "EsistonoEsercizi", false,
                [&] { return chiediServizio(ctx_, [&](auto& servizio) { return servizio.EsisteAnno(ditta, anno); }); });
}

void Calendario::DeterminaDateInizioFineEsercizio(const Variant& ditta, const Variant& anno, const Variant& progressivo,
                                                  Variant& dataInizio, Variant& dataFine) const {
  esegui(ctx_, "DeterminaDateInizioFineEsercizio", [&] {
    Variant inizio = dataInizio, fine = dataFine;
    chiediServizio(ctx_, [&](auto& servizio) { servizio.DateInizioFine(ditta, anno, progressivo, inizio, fine); });
    dataInizio = inizio;
    dataFine = fine;
  });
}

bool Calendario::GetIsEsercizioChiuso(const Variant& ditta, const Variant& anno, const Variant& progressivo) const {
  return esegui(ctx_, "GetIsEsercizioChiuso", false, [&] {
    return chiediServizio(ctx_, [&](auto& servizio) { return servizio.Chiuso(ditta, anno, progressivo); });
  });
}

}  // namespace bukorval
