#include "frame/CriteriPreallocazione.h"

namespace bukorval {

void criteriPreallocazione(TestoSql& sql) {
  sql.riga("  ,(CASE WHEN EXISTS ")
      .riga("     ( ")
      .riga("         SELECT 1 ")
      .riga("         FROM  BU02_TESTADEST WITH (NOLOCK) ")
      .riga("         WHERE BU02_DITTA_CG18 = BU65_DITTA_CG18 ")
      .riga("         AND   BU02_TIPODEST_BU01 = BU65_INDTIPO_BU01 ")
      .riga("         AND   BU02_STIPODEST_BU01 = BU65_SOTTOTIPO_BU01 ")
      .riga("         AND   BU02_ANNO_CG19 = BU65_ANNO ")
      .riga("         AND   BU02_PROGESER_CG19 = BU65_PROGESER ")
      .riga("         AND   BU02_IDDESTINAZIONE = BU65_ID ")
      .riga("     ) ")
      .riga("    THEN 1 ")
      .riga("    ELSE 0 ")
      .riga("    END) AS FLGESISTECRITPREL ");
}

}  // namespace bukorval
