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

Estremi estremiDelBudget(const Contesto& ctx) {
  return {values::toInt16(ctx.dati.periodoIniziale), values::toInt16(ctx.dati.periodoFinale)};
}

Estremi estremiDelleDate(const Contesto& ctx, const PeriodiElaborazione& periodi) {
  const auto& prop = ctx.prop;
  if (values::isBlank(prop.DaData) || values::isBlank(prop.AData)) return estremiDelBudget(ctx);
  const auto da = values::toDate(prop.DaData);
  const auto a = values::toDate(prop.AData);
  if (values::monthsBetween(da, a) > kMesiMassimi) return estremiDelBudget(ctx);
  return {periodi.perMese[static_cast<std::size_t>(da.month())], periodi.perMese[static_cast<std::size_t>(a.month())]};
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
