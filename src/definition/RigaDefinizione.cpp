#include "definition/RigaDefinizione.h"

#include "frame/Connessione.h"
#include "frame/TestoSql.h"

namespace bukorval {
namespace {

std::string testoRiga(const std::string& tipo, const std::string& sottoTipo) {
  TestoSql sql;
  sql.riga(" SELECT BU01_FLGSEDI, BU01_INDPERFISO, BU01_FLGMASTRO, BU01_FLGGESQTA, BU01_FLGGESQTA2, ")
      .riga("        BU01_INDPERIODO, BU01_NUMFORECAST, BU01_INDMULTIATTIVITA, BU01_INDTIPOPDC, ")
      .riga("        BU01_STRUTTURA, BU01_CODICE_BU60, ")
      .riga("   CASE WHEN BU01_INDTIPOPDC = 2 THEN BU01_CODICE_CG21 ")
      .riga("        WHEN BU01_INDTIPOPDC = 3 THEN BU01_CODICE_PC01 ")
      .riga("   END AS CODICEPDC ")
      .riga(" FROM   BU01_ANABUDGET WITH (NOLOCK) ")
      .riga(" WHERE  BU01_INDTIPO = ", tipo)
      .riga(" AND    BU01_SOTTOTIPO = ", sottoTipo);
  return sql.str();
}

}  // namespace

ado::RecordsetPtr rigaDefinizione(Contesto& ctx, const std::string& sola, const std::string& tipo,
                                  const std::string& sottoTipo) {
  creaConnessioneDB(ctx);
  return ctx.annidata() ? ctx.righeLette(testoRiga(tipo, sottoTipo)) : ctx.connessione().Execute(sola);
}

}  // namespace bukorval
