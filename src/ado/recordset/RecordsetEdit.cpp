#include <algorithm>
#include <utility>

#include "ado/recordset/RecordsetState.h"
#include "values/Errore.h"

/// Editing rows.
namespace ado {

using values::Variant;

/// Edits go to a copy, so that clones see them at once or not at all.
void Recordset::Cursor::beginEdit() {
  const auto* from = table->rows.cells(row);
  draft_.assign(from, from + table->rows.width());
  edit_ = Edit::Row;
  cells = draft_.data();
}

void Recordset::Cursor::set(std::size_t field, Variant value) {
  if (edit_ == Edit::None) beginEdit();
  draft_[field] = std::move(value);
  if (edit_ == Edit::Row && std::ranges::find(changed_, field) == changed_.end()) changed_.push_back(field);
}

void Recordset::Cursor::beginRow() {
  draft_.assign(table->rows.width(), Variant::Null());
  placeBefore_ = place;
  place = Place::OnRow;
  edit_ = Edit::NewRow;
  cells = draft_.data();
}

void Recordset::Cursor::update() {
  if (edit_ == Edit::Row) writeChanges();
  if (edit_ == Edit::NewRow) appendDraft();
}

void Recordset::Cursor::writeChanges() {
  auto* const target = table->rows.cells(row);
  table->indexes.leave(row, changed_);
  for (const auto field : changed_) target[field] = std::move(draft_[field]);
  table->indexes.enter(row, changed_);
  for (auto* cursor : table->cursors) cursor->rowChanged(row);  // this set's own view, too
  edit_ = Edit::None;
  changed_.clear();
  cells = target;
}

/// Views and indexes find the new row by themselves when they are next asked.
void Recordset::Cursor::appendDraft() {
  table->rows.append(draft_);
  edit_ = Edit::None;
  standOn(table->rows.size() - 1);
}

void Recordset::Cursor::cancel() {
  if (edit_ == Edit::NewRow) place = placeBefore_;
  edit_ = Edit::None;
  changed_.clear();
  const bool onRow = place == Place::OnRow && table->rows.isLive(row);
  cells = onRow ? table->rows.cells(row) : nullptr;
}

void Recordset::Cursor::remove() {
  if (edit_ == Edit::NewRow) return cancel();
  if (cells == nullptr) refuseNoRow();
  table->rows.remove(row);
  for (auto* cursor : table->cursors) cursor->rowDeleted(row);
}

}  // namespace ado
