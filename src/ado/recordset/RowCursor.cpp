#include "ado/recordset/RowCursor.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "ado/Messages.h"
#include "values/Errore.h"

namespace ado {

using values::Variant;

void RowCursor::attach(std::shared_ptr<SharedRows> shared) {
  assert(shared);
  detach();
  shared_ = std::move(shared);
  shared_->cursors.push_back(this);
}

void RowCursor::detach() {
  if (!shared_) return;
  std::erase(shared_->cursors, this);
  shared_.reset();
  cells_ = {};
  place_ = Place::Nowhere;
  filter_.reset();
  filterText_.clear();
  edit_ = Edit::None;
  changed_.clear();
}

void RowCursor::refuseNoRow() const { throw values::Errore(shared_ ? kNoCurrentRow : kObjectClosed); }

void RowCursor::catchUp() {
  for (; considered_ < shared_->rows.size(); ++considered_)
    if (shared_->matches(*filter_, considered_)) shown_.set(considered_, true);
}

std::size_t RowCursor::count() {
  assert(shared_);
  if (!filter_) return shared_->rows.live();
  catchUp();
  return shown_.count();
}

std::optional<Row> RowCursor::first() {
  if (!filter_) return shared_->rows.first();
  catchUp();
  return shown_.first();
}

std::optional<Row> RowCursor::last() {
  if (!filter_) return shared_->rows.last();
  catchUp();
  return shown_.last();
}

void RowCursor::standOn(Row target) {
  place_ = Place::OnRow;
  row_ = target;
  cells_ = shared_->rows.cells(target);
}

void RowCursor::stand(std::optional<Row> target, Place otherwise) {
  if (target) return standOn(*target);
  cells_ = {};
  place_ = count() == 0 ? Place::Nowhere : otherwise;
}

void RowCursor::moveFirst() {
  assert(!editing());
  if (count() == 0) refuseNoRow();
  stand(first(), Place::AfterLast);
}

void RowCursor::moveLast() {
  assert(!editing());
  if (count() == 0) refuseNoRow();
  stand(last(), Place::BeforeFirst);
}

void RowCursor::moveNext() {
  assert(!editing());
  if (place_ == Place::AfterLast || place_ == Place::Nowhere) refuseNoRow();
  if (place_ == Place::BeforeFirst) return stand(first(), Place::AfterLast);
  if (filter_) catchUp();
  stand(filter_ ? shown_.after(row_) : shared_->rows.after(row_), Place::AfterLast);
}

void RowCursor::movePrevious() {
  assert(!editing());
  if (place_ == Place::BeforeFirst || place_ == Place::Nowhere) refuseNoRow();
  if (place_ == Place::AfterLast) return stand(last(), Place::BeforeFirst);
  if (filter_) catchUp();
  stand(filter_ ? shown_.before(row_) : shared_->rows.before(row_), Place::BeforeFirst);
}

void RowCursor::moveTo(std::optional<Row> row) {
  assert(shared_ && !editing());
  assert(!row || shared_->rows.isLive(*row));
  stand(row, Place::AfterLast);
}

void RowCursor::show(std::optional<FilterExpression> condition, std::string text) {
  assert(shared_ && !editing());
  // Everything that may fail comes first, so that the old view stands when it does.
  if (condition) shown_.assign(shared_->matching(*condition));
  considered_ = shared_->rows.size();
  filter_ = std::move(condition);
  filterText_ = std::move(text);
  stand(first(), Place::AfterLast);
}

/// Edits go to a copy, so that clones see them at once or not at all.
void RowCursor::beginEdit() {
  draft_.assign(cells_.begin(), cells_.end());
  edit_ = Edit::Row;
  cells_ = draft_;
}

void RowCursor::set(std::size_t field, Variant value) {
  assert(place_ == Place::OnRow && field < cells_.size());
  if (edit_ == Edit::None) beginEdit();
  draft_[field] = std::move(value);
  if (edit_ == Edit::Row && std::ranges::find(changed_, field) == changed_.end()) changed_.push_back(field);
}

void RowCursor::beginRow() {
  assert(shared_ && !editing());
  draft_.assign(shared_->rows.width(), Variant::Null());
  placeBefore_ = place_;
  place_ = Place::OnRow;
  edit_ = Edit::NewRow;
  cells_ = draft_;
}

void RowCursor::update() {
  assert(editing());
  if (edit_ == Edit::Row) {
    writeChanges();
  } else {
    appendDraft();
  }
}

void RowCursor::writeChanges() {
  const auto target = shared_->rows.cells(row_);
  for (const auto field : changed_) target[field] = std::move(draft_[field]);
  for (auto* cursor : shared_->cursors) cursor->rowChanged(row_);  // this set's own view, too
  edit_ = Edit::None;
  changed_.clear();
  cells_ = target;
}

/// Views find the new row by themselves when they are next asked.
void RowCursor::appendDraft() {
  shared_->rows.append(draft_);
  edit_ = Edit::None;
  standOn(shared_->rows.size() - 1);
}

void RowCursor::cancel() {
  assert(editing());
  if (edit_ == Edit::NewRow) place_ = placeBefore_;
  edit_ = Edit::None;
  changed_.clear();
  cells_ = {};
  if (place_ == Place::OnRow && shared_->rows.isLive(row_)) cells_ = shared_->rows.cells(row_);
}

void RowCursor::remove() {
  if (edit_ == Edit::NewRow) return cancel();
  if (cells_.empty()) refuseNoRow();
  shared_->rows.remove(row_);
  for (auto* cursor : shared_->cursors) cursor->rowDeleted(row_);
}

void RowCursor::rowChanged(Row changed) {
  if (filter_ && changed < considered_) shown_.set(changed, shared_->matches(*filter_, changed));
}

void RowCursor::rowDeleted(Row deleted) {
  if (filter_ && deleted < considered_) shown_.set(deleted, false);
  if (place_ != Place::OnRow || row_ != deleted || edit_ == Edit::NewRow) return;
  // The place and the row stay: the next move goes on from where the row was.
  cells_ = {};
  edit_ = Edit::None;
  changed_.clear();
}

}  // namespace ado
