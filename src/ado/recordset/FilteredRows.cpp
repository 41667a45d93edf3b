#include "ado/recordset/FilteredRows.h"

#include <algorithm>
#include <cassert>
#include <functional>
#include <utility>

namespace ado {
namespace {

constexpr Row kGap = 0x80000000U;
/// Fewer gaps are not worth closing.
constexpr std::size_t kFewGaps = 32;

bool isGap(Row entry) { return (entry & kGap) != 0; }
Row rowOf(Row entry) { return entry & ~kGap; }

}  // namespace

void FilteredRows::assign(std::vector<Row> rows) {
  assert(std::ranges::adjacent_find(rows, std::greater_equal{}) == rows.end());
  entries_ = std::move(rows);
  begin_ = 0;
  count_ = entries_.size();
  recent_ = 0;
}

/// Entries before begin_ are never looked at: a row hidden there and shown again gets a new entry.
std::size_t FilteredRows::positionOf(Row row) const {
  assert(!isGap(row));
  const std::size_t size = entries_.size();
  const std::size_t near = std::max(recent_, begin_);
  for (std::size_t at = near; at < size && at < near + 2; ++at)
    if (rowOf(entries_[at]) == row) return recent_ = at;
  const auto from = entries_.begin() + static_cast<std::ptrdiff_t>(begin_);
  const auto found =
      std::lower_bound(from, entries_.end(), row, [](Row entry, Row wanted) { return rowOf(entry) < wanted; });
  return recent_ = static_cast<std::size_t>(found - entries_.begin());
}

void FilteredRows::set(Row row, bool shown) {
  const std::size_t at = positionOf(row);
  const bool known = at < entries_.size() && rowOf(entries_[at]) == row;
  if (known && shown && isGap(entries_[at])) {
    entries_[at] = row;
    begin_ = std::min(begin_, at);
    ++count_;
  } else if (known && !shown && !isGap(entries_[at])) {
    hide(at);
  } else if (!known && shown) {
    insert(at, row);
  }
}

void FilteredRows::insert(std::size_t position, Row row) {
  entries_.insert(entries_.begin() + static_cast<std::ptrdiff_t>(position), row);
  begin_ = std::min(begin_, position);
  ++count_;
}

void FilteredRows::hide(std::size_t position) {
  entries_[position] |= kGap;
  --count_;
  while (begin_ < entries_.size() && isGap(entries_[begin_])) ++begin_;
  while (entries_.size() > begin_ && isGap(entries_.back())) entries_.pop_back();
  const std::size_t gaps = entries_.size() - begin_ - count_;
  if (gaps <= kFewGaps || gaps <= count_) return;
  entries_.erase(entries_.begin(), entries_.begin() + static_cast<std::ptrdiff_t>(begin_));
  std::erase_if(entries_, isGap);
  begin_ = 0;
}

std::optional<Row> FilteredRows::first() const { return count_ > 0 ? std::optional(entries_[begin_]) : std::nullopt; }

std::optional<Row> FilteredRows::last() const { return count_ > 0 ? std::optional(entries_.back()) : std::nullopt; }

std::optional<Row> FilteredRows::after(Row row) const {
  std::size_t at = positionOf(row);
  if (at < entries_.size() && rowOf(entries_[at]) == row) ++at;
  for (at = std::max(at, begin_); at < entries_.size(); ++at)
    if (!isGap(entries_[at])) return entries_[recent_ = at];
  return std::nullopt;
}

std::optional<Row> FilteredRows::before(Row row) const {
  for (std::size_t at = std::min(positionOf(row), entries_.size()); at > begin_;)
    if (!isGap(entries_[--at])) return entries_[recent_ = at];
  return std::nullopt;
}

}  // namespace ado
