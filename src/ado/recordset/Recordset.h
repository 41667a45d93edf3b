#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "ado/recordset/Fields.h"
#include "values/Export.h"
#include "values/Variant.h"

namespace ado {

class Recordset;
class RowCursor;
struct FilterColumn;
struct SharedRows;
using RecordsetPtr = std::shared_ptr<Recordset>;

/// A disconnected, client-side table with typed fields and a current-row cursor.
/// Every misuse (no current row, closed set, unknown field, bad filter) throws values::Errore and changes nothing.
class BUKORVAL_API Recordset : public values::Object {
 public:
  Recordset();
  ~Recordset() override;
  Recordset(const Recordset&) = delete;
  Recordset& operator=(const Recordset&) = delete;

  ado::Fields& Fields() { return *fields_; }
  const ado::Fields& Fields() const { return *fields_; }
  /// Shorthand for Fields().Item(name).
  Field& operator[](std::string_view name) const { return fields_->Item(name); }

  std::int32_t CursorLocation = adUseServer;
  std::int32_t CursorType = adOpenUnspecified;
  std::int32_t LockType = -1;

  /// Opens a set with no source: the appended fields, no rows.
  void Open();
  void Close();
  ObjectStateEnum State() const;

  bool Bof() const;
  bool Eof() const;
  /// Rows that pass the filter; a row begun with AddNew counts from its Update.
  std::int32_t RecordCount() const;
  /// A move first updates the row being edited. MoveFirst and MoveLast throw on a set with no rows, MoveNext at the
  /// end, MovePrevious at the beginning.
  void MoveFirst();
  void MoveLast();
  void MoveNext();
  void MovePrevious();

  /// Starts a new row with Null fields and makes it current; Update (or a move) keeps it, CancelUpdate drops it.
  void AddNew();
  /// Keeps the values set since the edit began; clones see them from here on. Without an edit, nothing happens.
  /// A row that no longer passes the filter stays current until the next move.
  void Update();
  void CancelUpdate();
  /// Deletes the current row; there is no current row until the next move.
  void Delete();

  /// Shows only matching rows and moves to the first of them. Grammar: FIELD op VALUE joined by AND and OR with
  /// parentheses; op is = <> < > <= >= LIKE; VALUE is a number, 'text' ('' for a quote), #date# or NULL.
  /// An empty text shows every row again. A text that does not parse throws and leaves the old filter.
  /// Text compares without regard to case and trailing blanks, numbers by value; text that holds a number compares
  /// with numbers. LIKE takes * or % at the ends of the text. = NULL and <> NULL test for Null; any other comparison
  /// with a Null field is false. Names may stand in [brackets]. Dates as Date::TryParse reads them.
  /// Every row is looked at: a loop that looks rows up by their values uses KeyedRows.
  void Filter(std::string_view criteria);
  const std::string& Filter() const;

  /// The same rows (shared, edits are seen by both) with a cursor and filter of their own.
  RecordsetPtr Clone() const;
  /// The values of one field (or all) from the current row to the end, the cursor left at the end;
  /// result[field][row].
  std::vector<std::vector<values::Variant>> GetRows(std::string_view field = {});

  /// For providers: adds one row to the end and returns its cells, all Null, to be filled with values that already
  /// have the fields' types. The span is valid until the set is closed.
  std::span<values::Variant> AppendRow();

 private:
  friend class Field;
  friend class KeyedRows;
  /// Throws when the set is closed.
  RowCursor& opened() const;
  /// The open set with the edit under way updated: where moves and filters start.
  RowCursor& settled();
  void attach(std::shared_ptr<SharedRows> rows);
  FilterColumn column(std::string_view field) const;

  std::unique_ptr<RowCursor> cursor_;
  std::unique_ptr<ado::Fields> fields_;
  std::vector<const Field*> required_;  ///< fields that refuse Null
};

}  // namespace ado
