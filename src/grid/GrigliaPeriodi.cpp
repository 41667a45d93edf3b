#include "grid/GrigliaPeriodi.h"

#include "definition/Calendario.h"
#include "definition/ImpostazioniBudget.h"
#include "frame/Connessione.h"
#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "grid/CampiGriglia.h"
#include "grid/CopiaRighe.h"
#include "grid/TestoPeriodi.h"
#include "values/Conversion.h"

namespace bukorval {

ado::RecordsetPtr GrigliaPeriodi::RecSetPeriodiBudget(const values::Variant& id) {
  ado::RecordsetPtr griglia;  // outside the body: what was built before a failure is handed out
  esegui(ctx_, "RecSetPeriodiBudget", [&] {
    const auto& prop = ctx_.prop;
    griglia = CreaRecordSetPeriodi(kForecastPredefiniti);
    creaConnessioneDB(ctx_);
    griglia = nullptr;
    const int numeroForecast = ImpostazioniBudget(ctx_).GetNumeroForecast(prop.TipoBudget, prop.SottoTipoBudget);
    griglia = CreaRecordSetPeriodi(numeroForecast);
    if (values::toDecimal(id, ctx_.separatore()).isZero()) return;
    const auto testo = GetStringaPeriodiBudget(id, numeroForecast);
    copiaRighe(*ctx_.connessione().Execute(testo), *griglia);
  });
  return griglia;
}

ado::RecordsetPtr GrigliaPeriodi::GetRstBU67(const values::Variant& id) {
  return esegui(ctx_, "GetRstBU67", ado::RecordsetPtr{}, [&]() -> ado::RecordsetPtr {
    creaConnessioneDB(ctx_);
    TestoSql sql;
    sql.riga(" SELECT  * ")
        .testo(" FROM    BU67_BDGCASHFLOW WITH(NOLOCK) ")
        .riga(" WHERE   BU67_ID_BU65 = ", numero(values::toDecimal(id, ctx_.separatore())));
    return ctx_.connessione().Execute(sql);
  });
}

ado::RecordsetPtr GrigliaPeriodi::CreaRecordSetPeriodi(int numeroForecast) {
  return esegui(ctx_, "CreaRecordSetPeriodi", ado::RecordsetPtr{}, [&] { return creaGrigliaPeriodi(numeroForecast); });
}

std::string GrigliaPeriodi::GetStringaPeriodiBudget(const values::Variant& id, int numeroForecast) {
  return esegui(ctx_, "GetStringaPeriodiBudget", std::string{}, [&] {
    const auto& prop = ctx_.prop;
    const auto periodicita = ImpostazioniBudget(ctx_).GetPeriodicitaBudget(prop.TipoBudget, prop.SottoTipoBudget);
    const auto numeroPeriodi = Calendario(ctx_).GetBdgNrPeriodi(periodicita);
    return testoGrigliaPeriodi(id, numeroPeriodi, numeroForecast);
  });
}

}  // namespace bukorval
