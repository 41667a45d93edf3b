#include "dati/Movements.h"

#include "frame/TestoSql.h"

namespace bukorval::dati {

values::Variant lastMovementDate(ado::Connection& connection, const MovementScope& scope) {
  TestoSql sql;
  sql.riga(" SELECT TOP 1 CG41_DATAREG ")
      .riga(" FROM   CG42_MOVCONT WITH (NOLOCK) ")
      .riga(" INNER JOIN CG41_PRIMANOTA WITH (NOLOCK) ")
      .riga("    ON  CG42_DITTA_CG18 = CG41_DITTA_CG18 AND CG42_NUMREG_CG41 = CG41_NUMREG ")
      .riga(" WHERE  CG41_DITTA_CG18 = ", numero(scope.company))
      .riga(" AND    CG41_ANNO_CG19 = ", numero(scope.year))
      .riga(" AND    CG41_PROGESER_CG19 = ", numero(scope.progressive))
      .riga(" AND    CG41_INDPROVREG = 0 ")
      .riga(" AND    (", condizioneMovimenti(scope.condition), ")")
      .riga(" AND    CG41_DATAREG >= '", scope.from.toSql(), "'")
      .riga(" AND    CG41_DATAREG <= '", scope.to.toSql(), "'")
      .riga(" AND    CG42_CODICE_CG33 NOT IN ('150 ', '151 ')")
      .riga(" ORDER BY CG41_DATAREG DESC ");
  const auto rs = connection.Execute(sql);
  return rs->Eof() ? values::Variant::Null() : (*rs)["CG41_DATAREG"].Value();
}

}  // namespace bukorval::dati
