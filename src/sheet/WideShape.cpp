#include "sheet/WideShape.h"

#include "sheet/CellNumber.h"
#include "values/Conversion.h"

namespace bukorval::sheet {

using values::Variant;

std::string periodColumn(std::size_t period) { return 'p' + std::to_string(period + 1); }

WideShape::WideShape(const BudgetSheet& sheet) : identity_(sheet.selection.identity()) {
  columns_ = {{Role::Sheet, 0, std::string(kSheetColumn), ""},
              {Role::Stamp, 0, std::string(kStampColumn), ""},
              {Role::Exported, 0, std::string(kExportedColumn), ""},
              {Role::Card, 0, std::string(kCardColumn), "ID"}};
  for (std::size_t i = 0; i < sheet.keys.size(); ++i) {
    const auto& key = sheet.keys[i];
    columns_.push_back({Role::Key, i, key.name, key.title});
    if (key.described) columns_.push_back({Role::Description, i, key.name + std::string(kDescriptionEnd), key.title});
  }
  for (std::size_t i = 0; i < sheet.periods.size(); ++i)
    columns_.push_back({Role::Period, i, periodColumn(i), sheet.periods[i]});
}

Variant WideShape::value(const SheetRow& row, const WideColumn& column) const {
  const auto& card = row.card;
  switch (column.role) {
    case Role::Sheet: return identity_;
    case Role::Card: return card.id;
    case Role::Stamp: return card.stamp.isNothing() ? "" : values::toDate(card.stamp).toSql();
    case Role::Exported: return exportedText(row);
    case Role::Key: return card.codes[column.index];
    case Role::Description: return values::nvl(card.descriptions[column.index], card.codes[column.index]);
    case Role::Period: return row.cells[column.index].value;
  }
  return {};
}

std::string exportedText(const SheetRow& row) {
  std::string text = "|";
  for (const auto& cell : row.cells) text += values::toPlainText(cell.value) + '|';
  return text;
}

bool parseExported(std::string_view text, std::size_t count, std::vector<Variant>& values) {
  values.clear();
  if (!text.starts_with('|')) return false;
  text.remove_prefix(1);
  for (auto bar = text.find('|'); bar != std::string_view::npos; bar = text.find('|')) {
    const auto number = plainDecimal(text.substr(0, bar));
    if (bar > 0 && !number) return false;
    values.push_back(bar == 0 ? Variant::Null() : Variant(*number));
    text.remove_prefix(bar + 1);
  }
  return text.empty() && values.size() == count;
}

}  // namespace bukorval::sheet
