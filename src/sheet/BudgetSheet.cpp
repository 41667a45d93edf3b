#include "sheet/BudgetSheet.h"

#include <charconv>
#include <unordered_map>

#include "dati/Failure.h"
#include "values/Conversion.h"

namespace bukorval::sheet {
namespace {

using values::Variant;

constexpr std::string_view kFormat = "bukorval|1|";

/// Takes a whole number and the bar behind it from the front of a text.
std::optional<std::int32_t> takeNumber(std::string_view& text) {
  std::int32_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc{} || end == text.data() + text.size() || *end != '|') return {};
  text.remove_prefix(static_cast<std::size_t>(end - text.data()) + 1);
  return number;
}

std::vector<std::string> periodNames(CLSKORVAL& budget) {
  const auto periodicity = budget.GetPeriodicitaBudget(budget.TipoBudget, budget.SottoTipoBudget);
  const auto yearKind = budget.GetAnnoBudgetFiscaleSolare(budget.TipoBudget, budget.SottoTipoBudget);
  const int periods = values::toInt32(values::nvl(budget.GetBdgNrPeriodi(periodicity), 0));
  dati::requireSuccess(budget);
  std::vector<std::string> names;
  for (int i = 1; i <= periods; ++i)
    names.push_back(budget.GetDescrizionePeriodo(budget.CodiceDitta, periodicity, yearKind,
                                                 static_cast<std::int16_t>(i), budget.AnnoEsercizio,
                                                 budget.ProgressivoEsercizio));
  return names;
}

void addDetail(SheetCell& cell, const Variant& value) {
  ++cell.details;
  if (value.isNothing()) return;
  cell.value = cell.value.isNothing() ? value : Variant(values::toDecimal(cell.value) + values::toDecimal(value));
}

}  // namespace

std::string SheetSelection::identity() const {
  std::string text(kFormat);
  for (const auto& part : {cards.budget.ditta, Variant(cards.budget.tipo), cards.budget.anno, cards.budget.progressivo,
                           Variant(kind), Variant(std::string(measure->name))})
    text += values::toPlainText(part) + '|';
  return text + values::toPlainText(cards.budget.sottoTipo);
}

std::optional<SheetSelection> parseIdentity(std::string_view text) {
  if (!text.starts_with(kFormat)) return {};
  text.remove_prefix(kFormat.size());
  const auto company = takeNumber(text), type = takeNumber(text), year = takeNumber(text), run = takeNumber(text),
             kind = takeNumber(text);
  const auto bar = text.find('|');
  if (!company || !type || !year || !run || !kind || bar == std::string_view::npos) return {};
  const auto* measure = dati::findMeasure(text.substr(0, bar));
  if (!measure) return {};
  return SheetSelection{{{*company, *type, std::string(text.substr(bar + 1)), *year, *run}, {}, {}}, *kind, measure};
}

BudgetSheet readBudgetSheet(CLSKORVAL& budget, ado::Connection& connection, const SheetSelection& selection) {
  BudgetSheet sheet{selection, readKeyColumns(budget, connection), periodNames(budget), {}};
  std::unordered_map<std::int64_t, std::size_t> positions;
  for (auto& card : readCards(budget, connection, selection.cards, sheet.keys)) {
    positions.emplace(card.id, sheet.rows.size());
    sheet.rows.push_back({std::move(card), std::vector<SheetCell>(sheet.periods.size())});
  }
  const auto rs = readDetails(connection, selection.cards, selection.kind);
  const auto& card = (*rs)["BU66_ID_BU65"];
  const auto& period = (*rs)["BU66_PERIODO"];
  const auto& value = (*rs)[selection.measure->column];
  for (; !rs->Eof(); rs->MoveNext()) {
    const auto row = positions.find(values::toInt64(card.Value()));
    const auto number = values::toInt32(period.Value());
    if (row == positions.end() || number < 1 || number > static_cast<int>(sheet.periods.size())) continue;
    addDetail(sheet.rows[row->second].cells[static_cast<std::size_t>(number - 1)], value.Value());
  }
  return sheet;
}

}  // namespace bukorval::sheet
