#include "grid/TestoGriglia.h"

#include <string_view>

#include "frame/BudgetAnno.h"
#include "frame/CriteriPreallocazione.h"
#include "frame/TestoSql.h"
#include "grid/Misure.h"

namespace bukorval {
namespace {

constexpr Rientro kRientroGriglia{"    WHERE ", "    AND   "};

void schede(TestoSql& sql, const Contesto& ctx, const ParametriGriglia& parametri) {
  const auto& prop = ctx.prop;
  auto budget = budgetScelto(prop);
  budget.ditta = ctx.sessione().CodiceDitta();
  sql.riga("; WITH CTE_BU65 AS ")
      .riga("( ")
      .riga("    SELECT DISTINCT BU65_ID, BU65_DITTA_CG18, BU65_TIPOCF_CG44, ")
      .riga("    ", parametri.elencoCampi);
  if (prop.TipoBudget == bdgTipoMastri) criteriPreallocazione(sql);
  sql.riga("    FROM BU65_TESBUDGET WITH (NOLOCK) ")
      .riga("    LEFT OUTER JOIN BU66_DETBUDGET WITH (NOLOCK) ON BU66_ID_BU65 = BU65_ID ")
      .testo(condizioniSchede(budget, kRientroGriglia, SottoTipo::ComeDato));
  if (prop.TipoBudget == bdgTipoSpeseGenerali) sql.riga("    AND   BU65_INDCOSRIC_BU07 = ", numero(prop.BdgTipoScheda));
  if (parametri.gestioneSede) sql.riga("    AND   BU65_CODICE_CG31 = ", numero(prop.CodiceSede));
  sql.riga(") ");
}

void totali(TestoSql& sql, std::string_view passo, BdgTipoDettaglio tipo) {
  sql.riga(", ", passo, " AS ")
      .riga(" ( ")
      .riga("    SELECT BU65_ID AS ID,")
      .riga("           SUM(BU66_IMPORTO) AS IMPORTO,")
      .riga("           SUM(BU66_QTA1) AS QUANTITA1,")
      .riga("           SUM(BU66_QTA2) AS QUANTITA2")
      .riga("    FROM BU66_DETBUDGET WITH (NOLOCK)")
      .riga("    INNER JOIN CTE_BU65 ON CTE_BU65.BU65_ID = BU66_ID_BU65")
      .riga("    WHERE BU66_TIPO = ", numero(tipo), " ")
      .riga("    GROUP BY BU65_ID ")
      .riga(" ) ");
}

/// Orders are not summed: the value of the latest row that has one counts.
void ordini(TestoSql& sql, const Misura& misura) {
  sql.riga(" , CTE_ORDTMP_", misura.nome, " AS ")
      .riga(" ( ")
      .riga("     SELECT  MAX(BU66_DETBUDGET.BU66_ID) AS ID ")
      .riga("     FROM    BU66_DETBUDGET ")
      .riga("     INNER JOIN CTE_BU65 ON CTE_BU65.BU65_ID = BU66_ID_BU65 ")
      .riga("     WHERE   BU66_TIPO = 2 AND NOT ", misura.colonna, " IS NULL ")
      .riga("     GROUP BY BU66_ID_BU65 ")
      .riga("  ) ")
      .riga(", CTE_ORDINI", misura.suffissoOrdini, " AS ")
      .riga("  (  SELECT DISTINCT BU66_ID_BU65 AS ID, ")
      .riga("             BU66_DETBUDGET.", misura.colonna, " AS ", misura.alias, " ")
      .riga("     FROM    BU66_DETBUDGET ")
      .riga("     INNER JOIN CTE_ORDTMP_", misura.nome, " ON BU66_ID = CTE_ORDTMP_", misura.nome, ".ID ")
      .riga("     WHERE   BU66_TIPO = 2 AND NOT ", misura.colonna, " IS NULL ")
      .riga("  ) ");
}

/// A forecast takes, period by period, the actual value where there is one.
void consuntivoOForecast(TestoSql& sql, std::string_view colonna, std::string_view chiusura) {
  sql.riga("           SUM(CASE WHEN BU66_CONS.", colonna, " IS NULL ")
      .riga("                     THEN BU66_FORECAST.", colonna, " ")
      .riga("                     ELSE BU66_CONS.", colonna, " ")
      .riga("                 END)", chiusura);
}

void forecast(TestoSql& sql, int n) {
  sql.riga(", CTE_FORECAST", numero(n), " AS").riga("  ( SELECT BU65_ID AS ID,");
  consuntivoOForecast(sql, "BU66_IMPORTO", " AS IMPORTO, ");
  consuntivoOForecast(sql, "BU66_QTA1", " AS QUANTITA1, ");
  consuntivoOForecast(sql, "BU66_QTA2", "  AS QUANTITA2 ");
  sql.riga("    FROM   BU66_DETBUDGET AS BU66_FORECAST WITH (NOLOCK)  ")
      .riga("    INNER JOIN CTE_BU65 ON CTE_BU65.BU65_ID = BU66_ID_BU65 ")
      .riga("    LEFT OUTER JOIN BU66_DETBUDGET AS BU66_CONS WITH (NOLOCK) ")
      .riga("    ON      BU66_CONS.BU66_ID_BU65 = BU66_FORECAST.BU66_ID_BU65 ")
      .riga("    AND     BU66_CONS.BU66_PERIODO = BU66_FORECAST.BU66_PERIODO ")
      .riga("    AND     BU66_CONS.BU66_TIPO = 1 ")
      .riga("    WHERE  BU66_FORECAST.BU66_TIPO = ", numero(bdgDettaglioOrdini + n))
      .riga("    GROUP  BY BU65_ID ")
      .riga("  ) ");
}

void colonneForecast(TestoSql& sql, int n, bool ultimo) {
  const std::string numeroForecast = numero(n);
  for (const auto& misura : kMisure)
    sql.riga("       CTE_FORECAST", numeroForecast, ".", misura.alias, " AS ", misura.nome, "_FORECAST", numeroForecast,
             ",");
  for (const auto& misura : kMisure) {
    const bool chiude = ultimo && misura.nome == kMisure.back().nome;
    sql.riga("       NULL AS DELTA", misura.nome, "_FORE", numeroForecast, ",")
        .riga("       NULL AS DELTAPERC", misura.nome, "_FORE", numeroForecast, chiude ? "" : ",");
  }
}

void colonne(TestoSql& sql, const ParametriGriglia& parametri) {
  sql.riga(" SELECT CTE_BU65.* ")
      .riga("       ", parametri.codiciDescrizioni, ",")
      .riga("       CTE_BUDGET.IMPORTO AS IMP_BUDGET, ")
      .riga("       CTE_CONSUNTIVO.IMPORTO AS IMP_CONSUNTIVO, ")
      .riga("       CTE_ORDINI.IMPORTO AS IMP_ORDINI, ")
      .riga("       CTE_BUDGET.QUANTITA1 AS QTA1_BUDGET, ")
      .riga("       CTE_CONSUNTIVO.QUANTITA1 AS QTA1_CONSUNTIVO, ")
      .riga("       CTE_ORDINI_QTA1.QUANTITA1 AS QTA1_ORDINI,  ")
      .riga("       CTE_BUDGET.QUANTITA2 AS QTA2_BUDGET, ")
      .riga("       CTE_CONSUNTIVO.QUANTITA2 AS QTA2_CONSUNTIVO, ")
      .riga("       CTE_ORDINI_QTA2.QUANTITA2 AS QTA2_ORDINI,  ")
      .riga("       NULL AS DELTAIMP_CONS, ")
      .riga("       NULL AS DELTAPERCIMP_CONS, ")
      .riga("       NULL AS DELTAQTA1_CONS, ")
      .riga("       NULL AS DELTAPERCQTA1_CONS, ")
      .riga("       NULL AS DELTAQTA2_CONS, ")
      .riga("       NULL AS DELTAPERCQTA2_CONS", parametri.numeroForecast > 0 ? ", " : " ");
  for (int n = 1; n <= parametri.numeroForecast; ++n) colonneForecast(sql, n, n == parametri.numeroForecast);
}

void provenienza(TestoSql& sql, const ParametriGriglia& parametri) {
  sql.riga("FROM CTE_BU65 ")
      .riga(" --# LeftOuterJoin da CTE_BU65 alle CTE Dettagli ")
      .riga("LEFT OUTER JOIN CTE_BUDGET ON CTE_BU65.BU65_ID = CTE_BUDGET.ID ")
      .riga("LEFT OUTER JOIN CTE_CONSUNTIVO ON CTE_BU65.BU65_ID = CTE_CONSUNTIVO.ID ")
      .riga("LEFT OUTER JOIN CTE_ORDINI ON CTE_BU65.BU65_ID = CTE_ORDINI.ID ")
      .riga("LEFT OUTER JOIN CTE_ORDINI_QTA1 ON CTE_BU65.BU65_ID = CTE_ORDINI_QTA1.ID ")
      .riga("LEFT OUTER JOIN CTE_ORDINI_QTA2 ON CTE_BU65.BU65_ID = CTE_ORDINI_QTA2.ID ");
  for (int n = 1; n <= parametri.numeroForecast; ++n) {
    const std::string passo = "CTE_FORECAST" + numero(n);
    sql.riga("LEFT OUTER JOIN ", passo, " ON CTE_BU65.BU65_ID = ", passo, ".ID");
  }
}

}  // namespace

std::string testoGrigliaBudget(const Contesto& ctx, const ParametriGriglia& parametri) {
  TestoSql sql;
  schede(sql, ctx, parametri);
  totali(sql, "CTE_BUDGET", bdgDettaglioBudget);
  totali(sql, "CTE_CONSUNTIVO", bdgDettaglioConsuntivo);
  for (const auto& misura : kMisure) ordini(sql, misura);
  for (int n = 1; n <= parametri.numeroForecast; ++n) forecast(sql, n);
  colonne(sql, parametri);
  provenienza(sql, parametri);
  sql.riga(" --# strJoinCodiciDescrizioni   ").riga(parametri.joinDescrizioni).riga("ORDER BY ", parametri.elencoCampi);
  return sql.str();
}

}  // namespace bukorval
