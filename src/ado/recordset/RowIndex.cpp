#include "ado/recordset/RowIndex.h"

#include <algorithm>

namespace ado {
namespace {

/// Fewer rows are scanned faster than an index is kept.
constexpr Row kScanBelow = 32;
/// More combinations of fields than a program has filters; the oldest index goes.
constexpr std::size_t kMostIndexes = 16;

}  // namespace

const std::vector<Row>& RowIndex::find(Key key) {
  for (; indexed_ < rows_.size(); ++indexed_) put(keyAt(indexed_), indexed_);
  static const std::vector<Row> kNone;
  const auto found = buckets_.find(key);
  if (found == buckets_.end()) return kNone;
  if (!found->second.sorted) tidy(key, found->second);
  return found->second.rows;
}

void RowIndex::leave(Row row) {
  if (row < indexed_) left_ = keyAt(row);
}

void RowIndex::enter(Row row) {
  if (row >= indexed_) return;
  const Key key = keyAt(row);
  if (key == left_) return;  // the same to a filter: another case, another scale
  auto& old = buckets_[left_];
  // Until they are half of the bucket, old entries cost less than their removal.
  if (++old.stale * 2 > old.rows.size()) tidy(left_, old);
  put(key, row);
}

Key RowIndex::keyAt(Row row) {
  ++rowsRead_;
  const auto* cells = rows_.cells(row);
  Key key = 0;
  for (const auto field : fields_) key = combine(key, keyOf(cells[field]));
  return key;
}

void RowIndex::put(Key key, Row row) {
  auto& bucket = buckets_[key];
  if (!bucket.rows.empty() && bucket.rows.back() >= row) bucket.sorted = false;
  bucket.rows.push_back(row);
}

void RowIndex::tidy(Key key, Bucket& bucket) {
  auto& rows = bucket.rows;
  std::erase_if(rows, [&](Row row) { return !rows_.isLive(row) || keyAt(row) != key; });
  if (!bucket.sorted) {
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  }
  bucket.sorted = true;
  bucket.stale = 0;
}

RowIndex* RowIndexes::find(std::span<const std::size_t> fields) {
  if (fields.empty() || rows_.size() < kScanBelow) return nullptr;
  const auto same = [&](const auto& other) { return std::ranges::equal(other, fields); };
  for (auto& index : indexes_)
    if (same(index.fields())) return &index;
  // One filter alone is not worth an index.
  const auto asked = std::find_if(askedOnce_.begin(), askedOnce_.end(), same);
  if (asked == askedOnce_.end()) {
    askedOnce_.emplace_back(fields.begin(), fields.end());
    if (askedOnce_.size() > kMostIndexes) askedOnce_.erase(askedOnce_.begin());
    return nullptr;
  }
  if (indexes_.size() == kMostIndexes) indexes_.pop_front();
  indexes_.emplace_back(rows_, std::move(*asked));
  askedOnce_.erase(asked);
  return &indexes_.back();
}

void RowIndexes::leave(Row row, std::span<const std::size_t> changedFields) {
  forEachWith(changedFields, &RowIndex::leave, row);
}

void RowIndexes::enter(Row row, std::span<const std::size_t> changedFields) {
  forEachWith(changedFields, &RowIndex::enter, row);
}

void RowIndexes::forEachWith(std::span<const std::size_t> changedFields, void (RowIndex::*step)(Row), Row row) {
  for (auto& index : indexes_) {
    const auto fields = index.fields();
    const auto uses = [&](std::size_t field) { return std::ranges::find(fields, field) != fields.end(); };
    // An amount that changes leaves the indexes over accounts and periods alone.
    if (std::ranges::any_of(changedFields, uses)) (index.*step)(row);
  }
}

std::uint64_t RowIndexes::rowsRead() const {
  std::uint64_t sum = 0;
  for (const auto& index : indexes_) sum += index.rowsRead();
  return sum;
}

}  // namespace ado
