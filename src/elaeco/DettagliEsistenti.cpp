#include "elaeco/DettagliEsistenti.h"

#include "frame/BudgetAnno.h"
#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "grid/GrigliaBudget.h"
#include "values/Conversion.h"

namespace bukorval {

std::string testoDettagliEsistenti(Contesto& ctx) {
  const auto& prop = ctx.prop;
  TestoSql sql;
  sql.riga(" SELECT * ")
      .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .riga(" INNER  JOIN BU66_DETBUDGET WITH (NOLOCK) ")
      .riga("    ON  BU66_ID_BU65 = BU65_ID ")
      .testo(condizioniSchede(budgetScelto(prop)))
      .riga(" AND    BU66_TIPO = ", numero(prop.TipoDettaglioDestinazione));
  if (!values::isBlank(prop.CodiceSede)) sql.riga(" AND    BU65_CODICE_CG31 = ", numero(prop.CodiceSede));
  sql.testo(GrigliaBudget(ctx).GetStringaDaContoAConto());
  return sql.str();
}

}  // namespace bukorval
