#include "elaschede/PeriodiElaborazione.h"

#include <cstdint>

#include "definition/Calendario.h"
#include "frame/Trappola.h"
#include "values/Conversion.h"

namespace bukorval {
namespace {

constexpr int kMesiMassimi = 11;

struct Estremi {
  int primo;
  int ultimo;
};

/// Dates that come round to the period they began in are in every period: June to May, by calendar quarters.
Estremi conGiro(const Contesto& ctx, Estremi estremi, int mesi) {
  const int numero = values::toInt16(values::nvl(ctx.dati.numeroPeriodi, 0));
  return numero > 0 && estremi.primo == estremi.ultimo && mesi >= 12 / numero ? Estremi{1, numero} : estremi;
}

Estremi estremiDelBudget(const Contesto& ctx) {
  const auto& dati = ctx.dati;
  const Estremi estremi{values::toInt16(dati.periodoIniziale), values::toInt16(dati.periodoFinale)};
  if (values::isBlank(dati.dataInizio) || values::isBlank(dati.dataFine)) return estremi;
  return conGiro(ctx, estremi, values::monthsBetween(values::toDate(dati.dataInizio), values::toDate(dati.dataFine)));
}

Estremi estremiDelleDate(const Contesto& ctx, const PeriodiElaborazione& periodi) {
  const auto& prop = ctx.prop;
  if (values::isBlank(prop.DaData) || values::isBlank(prop.AData)) return estremiDelBudget(ctx);
  const auto da = values::toDate(prop.DaData);
  const auto a = values::toDate(prop.AData);
  const int mesi = values::monthsBetween(da, a);
  if (mesi > kMesiMassimi) return estremiDelBudget(ctx);
  const auto periodo = [&](const values::Date& data) {
    return periodi.perMese[static_cast<std::size_t>(data.month())];
  };
  return conGiro(ctx, {periodo(da), periodo(a)}, mesi);
}

}  // namespace

void GetDictPeriodiDaElaborare(Contesto& ctx, PeriodiElaborazione& periodi) {
  esegui(ctx, "GetDictPeriodiDaElaborare", [&] {
    Calendario calendario(ctx);
    for (std::int16_t mese = 1; mese <= 12; ++mese)
      periodi.perMese[static_cast<std::size_t>(mese)] =
          calendario.GetBdgPeriodo(mese, ctx.dati.periodicita, ctx.dati.fiscaleSolare, ctx.dati.dataInizio);

    const auto [primo, ultimo] = estremiDelleDate(ctx, periodi);
    const int passo = primo > ultimo ? -1 : 1;
    periodi.daElaborare->RemoveAll();
    for (int periodo = primo; periodo != ultimo + passo; periodo += passo) periodi.daElaborare->Add(periodo, periodo);
  });
}

ado::RecordsetPtr BdgElaSchede_GetRstBdgSchedeConsuntiviDaElaborare(Contesto& ctx) {
  return esegui(ctx, "BdgElaSchede_GetRstBdgSchedeConsuntiviDaElaborare", ado::RecordsetPtr(), [&] {
    auto totali = std::make_shared<ado::Recordset>();
    auto campo = [&](std::string_view nome, int precisione, int decimali) {
      auto& nuovo = totali->Fields().Append(nome, ado::adDecimal, 0, ado::adFldIsNullable);
      nuovo.Precision(precisione);
      nuovo.NumericScale(decimali);
    };
    campo("PERIODO", 2, 0);
    campo("IMPORTO", 15, 2);
    totali->CursorLocation = ado::adUseClient;
    totali->CursorType = ado::adOpenDynamic;
    totali->Open();

    auto [primo, ultimo] = estremiDelBudget(ctx);
    // A calendar-month budget on a year across January begins after it ends: its periods go round the year.
    if (primo > ultimo) primo = 1, ultimo = values::toInt16(ctx.dati.numeroPeriodi);
    for (int periodo = primo; periodo <= ultimo; ++periodo)
      totali->AppendRow()[0] = values::Decimal::FromScaled(periodo);
    if (primo <= ultimo) totali->MoveFirst();
    return totali;
  });
}

}  // namespace bukorval
