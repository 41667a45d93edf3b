#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ado/filter/FilterExpression.h"
#include "ado/recordset/FilteredRows.h"
#include "ado/recordset/Recordset.h"
#include "ado/recordset/RowIndex.h"
#include "ado/recordset/RowStore.h"

namespace ado {

/// The rows that a set and its clones share.
struct Recordset::Table {
  explicit Table(std::size_t width) : rows(width), indexes(rows) {}

  /// The rows that match, ascending.
  std::vector<Row> matching(const FilterExpression& filter);
  bool matches(const FilterExpression& filter, Row row) {
    ++rowsTested;
    return rows.isLive(row) && filter.matches(rows.cells(row));
  }

  RowStore rows;
  RowIndexes indexes;
  std::vector<Cursor*> cursors;  ///< of the open sets on these rows
  std::uint64_t rowsTested = 0;
};

/// What a set has of its own: where it stands, what it shows, what is being edited.
struct Recordset::Cursor {
  ~Cursor() { detach(); }
  void attach(std::shared_ptr<Table> shared);
  void detach();

  /// Throws what fits: closed, or no current row.
  [[noreturn]] void refuseNoRow() const;
  bool editing() const { return edit_ != Edit::None; }

  std::size_t count();
  void moveFirst();
  void moveLast();
  void moveNext();
  void movePrevious();
  void show(std::optional<FilterExpression> condition, std::string text);

  /// Edits; the moves and the filter expect that none is under way.
  void set(std::size_t field, values::Variant value);
  void beginRow();
  void update();
  void cancel();
  void remove();

  /// Nowhere is both before the first and after the last row.
  enum class Place { Nowhere, BeforeFirst, OnRow, AfterLast };

  std::shared_ptr<Table> table;  ///< null when closed
  /// The current row as this set sees it: the table's cells, or `draft` during an edit. Null without a current row.
  const values::Variant* cells = nullptr;
  Place place = Place::Nowhere;
  Row row = 0;  ///< on OnRow; kept when the row is deleted, so that a move goes on from there
  std::string filterText;

 private:
  void stand(std::optional<Row> target, Place otherwise);
  void standOn(Row target);
  /// Brings rows appended since into the filtered list.
  void catchUp();
  std::optional<Row> first();
  std::optional<Row> last();
  void writeChanges();
  void appendDraft();
  void beginEdit();
  /// A set on the same rows changed or deleted one.
  void rowChanged(Row changed);
  void rowDeleted(Row deleted);

  std::optional<FilterExpression> filter_;
  FilteredRows shown_;
  Row considered_ = 0;  ///< rows before it have been put to the filter

  enum class Edit { None, Row, NewRow };
  Edit edit_ = Edit::None;
  std::vector<values::Variant> draft_;
  std::vector<std::size_t> changed_;  ///< fields set in the draft
  Place placeBefore_ = Place::Nowhere;
};

}  // namespace ado
