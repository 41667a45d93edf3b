#include "maintenance/ElementiBU60.h"

#include "definition/Colonne.h"
#include "frame/TestoSql.h"
#include "values/Arithmetic.h"
#include "values/Conversion.h"

namespace bukorval {

std::vector<ElementoBU60> leggiElementiBU60(Contesto& ctx, const std::string& struttura) {
  TestoSql sql;
  sql.riga(" SELECT BU61_ELEMENTO, BU61_CAMPO, BU61_VALORE ")
      .riga(" FROM   BU61_STRUTTELEM WITH (NOLOCK) ")
      .riga(" WHERE  BU61_CODICE_BU60 = ", testoDati(struttura))
      .riga(" ORDER BY BU61_ELEMENTO, BU61_CAMPO ");
  const auto righe = ctx.connessione().Execute(sql);
  const auto& elemento = (*righe)["BU61_ELEMENTO"];
  const auto& campo = (*righe)["BU61_CAMPO"];
  const auto& valore = (*righe)["BU61_VALORE"];
  std::vector<ElementoBU60> elementi;
  values::Variant precedente;
  for (; !righe->Eof(); righe->MoveNext()) {
    if (elementi.empty() || values::compare(elemento.Value(), precedente) != 0) elementi.emplace_back();
    precedente = elemento.Value();
    const auto& colonna = colonnaBU65(values::toText(campo.Value()));
    elementi.back().insert_or_assign(std::string(colonna.nome), valore.Value());
  }
  return elementi;
}

}  // namespace bukorval
