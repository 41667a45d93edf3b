#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "ado/Dictionary.h"
#include "ado/connection/Connection.h"
#include "ado/recordset/Recordset.h"
#include "capi/bukorval.h"
#include "object/CLSKORVAL.h"
#include "suite/Sessione.h"
#include "values/Variant.h"

namespace capi {

/// The memory behind a bukorval_column.
struct ColumnData {
  std::vector<std::uint8_t> nulls;
  std::vector<std::int64_t> integers;
  std::vector<double> doubles;
  std::vector<bukorval_date> dates;
  std::string text;
  std::vector<std::size_t> offsets;
};

}  // namespace capi

struct bukorval_session {
  ado::ConnectionPtr connection;
  std::shared_ptr<suite::Sessione> session;
};

struct bukorval_object {
  bukorval::CLSKORVAL budget;
};

struct bukorval_variant {
  values::Variant value;
  std::string text;  ///< what bukorval_take_text gave
};

struct bukorval_recordset {
  ado::RecordsetPtr set;
  /// Where cells are written: the same rows, so that the set's own cursor stays where it is.
  ado::RecordsetPtr writer;
  std::size_t row = 0;
  std::unordered_map<std::size_t, capi::ColumnData> columns;
};

struct bukorval_dictionary {
  ado::DictionaryPtr dictionary;
};
