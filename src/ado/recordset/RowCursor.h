#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "ado/filter/FilterExpression.h"
#include "ado/recordset/FilteredRows.h"
#include "ado/recordset/SharedRows.h"

namespace ado {

/// What a record set has of its own: where it stands, what it shows, what is being edited.
class RowCursor {
 public:
  /// Nowhere is both before the first and after the last row.
  enum class Place { Nowhere, BeforeFirst, OnRow, AfterLast };

  RowCursor() = default;
  ~RowCursor() { detach(); }
  RowCursor(const RowCursor&) = delete;
  RowCursor& operator=(const RowCursor&) = delete;

  /// Opens on rows, standing nowhere until the first show or append.
  void attach(std::shared_ptr<SharedRows> shared);
  void detach();
  /// Null when closed.
  const std::shared_ptr<SharedRows>& shared() const { return shared_; }

  Place place() const { return place_; }
  /// The current row as this set sees it: the shared cells, or the draft during an edit. Empty without a current row.
  std::span<const values::Variant> cells() const { return cells_; }
  /// Throws what fits: closed, or no current row.
  [[noreturn]] void refuseNoRow() const;
  bool editing() const { return edit_ != Edit::None; }
  const std::string& filterText() const { return filterText_; }

  /// Rows shown.
  std::size_t count();

  /// Moves and the filter expect an open cursor and no edit under way.
  void moveFirst();
  void moveLast();
  void moveNext();
  void movePrevious();
  /// To a row, whether or not the filter shows it; behind the last row when there is none.
  void moveTo(std::optional<Row> row);
  void show(std::optional<FilterExpression> condition, std::string text);

  /// Expects a current row.
  void set(std::size_t field, values::Variant value);
  /// Expects no edit under way.
  void beginRow();
  /// Expect an edit under way.
  void update();
  void cancel();
  void remove();

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

  std::shared_ptr<SharedRows> shared_;
  std::span<const values::Variant> cells_;
  Place place_ = Place::Nowhere;
  Row row_ = 0;  ///< on OnRow; kept when the row is deleted, so that a move goes on from there

  std::string filterText_;
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
