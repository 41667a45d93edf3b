#include "elaeco/Scostamenti.h"

#include <algorithm>

#include "elaeco/InsiemiSaldi.h"
#include "frame/LivelliConto.h"
#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "values/Conversion.h"
#include "values/Errore.h"
#include "values/Text.h"

namespace bukorval {
namespace {

using values::Variant;

ado::Recordset& insieme(const ado::RecordsetPtr& rst, const char* nome) {
  if (!rst) throw values::Errore(std::string("Object variable or With block variable not set: ") + nome);
  return *rst;
}

/// Counts past the filter that an earlier search has left on the client's set.
bool senzaRighe(const ado::Recordset& rst) { return rst.RecordCount() == 0 && rst.Clone()->RecordCount() == 0; }

bool zero(const Variant& valore) { return values::isBlank(valore) || values::toDecimal(valore).isZero(); }

/// Shows the rows that match; false when there are none.
bool trova(ado::Recordset& rst, const std::string& filtro) {
  rst.Filter("");
  rst.Filter(filtro);
  if (rst.RecordCount() == 0) return false;
  rst.MoveFirst();
  return true;
}

/// The percentage of one account's own row; 0 when it has none.
Variant percentualeDellaRiga(Contesto& ctx, ado::Recordset& rst, const Variant& conto, const Variant& periodo) {
  if (!trova(rst, filtroUguale("CONTO", conto))) return 0;
  if (!zero(rst["FLGPERIODI"].Value()))
    return zero(periodo) ? Variant(0) : GetPercentualeDaRstScostPerPeriodo(ctx, conto, periodo);
  const Variant& percentuale = rst["PERCSCOST"].Value();
  return zero(percentuale) ? Variant(0) : percentuale;
}

}  // namespace

Variant GetPercentualeScostamento(Contesto& ctx, const Variant& conto, const Variant& periodo) {
  return esegui(ctx, "GetPercentualeScostamento", Variant(), [&]() -> Variant {
    const Variant numeroPeriodo(values::toInt16(periodo));
    switch (ctx.prop.TipoScostamento) {
      case bdgScostamentoFisso: return values::nvl(ctx.prop.PercentualeScostamento, 0);
      case bdgScostamentoPerConto: return GetPercentualeDaRstScostPerConto(ctx, conto, numeroPeriodo);
      case bdgScostamentoPerPeriodo: return GetPercentualeDaRstScostPerPeriodo(ctx, conto, numeroPeriodo);
      case bdgScostamentoNessuno: return 0;
      default: return {};
    }
  });
}

Variant GetPercentualeDaRstScostPerConto(Contesto& ctx, Variant conto, const Variant& periodo) {
  Variant risultato = 0;
  esegui(ctx, "GetPercentualeDaRstScostPerConto ", [&] {
    auto& rst = insieme(ctx.prop.RstScostPerConto, "RstScostPerConto");
    if (senzaRighe(rst)) return;
    while (zero(risultato) && !values::isBlank(conto)) {
      risultato = percentualeDellaRiga(ctx, rst, conto, periodo);
      conto = GetContoPadre(ctx, ctx.prop.CodicePdcCoGeDitta, conto);
    }
  });
  return risultato;
}

Variant GetPercentualeDaRstScostPerPeriodo(Contesto& ctx, const Variant& conto, const Variant& periodo) {
  Variant risultato = 0;
  esegui(ctx, "GetPercentualeDaRstScostPerPeriodo", [&] {
    auto& rst = insieme(ctx.prop.RstScostPerPeriodo, "RstScostPerPeriodo");
    if (senzaRighe(rst) || zero(periodo)) return;
    std::string filtro = "PERIODO = " + numero(periodo);
    if (!values::isBlank(conto)) filtro = filtroUguale("CONTO", conto) + " AND " + filtro;
    if (!trova(rst, filtro)) return;
    if (const Variant& percentuale = rst["PERCSCOST"].Value(); !zero(percentuale)) risultato = percentuale;
  });
  return risultato;
}

Variant GetContoPadre(Contesto& ctx, const Variant& /*pianoConti*/, const Variant& conto) {
  return esegui(ctx, "GetContoPadre", Variant(""), [&]() -> Variant {
    std::string codice(values::rtrim(values::toPlainText(conto)));
    const auto ultimo = ultimoLivello(codice, ctx.sessione().LunghezzeLivelli());
    if (ultimo.inizio == 0) return "";
    std::fill(codice.begin() + static_cast<std::ptrdiff_t>(ultimo.inizio),
              codice.begin() + static_cast<std::ptrdiff_t>(ultimo.fine), '0');
    return codice;
  });
}

}  // namespace bukorval
