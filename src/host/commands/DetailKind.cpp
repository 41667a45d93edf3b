#include "host/commands/DetailKind.h"

#include "dati/Failure.h"
#include "dati/Nearest.h"
#include "host/environment/Errors.h"
#include "language/Language.h"

namespace bukorval::host {

DetailKind parseDetailKind(const std::string& text) {
  if (text == "budget" || text == "0") return {bdgDettaglioBudget, "BUDGET"};
  if (text == "actual" || text == "1") return {bdgDettaglioConsuntivo, "CONSUNTIVO"};
  if (text == "orders" || text == "2") return {bdgDettaglioOrdini, "ORDINI"};
  const bool named = text.starts_with("forecast");
  const std::string digits = named ? text.substr(8) : text;
  if (digits.empty() || digits.size() > 2 || digits.find_first_not_of("0123456789") != std::string::npos)
    throw UsageError(tr("A kind is budget, actual, orders, forecast1, forecast2 … or its number, not {}{}", text,
                        dati::didYouMean(text, {"budget", "actual", "orders", "forecast1"})));
  const int n = named ? std::stoi(digits) : std::stoi(digits) - bdgDettaglioOrdini;
  return {bdgDettaglioOrdini + n, "FORECAST" + std::to_string(n)};
}

const dati::Measure& parseMeasure(const std::string& text) {
  if (const auto* measure = dati::findMeasure(text)) return *measure;
  throw UsageError(tr("--measure is amount, qty1 or qty2, not {}", text));
}

void requireDetailKind(CLSKORVAL& budget, BdgTipoDettaglio kind) {
  const int last = bdgDettaglioOrdini + budget.GetNumeroForecast(budget.TipoBudget, budget.SottoTipoBudget);
  if (kind >= bdgDettaglioBudget && kind <= last) return;
  throw dati::Refused(tr("The budget has no detail kind {}: they are 0 (budget) to {}", kind, last));
}

BdgTipoDettaglio parsePeriodKind(CLSKORVAL& budget, const std::string& text) {
  const auto kind = parseDetailKind(text).kind;
  requireDetailKind(budget, kind);
  if (kind == bdgDettaglioOrdini) throw dati::Refused(tr("Orders have no value by period: the latest of them counts"));
  return kind;
}

}  // namespace bukorval::host
