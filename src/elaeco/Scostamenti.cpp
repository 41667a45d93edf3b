#include "elaeco/Scostamenti.h"

#include <algorithm>
#include <utility>

#include "frame/LivelliConto.h"
#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "values/Conversion.h"
#include "values/Errore.h"
#include "values/Text.h"

namespace bukorval {
namespace {

using values::Variant;

bool zero(const Variant& valore) { return values::isBlank(valore) || values::toDecimal(valore).isZero(); }

/// "CAMPO = 'value'" for a filter, quotes in the value doubled.
std::string filtroConto(const Variant& conto) { return "CONTO = " + testoDati(conto); }
std::string filtroPeriodo(const Variant& periodo) { return "PERIODO = " + numero(periodo); }

}  // namespace

bool RicercaScostamenti::apri(const ado::RecordsetPtr& rst, const char* nome) {
  if (!rst) throw values::Errore(std::string("Object variable or With block variable not set: ") + nome);
  if (rst == rst_) return conRighe_;
  chiudi();
  // Counts past the filter that an earlier search has left on the set.
  conRighe_ = rst->RecordCount() > 0 || rst->Clone()->RecordCount() > 0;
  rst_ = rst;
  return conRighe_;
}

bool RicercaScostamenti::trova(const Variant& conto) {
  return cerca(perConto_, {"CONTO"}, {values::toPlainText(conto)}, filtroConto(conto));
}

bool RicercaScostamenti::trova(const Variant& conto, const Variant& periodo) {
  return cerca(perContoEPeriodo_, {"CONTO", "PERIODO"}, {values::toPlainText(conto), periodo},
               filtroConto(conto) + " AND " + filtroPeriodo(periodo));
}

bool RicercaScostamenti::trovaPeriodo(const Variant& periodo) {
  return cerca(perPeriodo_, {"PERIODO"}, {periodo}, filtroPeriodo(periodo));
}

bool RicercaScostamenti::cerca(Chiavi& chiavi, std::initializer_list<std::string_view> campi,
                               std::initializer_list<Variant> cercati, std::string filtro) {
  filtro_ = "";  // what a search that fails leaves
  if (!chiavi) chiavi.emplace(*rst_, campi);
  const bool trovata = chiavi->first(cercati);
  filtro_ = std::move(filtro);
  return trovata;
}

void RicercaScostamenti::chiudi() {
  if (rst_ && filtro_) {
    try {
      rst_->Filter(*filtro_);
    } catch (const values::Errore&) {  // the set has been closed meanwhile
    }
  }
  for (auto* chiavi : {&perConto_, &perContoEPeriodo_, &perPeriodo_}) chiavi->reset();
  filtro_.reset();
  rst_.reset();
}

Variant Scostamenti::GetPercentualeScostamento(const Variant& conto, const Variant& periodo) {
  return esegui(ctx_, "GetPercentualeScostamento", Variant(), [&]() -> Variant {
    const Variant numeroPeriodo(values::toInt16(periodo));
    switch (ctx_.prop.TipoScostamento) {
      case bdgScostamentoFisso: return values::nvl(ctx_.prop.PercentualeScostamento, 0);
      case bdgScostamentoPerConto: return GetPercentualeDaRstScostPerConto(conto, numeroPeriodo);
      case bdgScostamentoPerPeriodo: return GetPercentualeDaRstScostPerPeriodo(conto, numeroPeriodo);
      case bdgScostamentoNessuno: return 0;
      default: return {};
    }
  });
}

Variant Scostamenti::GetPercentualeDaRstScostPerConto(Variant conto, const Variant& periodo) {
  Variant risultato = 0;
  esegui(ctx_, "GetPercentualeDaRstScostPerConto ", [&] {
    if (!conti_.apri(ctx_.prop.RstScostPerConto, "RstScostPerConto")) return;
    while (zero(risultato) && !values::isBlank(conto)) {
      risultato = percentualeDellaRiga(conto, periodo);
      conto = GetContoPadre(ctx_, ctx_.prop.CodicePdcCoGeDitta, conto);
    }
  });
  return risultato;
}

/// The percentage of one account's own row; 0 when it has none.
Variant Scostamenti::percentualeDellaRiga(const Variant& conto, const Variant& periodo) {
  if (!conti_.trova(conto)) return 0;
  if (!zero(conti_.valore("FLGPERIODI")))
    return zero(periodo) ? Variant(0) : GetPercentualeDaRstScostPerPeriodo(conto, periodo);
  const Variant& percentuale = conti_.valore("PERCSCOST");
  return zero(percentuale) ? Variant(0) : percentuale;
}

Variant Scostamenti::GetPercentualeDaRstScostPerPeriodo(const Variant& conto, const Variant& periodo) {
  Variant risultato = 0;
  esegui(ctx_, "GetPercentualeDaRstScostPerPeriodo", [&] {
    if (!periodi_.apri(ctx_.prop.RstScostPerPeriodo, "RstScostPerPeriodo") || zero(periodo)) return;
    const bool trovata = values::isBlank(conto) ? periodi_.trovaPeriodo(periodo) : periodi_.trova(conto, periodo);
    if (!trovata) return;
    if (const Variant& percentuale = periodi_.valore("PERCSCOST"); !zero(percentuale)) risultato = percentuale;
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
