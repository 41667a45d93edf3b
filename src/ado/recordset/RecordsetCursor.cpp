#include <algorithm>
#include <utility>

#include "ado/Messages.h"
#include "ado/recordset/RecordsetState.h"
#include "values/Errore.h"

/// Moving about and showing rows.
namespace ado {

std::vector<Row> Recordset::Table::matching(const FilterExpression& filter) {
  std::vector<Row> found;
  const auto equalities = filter.equalities();
  if (auto* index = indexes.find(equalities.fields)) {
    for (const Row row : index->find(equalities.key))
      if (matches(filter, row)) found.push_back(row);
  } else {
    for (Row row = 0; row < rows.size(); ++row)
      if (matches(filter, row)) found.push_back(row);
  }
  return found;
}

void Recordset::Cursor::attach(std::shared_ptr<Table> shared) {
  detach();
  table = std::move(shared);
  table->cursors.push_back(this);
}

void Recordset::Cursor::detach() {
  if (!table) return;
  std::erase(table->cursors, this);
  table.reset();
  cells = nullptr;
  place = Place::Nowhere;
  filter_.reset();
  filterText.clear();
  edit_ = Edit::None;
  changed_.clear();
}

void Recordset::Cursor::refuseNoRow() const { throw values::Errore(table ? kNoCurrentRow : kObjectClosed); }

void Recordset::Cursor::catchUp() {
  for (; considered_ < table->rows.size(); ++considered_)
    if (table->matches(*filter_, considered_)) shown_.set(considered_, true);
}

std::size_t Recordset::Cursor::count() {
  if (!filter_) return table->rows.live();
  catchUp();
  return shown_.count();
}

std::optional<Row> Recordset::Cursor::first() {
  if (!filter_) return table->rows.first();
  catchUp();
  return shown_.first();
}

std::optional<Row> Recordset::Cursor::last() {
  if (!filter_) return table->rows.last();
  catchUp();
  return shown_.last();
}

void Recordset::Cursor::standOn(Row target) {
  place = Place::OnRow;
  row = target;
  cells = table->rows.cells(target);
}

void Recordset::Cursor::stand(std::optional<Row> target, Place otherwise) {
  if (target) return standOn(*target);
  cells = nullptr;
  place = count() == 0 ? Place::Nowhere : otherwise;
}

void Recordset::Cursor::moveFirst() {
  if (count() == 0) refuseNoRow();
  stand(first(), Place::AfterLast);
}

void Recordset::Cursor::moveLast() {
  if (count() == 0) refuseNoRow();
  stand(last(), Place::BeforeFirst);
}

void Recordset::Cursor::moveNext() {
  if (place == Place::AfterLast || place == Place::Nowhere) refuseNoRow();
  if (place == Place::BeforeFirst) return stand(first(), Place::AfterLast);
  if (filter_) catchUp();
  stand(filter_ ? shown_.after(row) : table->rows.after(row), Place::AfterLast);
}

void Recordset::Cursor::movePrevious() {
  if (place == Place::BeforeFirst || place == Place::Nowhere) refuseNoRow();
  if (place == Place::AfterLast) return stand(last(), Place::BeforeFirst);
  if (filter_) catchUp();
  stand(filter_ ? shown_.before(row) : table->rows.before(row), Place::BeforeFirst);
}

void Recordset::Cursor::show(std::optional<FilterExpression> condition, std::string text) {
  // Everything that may fail comes first, so that the old view stands when it does.
  if (condition) shown_.assign(table->matching(*condition));
  considered_ = table->rows.size();
  filter_ = std::move(condition);
  filterText = std::move(text);
  stand(first(), Place::AfterLast);
}

void Recordset::Cursor::rowChanged(Row changed) {
  if (filter_ && changed < considered_) shown_.set(changed, table->matches(*filter_, changed));
}

void Recordset::Cursor::rowDeleted(Row deleted) {
  if (filter_ && deleted < considered_) shown_.set(deleted, false);
  if (place != Place::OnRow || row != deleted || edit_ == Edit::NewRow) return;
  // place and row stay: the next move goes on from where the row was.
  cells = nullptr;
  edit_ = Edit::None;
  changed_.clear();
}

}  // namespace ado
