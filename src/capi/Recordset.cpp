#include "ado/recordset/Recordset.h"

#include "capi/Column.h"
#include "capi/Guard.h"
#include "capi/Handles.h"

using namespace capi;

namespace {

constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

ado::Field& fieldAt(const bukorval_recordset& handle, std::size_t place) {
  if (place >= handle.set->Fields().Count()) throw Misuse("There is no such field");
  return handle.set->Fields().Item(place);
}

/// The rows that the set shows, with a cursor of their own.
ado::RecordsetPtr shown(const ado::Recordset& set) {
  auto rows = set.Clone();
  if (!set.Filter().empty()) rows->Filter(set.Filter());
  return rows;
}

/// The set of the writer, on the row.
ado::Recordset& rowAt(bukorval_recordset& handle, std::size_t row) {
  if (!handle.writer || row < handle.row) {
    handle.writer = shown(*handle.set);
    handle.row = 0;
    if (handle.writer->RecordCount() > 0) handle.writer->MoveFirst();
  }
  auto& writer = *handle.writer;
  for (; handle.row < row && !writer.Eof(); ++handle.row) writer.MoveNext();
  if (writer.Eof()) {
    // A row may be added by another handle, which a cursor at the end would not see.
    handle.writer.reset();
    throw Misuse("There is no such row");
  }
  return writer;
}

void append(ado::Recordset& set, const bukorval_field& field) {
  auto& made = set.Fields().Append(givenText(field.name, "name"), static_cast<ado::DataTypeEnum>(field.type),
                                   field.size, field.nullable ? ado::adFldIsNullable : ado::adFldUnspecified);
  made.Precision(field.precision);
  made.NumericScale(field.scale);
}

/// Writes into the current row, everything or nothing.
template <class F>
void edit(ado::Recordset& rows, F write) {
  try {
    write();
    rows.Update();
  } catch (...) {
    rows.CancelUpdate();
    throw;
  }
}

}  // namespace

extern "C" {

bukorval_code bukorval_recordset_new(bukorval_recordset** set) {
  return guarded([&] {
    auto made = std::make_unique<bukorval_recordset>();
    made->set = std::make_shared<ado::Recordset>();
    made->set->CursorLocation = ado::adUseClient;
    handOut(std::move(made), set, "set");
  });
}

void bukorval_recordset_free(bukorval_recordset* set) { delete set; }

bukorval_code bukorval_recordset_append(bukorval_recordset* set, const bukorval_field* field) {
  return guarded([&] {
    const auto& asked = given(field, "field");
    auto& to = *given(set, "set").set;
    // What a set with such a field would refuse is refused before it has the field.
    ado::Recordset trial;
    append(trial, asked);
    trial.Open();
    append(to, asked);
  });
}

bukorval_code bukorval_recordset_open(bukorval_recordset* set) {
  return guarded([&] { given(set, "set").set->Open(); });
}

bukorval_code bukorval_recordset_rows(const bukorval_recordset* set, size_t* rows) {
  return guarded([&] {
    const auto& from = *given(set, "set").set;
    given(rows, "rows") =
        from.State() == ado::adStateClosed ? std::size_t{0} : static_cast<std::size_t>(from.RecordCount());
  });
}

bukorval_code bukorval_recordset_fields(const bukorval_recordset* set, size_t* fields) {
  return guarded([&] { given(fields, "fields") = given(set, "set").set->Fields().Count(); });
}

bukorval_code bukorval_recordset_field(const bukorval_recordset* set, size_t place, bukorval_field* field) {
  return guarded([&] {
    const auto& found = fieldAt(given(set, "set"), place);
    given(field, "field") = {
        found.Name().c_str(),
        found.Type(),
        found.DefinedSize(),
        found.Precision(),
        found.NumericScale(),
        found.Attributes() != ado::adFldUnspecified && (found.Attributes() & ado::adFldIsNullable) != 0};
  });
}

bukorval_code bukorval_recordset_column(bukorval_recordset* set, size_t place, bukorval_column* column) {
  return guarded([&] {
    auto& handle = given(set, "set");
    auto& result = given(column, "column");
    const auto& field = fieldAt(handle, place);
    std::vector<values::Variant> values;
    const auto rows = shown(*handle.set);
    if (rows->RecordCount() > 0) values = std::move(rows->GetRows(field.Name()).front());
    result = makeColumn(handle.columns[place], values, field);
  });
}

bukorval_code bukorval_recordset_put(bukorval_recordset* set, size_t row, const char* field,
                                     const bukorval_variant* value) {
  return guarded([&] {
    auto& rows = rowAt(given(set, "set"), row);
    const auto& cell = given(value, "value").value;
    edit(rows, [&] { rows[givenText(field, "field")].Value(cell); });
  });
}

bukorval_code bukorval_recordset_add(bukorval_recordset* set, const bukorval_variant* const* cells, size_t count) {
  return guarded([&] {
    auto& handle = given(set, "set");
    if (count != handle.set->Fields().Count()) throw Misuse("A row has a cell for each field");
    if (!handle.writer) handle.writer = shown(*handle.set);
    handle.row = kNowhere;
    auto& rows = *handle.writer;
    rows.AddNew();
    edit(rows, [&] {
      for (std::size_t i = 0; i < count; ++i)
        rows.Fields().Item(i).Value(given(given(cells, "cells") ? cells[i] : nullptr, "A cell").value);
    });
  });
}

}  // extern "C"
