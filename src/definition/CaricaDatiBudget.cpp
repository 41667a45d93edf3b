#include "definition/CaricaDatiBudget.h"

#include "definition/Calendario.h"
#include "definition/ImpostazioniBudget.h"
#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "values/Conversion.h"

namespace bukorval {
namespace {

using values::isBlank;
using values::Variant;

void caricaDefinizione(Contesto& ctx) {
  const auto& prop = ctx.prop;
  auto& dati = ctx.dati;
  const ImpostazioniBudget impostazioni(ctx);
  const BdgTipo tipo = prop.TipoBudget;
  const Variant& sottoTipo = prop.SottoTipoBudget;

  dati.natura = impostazioni.GetNaturaBudget(tipo);
  dati.periodicita = impostazioni.GetPeriodicitaBudget(tipo, sottoTipo);
  dati.numeroPeriodi = Calendario(ctx).GetBdgNrPeriodi(dati.periodicita);
  dati.tipoPdc = impostazioni.GetTipoPdC(tipo, sottoTipo);
  // Reads the chart kind just loaded; on the general ledger it falls back to the session's chart.
  dati.codicePdc = impostazioni.GetCodicePdC(tipo, sottoTipo);
  impostazioni.GetGestioneSede(tipo, sottoTipo, dati.gestioneSede);
  dati.tipoMultiAttivita = impostazioni.GetTipoGestioneMultiAttivita(tipo, sottoTipo);
  dati.numeroForecast = impostazioni.GetNumeroForecast(tipo, sottoTipo);
}

void caricaPeriodi(Contesto& ctx) {
  const auto& prop = ctx.prop;
  auto& dati = ctx.dati;
  const Calendario calendario(ctx);
  calendario.GetBdgDataInizioBdgDataFine(prop.TipoBudget, prop.SottoTipoBudget, prop.CodiceDitta, prop.AnnoEsercizio,
                                         prop.ProgressivoEsercizio, dati.dataInizio, dati.dataFine);
  dati.fiscaleSolare = ImpostazioniBudget(ctx).GetAnnoBudgetFiscaleSolare(prop.TipoBudget, prop.SottoTipoBudget);
  if (isBlank(dati.dataInizio) || isBlank(dati.dataFine) || isBlank(dati.numeroPeriodi)) return;

  auto periodo = [&](const Variant& data) {
    const auto mese = static_cast<std::int16_t>(values::toDate(data).month());
    return calendario.GetBdgPeriodo(mese, dati.periodicita, dati.fiscaleSolare, dati.dataInizio);
  };
  dati.periodoIniziale = periodo(dati.dataInizio);
  dati.periodoFinale = periodo(dati.dataFine);
}

}  // namespace

bool GetDatiBudget(Contesto& ctx) {
  return esegui(ctx, "GetDatiBudget", false, [&] {
    if (isBlank(ctx.prop.SottoTipoBudget)) return false;
    ctx.dati = {};
    caricaDefinizione(ctx);
    caricaPeriodi(ctx);
    return true;
  });
}

void verificaEsercizio(const Contesto& ctx) {
  if (values::isBlank(ctx.dati.dataInizio)) rifiutaEsercizio(ctx.prop.AnnoEsercizio, ctx.prop.ProgressivoEsercizio);
}

}  // namespace bukorval
