#include "frame/BudgetAnno.h"

#include "frame/TestoSql.h"
#include "values/Conversion.h"

namespace bukorval {

BudgetAnno budgetScelto(const Proprieta& prop) {
  return {prop.CodiceDitta, prop.TipoBudget, prop.SottoTipoBudget, prop.AnnoEsercizio, prop.ProgressivoEsercizio};
}

BudgetAnno budgetDestinazione(const Proprieta& prop) {
  return {prop.CodiceDitta, prop.TipoBudget, prop.BdgDestinazioneSottoTipo, prop.BdgDestinazioneAnnoEsercizio,
          prop.BdgDestinazioneProgressivoEsercizio};
}

std::string condizioniSchede(const BudgetAnno& budget, Rientro rientro, SottoTipo sottoTipo) {
  const bool riempito = sottoTipo == SottoTipo::Riempito;
  TestoSql sql;
  sql.riga(rientro.where, "BU65_DITTA_CG18 = ", numero(budget.ditta))
      .riga(rientro.e, "BU65_INDTIPO_BU01 = ", numero(budget.tipo))
      .riga(rientro.e, "BU65_SOTTOTIPO_BU01 = ",
            riempito ? apiciRiempiti(budget.sottoTipo, kLarghezzaSottoTipo) : testoDati(budget.sottoTipo))
      .riga(rientro.e, "BU65_ANNO = ", numero(budget.anno))
      .riga(rientro.e, "BU65_PROGESER = ", numero(budget.progressivo));
  return sql.str();
}

std::string condizioniIntervalloSchede(const Proprieta& prop) {
  TestoSql sql;
  sql.riga(" AND     BU65_INDCOSRIC_BU07 = ", numero(prop.BdgTipoScheda))
      .riga(" AND     BU65_SCHEDA_BU07 >= ", apiciRiempiti(prop.DaScheda, kLarghezzaScheda))
      .riga(" AND     BU65_SCHEDA_BU07 <= ", apiciRiempiti(prop.AScheda, kLarghezzaScheda));
  return sql.str();
}

std::string ordineSchede() {
  TestoSql sql;
  sql.riga(" ORDER BY BU65_DITTA_CG18 , ")
      .riga("          BU65_INDTIPO_BU01 , ")
      .riga("          BU65_SOTTOTIPO_BU01 , ")
      .riga("          BU65_ANNO , ")
      .riga("          BU65_PROGESER , ")
      .riga("          BU65_INDCOSRIC_BU07 , ")
      .riga("          BU65_SCHEDA_BU07 ");
  return sql.str();
}

void completaIntervalloSchede(Proprieta& prop) {
  if (values::isBlank(prop.DaScheda)) prop.DaScheda = " ";
  if (values::isBlank(prop.AScheda)) prop.AScheda = "Z";
}

std::string condizioniTipo(std::string_view tabella, std::string_view tipo, std::string_view sottoTipo,
                           Rientro rientro) {
  TestoSql sql;
  sql.riga(rientro.where, tabella, "_INDTIPO_BU01 = ", tipo).riga(rientro.e, tabella, "_SOTTOTIPO_BU01 = ", sottoTipo);
  return sql.str();
}

}  // namespace bukorval
