#include "grid/TestoPeriodi.h"

#include <array>
#include <string_view>

#include "frame/Enumerazioni.h"
#include "frame/TestoSql.h"
#include "grid/Misure.h"

namespace bukorval {
namespace {

/// The kinds that every budget has: their step, and the field of their identifiers.
struct TipoFisso {
  std::string_view nome;
  BdgTipoDettaglio tipo;
};
constexpr std::array kTipiFissi{TipoFisso{"BUDGET", bdgDettaglioBudget},
                                TipoFisso{"CONSUNTIVO", bdgDettaglioConsuntivo},
                                TipoFisso{"ORDINI", bdgDettaglioOrdini}};

void periodi(TestoSql& sql, const values::Variant& numeroPeriodi) {
  sql.riga(";WITH CTE_PERIODI AS")
      .riga("(SELECT 1 AS PERIODO")
      .riga(" UNION ALL")
      .riga(" SELECT PERIODO + 1")
      .riga(" FROM CTE_PERIODI")
      .riga(" WHERE PERIODO < ", numero(numeroPeriodi))
      .riga(")");
}

void dettagli(TestoSql& sql, std::string_view nome, const std::string& id, BdgTipoDettaglio tipo) {
  sql.riga("(")
      .riga("    SELECT BU66_ID AS ID_", nome, ",")
      .riga("           BU66_PERIODO,")
      .riga("           BU66_IMPORTO,")
      .riga("           BU66_QTA1,")
      .riga("           BU66_QTA2")
      .riga("    FROM BU66_DETBUDGET WITH (NOLOCK)")
      .riga("    WHERE BU66_ID_BU65 = ", id)
      .riga("      AND BU66_TIPO = ", numero(tipo))
      .riga(")");
}

void colonneFisse(TestoSql& sql, bool ultime) {
  sql.riga("SELECT CTE_PERIODI.PERIODO AS PERIODO,");
  for (const auto& tipo : kTipiFissi) sql.riga("       CTE_", tipo.nome, ".ID_", tipo.nome, " AS ID_", tipo.nome, ",");
  for (const auto& misura : kMisure)
    for (const auto& tipo : kTipiFissi)
      sql.riga("       CTE_", tipo.nome, ".", misura.colonna, " AS ", misura.nome, "_", tipo.nome, ",");
  sql.riga("       NULL AS DELTAIMP_CONS,")
      .riga("       NULL AS DELTAPERCIMP_CONS,")
      .riga("       NULL AS DELTAQTA1_CONS,")
      .riga("       NULL AS DELTAPERCQTA1_CONS,")
      .riga("       NULL AS DELTAQTA2_CONS,")
      .riga("       NULL AS DELTAPERCQTA2_CONS", ultime ? "" : ",");
}

void colonneForecast(TestoSql& sql, const std::string& n, bool ultime) {
  const std::string passo = "       CTE_FORECAST" + n;
  sql.riga(passo, ".ID_FORECAST AS ID_FORECAST", n, ",")
      .riga(passo, ".BU66_IMPORTO AS IMP_FORECAST", n, ",")
      .riga(passo, ".BU66_QTA1 AS QTA1_FORECAST", n, ",")
      .riga(passo, ".BU66_QTA2 AS QTA2_FORECAST", n, ",")
      .riga("       NULL AS DELTAIMP_FORE", n, ",")
      .riga("       NULL AS DELTAPERCIMP_FORE", n, ",")
      .riga("       NULL AS DELTAQTA1_FORE", n, ",")
      .riga("       NULL AS DELTAPERCQTA1_FORE", n, ",")
      .riga("       NULL AS DELTAQTA2_FORE", n, ",")
      .riga("       NULL AS DELTAPERCQTA2_FORE", n, ultime ? "" : ",");
}

void provenienza(TestoSql& sql, int numeroForecast) {
  sql.riga("FROM CTE_PERIODI")
      .riga("LEFT OUTER JOIN CTE_BUDGET ON CTE_PERIODI.PERIODO = CTE_BUDGET.BU66_PERIODO")
      .riga("LEFT OUTER JOIN CTE_CONSUNTIVO ON CTE_PERIODI.PERIODO = CTE_CONSUNTIVO.BU66_PERIODO")
      .riga("LEFT OUTER JOIN CTE_ORDINI ON CTE_PERIODI.PERIODO = CTE_ORDINI.BU66_PERIODO");
  for (int n = 1; n <= numeroForecast; ++n) {
    const std::string passo = "CTE_FORECAST" + numero(n);
    sql.riga("LEFT OUTER JOIN ", passo, " ON CTE_PERIODI.PERIODO = ", passo, ".BU66_PERIODO");
  }
  sql.riga("ORDER BY CTE_PERIODI.PERIODO");
}

}  // namespace

std::string testoGrigliaPeriodi(const values::Variant& id, const values::Variant& numeroPeriodi, int numeroForecast) {
  const std::string scheda = numero(id);
  TestoSql sql;
  periodi(sql, numeroPeriodi);
  for (const auto& tipo : kTipiFissi) {
    sql.riga(", CTE_", tipo.nome, " AS");
    dettagli(sql, tipo.nome, scheda, tipo.tipo);
  }
  for (int n = 1; n <= numeroForecast; ++n) {
    sql.riga(", CTE_FORECAST", numero(n)).riga(" AS");
    dettagli(sql, "FORECAST", scheda, bdgDettaglioOrdini + n);
  }
  colonneFisse(sql, numeroForecast == 0);
  for (int n = 1; n <= numeroForecast; ++n) colonneForecast(sql, numero(n), n == numeroForecast);
  provenienza(sql, numeroForecast);
  return sql.str();
}

}  // namespace bukorval
