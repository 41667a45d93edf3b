#include "ado/recordset/RowStore.h"

#include <algorithm>
#include <bit>
#include <memory>
#include <utility>

#include "values/Errore.h"

namespace ado {
namespace {

using values::Variant;

/// Rows of the first block. Most sets of one row never need a second.
constexpr Row kFirstRows = 4;
/// The top bit is left to those who mark row numbers.
constexpr Row kMostRows = 0x7FFFFFFE - kFirstRows;

std::size_t blockRows(std::size_t block) { return std::size_t{kFirstRows} << block; }

}  // namespace

RowStore::~RowStore() {
  Row left = size_;
  for (std::size_t block = 0; block < blocks_.size(); ++block) {
    const std::size_t used = std::min<std::size_t>(left, blockRows(block));
    std::destroy_n(blocks_[block], used * width_);
    std::allocator<Variant>().deallocate(blocks_[block], blockRows(block) * width_);
    left -= static_cast<Row>(used);
  }
}

void RowStore::grow() {
  if (size_ >= kMostRows) throw values::Errore("A record set cannot hold more rows");
  blocks_.reserve(blocks_.size() + 1);
  const std::size_t cells = blockRows(blocks_.size()) * width_;
  next_ = std::allocator<Variant>().allocate(cells);
  blockEnd_ = next_ + cells;
  blocks_.push_back(next_);
}

Variant* RowStore::nextPlace() {
  if (next_ == blockEnd_) grow();
  return next_;
}

void RowStore::count() {
  if (begin_ == end_) begin_ = size_;
  next_ += width_;
  end_ = ++size_;
}

std::span<Variant> RowStore::append() {
  Variant* const cells = nextPlace();
  for (Variant* cell = cells; cell != cells + width_; ++cell) ::new (static_cast<void*>(cell)) Variant(Variant::Null());
  count();
  return {cells, width_};
}

void RowStore::append(std::span<Variant> cells) {
  assert(cells.size() == width_);
  std::uninitialized_move_n(cells.begin(), width_, nextPlace());
  count();
}

std::span<Variant> RowStore::cells(Row row) const {
  assert(row < size_);
  // Block n holds the rows whose shifted number has its top bit n places above the first block's.
  const Row shifted = row + kFirstRows;
  const auto block = static_cast<std::size_t>(std::bit_width(shifted) - std::bit_width(kFirstRows));
  return {blocks_[block] + (shifted - std::bit_floor(shifted)) * width_, width_};
}

void RowStore::remove(Row row) {
  if (!isLive(row)) return;
  if (gone_.size() < size_) gone_.resize(size_);
  gone_[row] = true;
  ++removed_;
  // Deleting from either end, again and again, must not leave a run of dead rows to step over.
  while (begin_ < end_ && !isLive(begin_)) ++begin_;
  while (end_ > begin_ && !isLive(end_ - 1)) --end_;
}

std::optional<Row> RowStore::first() const { return begin_ < end_ ? std::optional(begin_) : std::nullopt; }

std::optional<Row> RowStore::last() const { return begin_ < end_ ? std::optional(end_ - 1) : std::nullopt; }

std::optional<Row> RowStore::after(Row row) const {
  for (Row next = row < begin_ ? begin_ : row + 1; next < end_; ++next)
    if (isLive(next)) return next;
  return std::nullopt;
}

std::optional<Row> RowStore::before(Row row) const {
  for (Row next = row < end_ ? row : end_; next > begin_;)
    if (isLive(--next)) return next;
  return std::nullopt;
}

}  // namespace ado
