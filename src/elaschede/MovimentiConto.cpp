#include "elaschede/MovimentiConto.h"

#include "elaschede/ContiAnalitici.h"
#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "frame/Valori.h"
#include "values/Conversion.h"

namespace bukorval {
namespace {

constexpr int kCliente = 0;
constexpr int kFornitore = 1;

/// Revenue cards have customers, cost cards suppliers.
int tipoCliFor(const Contesto& ctx) { return values::toInt32(ctx.prop.BdgTipoScheda) == 1 ? kCliente : kFornitore; }

void aggiungiColonne(TestoSql& sql) {
  sql.riga(" SELECT  CG41_DITTA_CG18, CG41_NUMREG, CG41_DATAREG, ")
      .riga("         CG41_ANNO_CG19, CG41_PROGESER_CG19, CG41_INDPROVREG, ")
      .riga(
          " (CASE WHEN CG42_CODICE_CG31 IS NULL THEN CG41_CODICE_CG31 ELSE CG42_CODICE_CG31 END) AS CG41_CODICE_CG31, ")
      .riga("        CG41_INDTIPOMOV, ")
      .riga("        CG42_NUMRIGACONT , CG42_GRUPPO_CG10, ")
      .riga("        CG42_CONTOPAR_CG24, CG41_DATADOC, CG41_DITTACF_CG18, ")
      .riga("        CG41_TIPOCF_CG44, CG41_CLIFOR_CG44, CG42_INDTIPOOPER, ")
      .riga("        CG42_INDDAAV, CG42_IMPTOTALE, CG42_FLGCOMP, ")
      .riga("        CG42_INDRATRIS, CG42_DATAINICOMP, CG42_DATAFINCOMP ")
      .riga(" FROM   CG42_MOVCONT WITH(NOLOCK)")
      .riga(" INNER JOIN CG41_PRIMANOTA WITH(NOLOCK)")
      .riga(" ON     CG42_DITTA_CG18 = CG41_DITTA_CG18")
      .riga(" AND    CG42_NUMREG_CG41 = CG41_NUMREG");
}

/// The competence interval covers the day.
void aggiungiCopertura(TestoSql& sql, const std::string& data) {
  sql.riga("   (     ISNULL(ISNULL(CG42_DATAINICOMP, CG41_DATADOC), CG41_DATAREG) <= ", data)
      .riga("     AND ISNULL(ISNULL(CG42_DATAFINCOMP, CG41_DATADOC), CG41_DATAREG) >= ", data)
      .riga("   ) ");
}

void aggiungiDate(TestoSql& sql, Contesto& ctx) {
  const auto da = DataDB(ctx, ctx.prop.DaData);
  const auto a = DataDB(ctx, ctx.prop.AData);
  if (ctx.prop.TipoDataMovimenti == 0) {
    sql.riga(" AND CG41_DATAREG >= ", da).riga(" AND CG41_DATAREG <= ", a);
  } else if (ctx.prop.TipoDataMovimenti == 1) {
    sql.riga(" AND ").riga(" ( ");
    aggiungiCopertura(sql, da);
    sql.riga("  OR ");
    aggiungiCopertura(sql, a);
    sql.riga("  OR ")
        .riga("   (     ISNULL(ISNULL(CG42_DATAINICOMP, CG41_DATADOC), CG41_DATAREG) BETWEEN ", da, " AND ", a)
        .riga("     AND ISNULL(ISNULL(CG42_DATAFINCOMP, CG41_DATADOC), CG41_DATAREG) BETWEEN ", da, " AND ", a)
        .riga("   ) ")
        .riga(" ) ");
  }
}

void aggiungiConto(TestoSql& sql, Contesto& ctx, const values::Variant& conto) {
  if (IsContoAnalitico(ctx, conto, false))
    sql.riga(" AND CG42_CONTOPAR_CG24 = ", testoDati(conto));
  else
    sql.riga(" AND CG42_CONTOPAR_CG24 LIKE ", modelloPrefisso(BdgElaSchede_GetUltimoPadrePdc(ctx, conto)));
}

std::string testoMovimenti(Contesto& ctx, const ContoScheda& scheda) {
  const auto& prop = ctx.prop;
  TestoSql sql;
  aggiungiColonne(sql);
  sql.riga(" WHERE  CG41_DITTA_CG18 = ", numero(prop.CodiceDitta))
      .riga(" AND    CG41_ANNO_CG19 = ", numero(prop.AnnoEsercizioMovimenti))
      .riga(" AND    CG41_PROGESER_CG19 = ", numero(prop.ProgressivoEsercizioMovimenti))
      .riga(" AND    CG41_INDPROVREG = 0 ")
      .riga(" AND (", condizioneMovimenti(prop.TipoMovimenti), ")");
  aggiungiDate(sql, ctx);
  aggiungiConto(sql, ctx, scheda.conto);
  if (prop.IsSoloMovCliFor && !values::isBlank(scheda.clifor))
    sql.riga(" AND CG41_TIPOCF_CG44 = ", numero(tipoCliFor(ctx)))
        .riga(" AND CG41_CLIFOR_CG44 = ", numero(scheda.clifor));
  sql.riga(" AND CG42_CODICE_CG33 NOT IN ('150 ', '151 ')");
  if (ctx.dati.gestioneSede && !values::isBlank(prop.CodiceSede))
    sql.riga(" AND CG41_CODICE_CG31 = ", numero(prop.CodiceSede));
  sql.riga(" ORDER BY CG41_DITTA_CG18, CG41_ANNO_CG19, ")
      .riga("          CG41_PROGESER_CG19, CG42_CONTOPAR_CG24, CG41_DATAREG ");
  return sql.str();
}

}  // namespace

void BdgElaSchede_GetRstMovimentiConto(Contesto& ctx, const ContoScheda& scheda, const ado::RowVisitor& visita) {
  esegui(ctx, "BdgElaSchede_GetRstMovimentiConto", [&] {
    // A code of zeros has no level: as a prefix it would take every movement of the company.
    if (values::isBlank(scheda.conto) || BdgElaSchede_GetUltimoPadrePdc(ctx, scheda.conto).empty()) return;
    ctx.connessione().ForEachRow(testoMovimenti(ctx, scheda), visita);
  });
}

}  // namespace bukorval
