#include "sheet/CsvFiles.h"

#include <string>
#include <unordered_map>

#include "sheet/WideShape.h"
#include "values/Conversion.h"

namespace bukorval::sheet {
namespace {

constexpr std::string_view kTidyStart[] = {"company", "type", "subtype", "year", "progressive", kCardColumn};
constexpr std::string_view kTidyEnd[] = {"kind", "period", "measure", "value"};

void writeTidyHeader(CsvWriter& csv, const std::vector<KeyColumn>& keys) {
  for (const auto name : kTidyStart) csv.field(name);
  for (const auto& key : keys) csv.field(key.name);
  for (const auto name : kTidyEnd) csv.field(name);
  csv.endLine();
}

/// The fields that all lines of a card begin with, by card.
std::unordered_map<std::int64_t, std::string> cardFields(const std::vector<SheetCard>& cards, const BudgetAnno& budget,
                                                         const CsvStyle& style) {
  std::unordered_map<std::int64_t, std::string> fields;
  for (const auto& card : cards) {
    std::string text;
    const auto add = [&](const values::Variant& value) {
      text += (text.empty() ? "" : std::string(1, style.separator)) +
              CsvWriter::quoted(CsvWriter::textOf(value, 0, style), style);
    };
    for (const auto& value : {budget.ditta, values::Variant(budget.tipo), budget.sottoTipo, budget.anno,
                              budget.progressivo, values::Variant(card.id)})
      add(value);
    for (const auto& code : card.codes) add(code);
    fields.emplace(card.id, std::move(text));
  }
  return fields;
}

}  // namespace

void writeWide(std::ostream& out, const BudgetSheet& sheet, const CsvStyle& style) {
  const WideShape shape(sheet);
  CsvWriter csv(out, style);
  for (const auto& column : shape.columns()) csv.field(column.name);
  csv.endLine();
  for (const auto& row : sheet.rows) {
    for (const auto& column : shape.columns())
      csv.value(shape.value(row, column), column.role == Role::Period ? sheet.selection.measure->decimals : 0);
    csv.endLine();
  }
}

void writeTidy(std::ostream& out, CLSKORVAL& budget, ado::Connection& connection, const TidySelection& selection,
               const CsvStyle& style) {
  const auto keys = readKeyColumns(budget, connection);
  const auto cards = cardFields(readCards(budget, connection, selection.cards, keys), selection.cards.budget, style);
  CsvWriter csv(out, style);
  writeTidyHeader(csv, keys);
  const auto rs = readDetails(connection, selection.cards, selection.kind);
  const auto& id = (*rs)["BU66_ID_BU65"];
  const auto& kind = (*rs)["BU66_TIPO"];
  const auto& period = (*rs)["BU66_PERIODO"];
  for (; !rs->Eof(); rs->MoveNext()) {
    const auto card = cards.find(values::toInt64(id.Value()));
    for (const auto& measure : dati::kMeasures) {
      if (card == cards.end() || (selection.measure && selection.measure != &measure)) continue;
      const auto& value = (*rs)[measure.column].Value();
      if (value.isNothing()) continue;
      csv.ready(card->second);
      csv.field(dati::kindName(values::toInt32(kind.Value())));
      csv.value(period.Value());
      csv.field(measure.name);
      csv.value(value, measure.decimals);
      csv.endLine();
    }
  }
}

}  // namespace bukorval::sheet
