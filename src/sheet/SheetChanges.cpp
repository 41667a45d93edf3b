#include <charconv>
#include <set>
#include <unordered_map>

#include "dati/import/CsvModel.h"
#include "language/Language.h"
#include "sheet/CellNumber.h"
#include "sheet/SheetFile.h"
#include "sheet/WideShape.h"
#include "values/Arithmetic.h"
#include "values/Conversion.h"
#include "values/Errore.h"
#include "values/Text.h"

namespace bukorval::sheet {
namespace {

using values::Variant;

bool same(const Variant& a, const Variant& b) {
  if (a.isNothing() || b.isNothing()) return a.isNothing() == b.isNothing();
  return values::compare(a, b) == 0;
}

std::string shownValue(const Variant& value) { return value.isNothing() ? "empty" : values::toPlainText(value); }

/// Whether a cell has the code of a card; a number may be written in any way.
bool sameCode(std::string_view text, const Variant& code) {
  const auto known = values::toPlainText(code);
  if (text == known) return true;
  if (!code.isNumber()) return false;
  const auto number = plainDecimal(text);
  return number && same(Variant(*number), code);
}

/// Compares the lines of a file with the cards of the database.
class Comparison {
 public:
  Comparison(const SheetFile& file, const BudgetSheet& now, dati::Problems& problems)
      : file_(file), now_(now), shape_(now), problems_(problems) {
    for (const auto& row : now.rows) rows_.emplace(row.card.id, &row);
  }

  std::vector<SheetChange> run() {
    if (!findColumns()) return {};
    for (const auto& row : file_.table.rows) compareLine(row);
    return std::move(changes_);
  }

 private:
  /// Every column but the descriptions must be there, and no other may be.
  bool findColumns() {
    const auto before = problems_.count();
    std::set<std::string> known;
    for (const auto& column : shape_.columns()) {
      known.insert(column.name);
      const auto found = file_.names.find(column.name);
      if (found != file_.names.end())
        positions_.push_back(found->second);
      else if (column.role != Role::Description)
        say(1, 0, tr("column {} is missing", dati::shown(column.name)));
      else
        positions_.push_back(kNowhere);
    }
    for (const auto& [name, position] : file_.names)
      if (!known.contains(name)) say(1, position, tr("unknown column {}", dati::shown(name)));
    return problems_.count() == before;
  }

  void compareLine(const RawRow& line) {
    line_ = &line;
    cells_.assign(file_.table.header.size(), nullptr);
    for (const auto& cell : line.cells)
      if (cell.column < cells_.size()) cells_[cell.column] = &cell;
    const auto sheet = textAt(0);
    if (sheet == kTitlesLine || sheet == kTotalsLine) return;
    if (sheet.empty()) return refuseAdded();
    if (sheet != file_.identity) return say(line.line, 0, tr("the line is of another sheet"));
    const auto* row = findCard();
    if (!row || !keysAgree(*row)) return;
    if (!parseExported(textOf(Role::Exported), now_.periods.size(), exported_))
      return say(line.line, positionOf(Role::Exported), tr("what was exported cannot be read: it was changed"));
    for (std::size_t i = 0; i < shape_.columns().size(); ++i)
      if (shape_.columns()[i].role == Role::Period) compareCell(*row, shape_.columns()[i].index, positions_[i]);
  }

  void refuseAdded() {
    for (const auto position : positions_)
      if (position != kNowhere && cells_[position])
        return say(line_->line, position, tr("the line is of no card: cards are not added here"));
  }

  const SheetRow* findCard() {
    const auto text = textOf(Role::Card);
    const auto position = positionOf(Role::Card);
    std::int64_t id = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), id);
    const auto row = error == std::errc{} && end == text.data() + text.size() ? rows_.find(id) : rows_.end();
    if (row == rows_.end()) {
      say(line_->line, position, tr("the budget has no card {}", dati::shown(text)));
      return nullptr;
    }
    if (seen_.insert(id).second) return row->second;
    say(line_->line, position, tr("card {} stands twice", text));
    return nullptr;
  }

  bool keysAgree(const SheetRow& row) {
    bool agree = true;
    for (std::size_t i = 0; i < shape_.columns().size(); ++i) {
      const auto& column = shape_.columns()[i];
      if (column.role != Role::Key) continue;
      const auto text = textAt(positions_[i]);
      const auto& code = row.card.codes[column.index];
      if (sameCode(text, code)) continue;
      agree = false;
      say(line_->line, positions_[i],
          tr("{} of card {} is {}, not {}", column.name, row.card.id, shownCode(values::toPlainText(code)),
             shownCode(text)));
    }
    return agree;
  }

  static std::string shownCode(const std::string& text) { return text.empty() ? "empty" : dati::shown(text); }

  void compareCell(const SheetRow& row, std::size_t period, std::size_t position) {
    const auto& exported = exported_[period];
    const auto& now = row.cells[period];
    Variant value = Variant::Null();
    try {
      if (cells_[position]) value = cellNumber(*cells_[position], file_.table, *now_.selection.measure);
    } catch (const values::Errore& e) {
      return say(line_->line, position, prefixed(period, e.what()));
    }
    if (same(value, exported) || same(value, now.value)) return;
    if (now.details > 1)
      return say(line_->line, position, prefixed(period, tr("the value is the sum of several details")));
    if (!same(exported, now.value)) return say(line_->line, position, prefixed(period, conflict(exported, now, row)));
    changes_.push_back({&row, period, now.value, value});
  }

  std::string conflict(const Variant& exported, const SheetCell& now, const SheetRow& row) {
    auto text = tr("was {} at the export and is {} now", shownValue(exported), shownValue(now.value));
    const auto stamp = textOf(Role::Stamp);
    const bool later = stamp != values::toPlainText(shape_.value(row, shape_.columns()[columnOf(Role::Stamp)]));
    return later ? text + tr("; the card was last changed {}", values::toPlainText(row.card.stamp)) : text;
  }

  /// A spreadsheet's cell has a name that says the period.
  std::string prefixed(std::size_t period, const std::string& text) const {
    return file_.table.lettered ? text : "column " + periodColumn(period) + ": " + text;
  }

  std::size_t columnOf(Role role) const {
    return static_cast<std::size_t>(std::ranges::find(shape_.columns(), role, &WideColumn::role) -
                                    shape_.columns().begin());
  }
  std::size_t positionOf(Role role) const { return positions_[columnOf(role)]; }
  std::string textOf(Role role) const { return textAt(positionOf(role)); }
  std::string textAt(std::size_t position) const {
    return cells_[position] ? std::string(values::rtrim(cells_[position]->text)) : "";
  }

  void say(std::size_t line, std::size_t position, const std::string& text) {
    problems_.addAt(file_.table.file, line, file_.table.cellName(line, position), text);
  }

  static constexpr auto kNowhere = static_cast<std::size_t>(-1);
  const SheetFile& file_;
  const BudgetSheet& now_;
  WideShape shape_;
  dati::Problems& problems_;
  std::unordered_map<std::int64_t, const SheetRow*> rows_;
  std::vector<std::size_t> positions_;  ///< in the file, by column of the shape
  const RawRow* line_ = nullptr;
  std::vector<const RawCell*> cells_;  ///< of the line, by position
  std::vector<Variant> exported_;
  std::set<std::int64_t> seen_;
  std::vector<SheetChange> changes_;
};

}  // namespace

std::vector<SheetChange> sheetChanges(const SheetFile& file, const BudgetSheet& now, dati::Problems& problems) {
  return Comparison(file, now, problems).run();
}

}  // namespace bukorval::sheet
