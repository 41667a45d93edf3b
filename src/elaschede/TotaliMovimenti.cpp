#include "elaschede/TotaliMovimenti.h"

#include <optional>
#include <vector>

#include "frame/Trappola.h"
#include "frame/Valori.h"
#include "suite/Denaro.h"
#include "values/Conversion.h"

namespace bukorval {
namespace {

using values::Decimal;

constexpr int kDare = 1;
constexpr int kAvere = 2;
constexpr int kSenzaCompetenza = 4;

bool uguale(const values::Variant& valore, int atteso) {
  return !values::isBlank(valore) && values::toInt32(valore) == atteso;
}

Decimal importoDi(const values::Variant& valore) {
  return values::isBlank(valore) ? Decimal() : values::toDecimal(valore);
}

}  // namespace

void TotaliMovimenti::aggiungi(int periodo, const Decimal& importo) {
  if (periodo <= 0) return;
  const auto posizione = static_cast<std::size_t>(periodo);
  if (posizione >= somme_.size()) somme_.resize(posizione + 1);
  auto& somma = somme_[posizione];
  somma = somma ? *somma + importo : importo;
}

void TotaliMovimenti::scrivi(ado::Recordset& totali) const {
  if (totali.RecordCount() == 0) return;
  const auto& periodo = totali["PERIODO"];
  auto& importo = totali["IMPORTO"];
  for (totali.MoveFirst(); !totali.Eof(); totali.MoveNext()) {
    const auto posizione = static_cast<std::size_t>(values::toInt32(periodo.Value()));
    if (posizione >= somme_.size() || !somme_[posizione]) continue;
    importo.Value(importoDi(importo.Value()) + *somme_[posizione]);
    totali.Update();
  }
  totali.MoveFirst();
}

std::optional<std::pair<values::Date, values::Date>> intervalloCompetenza(const DateMovimento& date) {
  const auto& da = values::nvl(date.inizio, date.fine);
  const auto& a = values::nvl(date.fine, date.inizio);
  if (uguale(date.rateo, kSenzaCompetenza) || values::isBlank(da)) return std::nullopt;
  return std::pair(values::toDate(da), values::toDate(a));
}

suite::QuoteMensili quotePerCompetenza(const Decimal& importo, const DateMovimento& date,
                                       const suite::Arrotondamento& arrotonda) {
  if (const auto intervallo = intervalloCompetenza(date))
    return suite::ripartisciPerMese(importo, intervallo->first, intervallo->second, arrotonda);
  suite::QuoteMensili quote{};
  const auto data = values::toDate(values::nvl(date.documento, date.registrazione));
  quote[static_cast<std::size_t>(data.month())] = importo;
  return quote;
}

int segnoNegativo(const values::Variant& tipoScheda) {
  if (values::isBlank(tipoScheda)) return 0;
  switch (values::toInt32(tipoScheda)) {
    case 0: return kAvere;
    case 1: return kDare;
    default: return 0;
  }
}

std::function<void()> BdgElaSchede_GetTotaliMovimentiPerPeriodo(Contesto& ctx, const PeriodiElaborazione& periodi,
                                                                TotaliMovimenti& totali,
                                                                const ado::Recordset& movimento) {
  return [&ctx, &periodi, &totali, negativo = segnoNegativo(ctx.prop.BdgTipoScheda),
          &registrazione = movimento["CG41_DATAREG"], &lato = movimento["CG42_INDDAAV"],
          &totale = movimento["CG42_IMPTOTALE"]] {
    esegui(ctx, "BdgElaSchede_GetTotaliMovimentiPerPeriodo", [&] {
      totali.conta();
      const auto mese = static_cast<std::size_t>(values::toDate(registrazione.Value()).month());
      const auto importo = importoDi(totale.Value());
      totali.aggiungi(periodi.perMese[mese], uguale(lato.Value(), negativo) ? -importo : importo);
    });
  };
}

std::function<void()> BdgElaSchede_GetTotaliMovimentiPerPeriodoDiCompetenza(Contesto& ctx,
                                                                            const PeriodiElaborazione& periodi,
                                                                            TotaliMovimenti& totali,
                                                                            const ado::Recordset& movimento) {
  return [&ctx, &periodi, &totali, negativo = segnoNegativo(ctx.prop.BdgTipoScheda),
          &registrazione = movimento["CG41_DATAREG"], &documento = movimento["CG41_DATADOC"],
          &inizio = movimento["CG42_DATAINICOMP"], &fine = movimento["CG42_DATAFINCOMP"],
          &rateo = movimento["CG42_INDRATRIS"], &lato = movimento["CG42_INDDAAV"],
          &totale = movimento["CG42_IMPTOTALE"],
          arrotonda = suite::Arrotondamento([&ctx](const Decimal& quota) {
            return values::toDecimal(RoundZQ(ctx, quota, suite::kDecimaliImporto));
          })] {
    esegui(ctx, "BdgElaSchede_GetTotaliMovimentiPerPeriodoDiCompetenza", [&] {
      totali.conta();
      const auto importo = importoDi(totale.Value());
      const bool inverti = uguale(lato.Value(), negativo);
      const auto quote = quotePerCompetenza(
          importo, {registrazione.Value(), documento.Value(), inizio.Value(), fine.Value(), rateo.Value()}, arrotonda);
      for (std::size_t mese = 1; mese < quote.size(); ++mese)
        if (!quote[mese].isZero()) totali.aggiungi(periodi.perMese[mese], inverti ? -quote[mese] : quote[mese]);
    });
  };
}

}  // namespace bukorval
