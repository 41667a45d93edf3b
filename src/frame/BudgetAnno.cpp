#include "frame/BudgetAnno.h"

#include "frame/Schede.h"
#include "frame/TestoSql.h"

namespace bukorval {

std::string condizioniSchede(const BudgetAnno& budget) {
  TestoSql sql;
  sql.riga(" WHERE  BU65_DITTA_CG18 = ", numero(budget.ditta))
      .riga(" AND    BU65_INDTIPO_BU01 = ", numero(budget.tipo))
      .riga(" AND    BU65_SOTTOTIPO_BU01 = ", apiciRiempiti(budget.sottoTipo, kLarghezzaSottoTipo))
      .riga(" AND    BU65_ANNO = ", numero(budget.anno))
      .riga(" AND    BU65_PROGESER = ", numero(budget.progressivo));
  return sql.str();
}

}  // namespace bukorval
