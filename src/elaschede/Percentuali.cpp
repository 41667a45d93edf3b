#include "elaschede/Percentuali.h"

#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "frame/Valori.h"
#include "suite/Denaro.h"
#include "values/Arithmetic.h"
#include "values/Conversion.h"

namespace bukorval {
namespace {

using values::Variant;

/// importo × percentuale / 100, not yet rounded.
Variant parte(const Variant& importo, const Variant& percentuale) {
  return values::divide(values::multiply(values::toDecimal(importo), values::toDecimal(percentuale)), 100);
}

}  // namespace

ado::RecordsetPtr BdgElaSchede_GetRstPercentuali(Contesto& ctx, const Variant& id) {
  return esegui(ctx, "BdgElaSchede_GetRstPercentuali ", ado::RecordsetPtr(), [&]() -> ado::RecordsetPtr {
    const auto& prop = ctx.prop;
    TestoSql sql;
    sql.riga(" SELECT * ")
        .riga(" FROM   BU90_TABPERCBUD WITH(NOLOCK) ")
        .riga(" WHERE  BU90_DITTA_CG18 = ", numero(prop.CodiceDitta))
        .riga(" AND    BU90_INDTIPO_BU01 = ", numero(prop.TipoBudget))
        .riga(" AND    BU90_SOTTOTIPO_BU01 = ", testoDati(prop.SottoTipoBudget))
        .riga(" AND    BU90_IDBUDGET = ", numero(id));
    auto percentuali = ctx.connessione().Execute(sql);
    if (percentuali->RecordCount() < 1) return nullptr;
    return percentuali;
  });
}

void BdgSchede_ApplicaPercentualiRipartizioneEScostamentoDaBU90_TABPERC(Contesto& ctx, ado::Recordset& totali,
                                                                        const Variant& id) {
  esegui(ctx, "BdgSchede_ApplicaPercentualiRipartizioneEScostamentoDaBU90_TABPERC", [&] {
    if (!ctx.prop.IsApplicaPercentuali || values::isBlank(id)) return;
    const auto percentuali = BdgElaSchede_GetRstPercentuali(ctx, id);
    if (!percentuali || totali.RecordCount() == 0) return;
    const Variant ripartizione = (*percentuali)["BU90_PERCRIP"].Value();
    const Variant scostamento = (*percentuali)["BU90_PERCSCO"].Value();

    auto& importo = totali["IMPORTO"];
    for (totali.MoveFirst(); !totali.Eof(); totali.MoveNext()) {
      if (values::isBlank(importo.Value())) continue;
      if (!values::isBlank(ripartizione))
        importo.Value(RoundZQ(ctx, parte(importo.Value(), ripartizione), suite::kDecimaliImporto));
      if (!values::isBlank(scostamento)) {
        const Variant scostato = values::add(importo.Value(), parte(importo.Value(), scostamento));
        importo.Value(RoundZQ(ctx, scostato, suite::kDecimaliImporto));
      }
      totali.Update();
    }
  });
}

}  // namespace bukorval
