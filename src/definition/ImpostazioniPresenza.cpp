#include <string>

#include "definition/ImpostazioniBudget.h"
#include "frame/BudgetAnno.h"
#include "frame/Connessione.h"
#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "values/Conversion.h"

/// The questions whether a budget holds cards or values.
namespace bukorval {
namespace {

using values::isBlank;
using values::Variant;

constexpr Rientro kRientroStretto{" WHERE ", " AND   "};

// A type, a subtype and perhaps a company, ready to be spliced.
struct Chiave {
  std::string tipo, sottoTipo, ditta;
};

Chiave chiave(BdgTipo tipo, const Variant& sottoTipo, const Variant& ditta = {}) {
  return {numero(tipo), testoDati(sottoTipo), numero(ditta)};
}

std::string testoTestata(const Chiave& k) {
  TestoSql sql;
  sql.riga(" SELECT TOP 1 BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01 ")
      .riga(" FROM BU65_TESBUDGET WITH (NOLOCK) ")
      .testo(condizioniTipo("BU65", k.tipo, k.sottoTipo, {" WHERE ", "   AND "}))
      .riga("   AND BU65_DITTA_CG18 = ", k.ditta);
  return sql.str();
}

std::string testoDettagli(const Chiave& k) {
  TestoSql sql;
  sql.riga(" SELECT BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01 ")
      .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .riga(" INNER  JOIN BU66_DETBUDGET WITH (NOLOCK) ON BU65_ID = BU66_ID_BU65 ")
      .testo(condizioniTipo("BU65", k.tipo, k.sottoTipo, {" WHERE  ", "   AND  "}))
      .riga("   AND  BU65_DITTA_CG18 = ", k.ditta)
      .riga("   AND  NOT BU66_ID_BU65 IS NULL ");
  return sql.str();
}

TestoSql testoInvestimenti(const Chiave& k) {
  TestoSql sql;
  sql.riga(" SELECT TOP 1 BU04_IDBUDGINV ")
      .riga(" FROM  BU04_BUDGINVEST WITH(NOLOCK) ")
      .testo(condizioniTipo("BU04", k.tipo, k.sottoTipo, kRientroStretto));
  return sql;
}

// A budget type that does not exist has no archive: its empty statement is refused by the database.
std::string testoValoriDitta(BdgTipo archivio, const Chiave& k) {
  TestoSql sql;
  if (archivio < 0 || archivio > 9) return sql.str();
  if (archivio == bdgTipoInvestimenti) return testoInvestimenti(k).riga(" AND   BU04_DITTA_CG18 = ", k.ditta).str();
  sql.riga(" SELECT BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01 ")
      .riga(" FROM  BU65_TESBUDGET WITH (NOLOCK) ")
      .testo(condizioniTipo("BU65", k.tipo, k.sottoTipo, kRientroStretto))
      .riga(" AND   BU65_DITTA_CG18 = ", k.ditta);
  return sql.str();
}

std::string testoValori(BdgTipo archivio, const Chiave& k) {
  TestoSql sql;
  if (archivio < 0 || archivio > 9) return sql.str();
  if (archivio == bdgTipoInvestimenti) return testoInvestimenti(k).str();
  if (archivio == bdgTipoSpeseGenerali) {
    sql.riga(" SELECT TOP 1 BU08_IDTESBUDCG ")
        .riga(" FROM  BU08_TESBUDCOSGEN WITH(NOLOCK) ")
        .testo(condizioniTipo("BU08", k.tipo, k.sottoTipo, kRientroStretto));
    return sql.str();
  }
  sql.riga(" SELECT BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01 ")
      .riga(" FROM BU65_TESBUDGET WITH (NOLOCK) ")
      .testo(condizioniTipo("BU65", k.tipo, k.sottoTipo, {" WHERE ", "   AND "}));
  return sql.str();
}

bool haRighe(Contesto& ctx, std::string_view testo) { return ctx.connessione().Execute(testo)->RecordCount() != 0; }

}  // namespace

bool ImpostazioniBudget::GetIsBudgetConTestata(const Variant& ditta, BdgTipo tipo, const Variant& sottoTipo) const {
  return esegui(ctx_, "GetIsBudgetConTestata", false, [&] {
    creaConnessioneDB(ctx_);
    return haRighe(ctx_, testoTestata(chiave(tipo, sottoTipo, ditta)));
  });
}

bool ImpostazioniBudget::GetIsBudgetConSolaTestata(const Variant& ditta, BdgTipo tipo, const Variant& sottoTipo) const {
  return esegui(ctx_, "GetIsBudgetConSolaTestata", false, [&] {
    return GetIsBudgetConTestata(ditta, tipo, sottoTipo) &&
           !haRighe(ctx_, testoDettagli(chiave(tipo, sottoTipo, ditta)));
  });
}

bool ImpostazioniBudget::GetIsBudgetValorizzatoDitta(const Variant& ditta, BdgTipo tipo,
                                                     const Variant& sottoTipo) const {
  return esegui(ctx_, "GetIsBudgetValorizzatoDitta ", false, [&] {
    if (isBlank(ditta) || isBlank(sottoTipo)) return false;
    creaConnessioneDB(ctx_);
    return haRighe(ctx_, testoValoriDitta(ctx_.prop.TipoBudget, chiave(tipo, sottoTipo, ditta)));
  });
}

bool ImpostazioniBudget::GetIsBudgetValorizzato(BdgTipo tipo, const Variant& sottoTipo) const {
  return esegui(ctx_, "GetIsBudgetValorizzato", false, [&] {
    if (isBlank(sottoTipo)) return false;
    creaConnessioneDB(ctx_);
    return haRighe(ctx_, testoValori(ctx_.prop.TipoBudget, chiave(tipo, sottoTipo)));
  });
}

}  // namespace bukorval
