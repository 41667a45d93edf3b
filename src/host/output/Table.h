#pragma once

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ado/recordset/Recordset.h"
#include "values/Variant.h"

namespace bukorval::host {

/// One column of a table to show.
struct Colonna {
  std::string nome;          ///< heads CSV and is the key in JSON
  std::string titolo;        ///< heads the aligned table
  bool numero = false;       ///< right-aligned
  int decimali = 0;          ///< decimals of a number
  bool percentuale = false;  ///< a ratio that people read as a percentage
  bool totale = false;       ///< summed in the totals row
  bool secondaria = false;   ///< in the aligned table only on request
};

/// What a command shows, independent of the format.
struct Tabella {
  std::vector<Colonna> colonne;
  std::vector<std::vector<values::Variant>> righe;
  std::vector<values::Variant> totali;  ///< one cell per column, or empty for no totals row

  /// Nothing when there is no such column.
  std::optional<std::size_t> posizione(std::string_view nome) const;
  /// Marks columns that the aligned table shows only on request; names it does not have are passed over.
  void nascondi(std::initializer_list<std::string_view> nomi);
  /// Fills the totals row with the sums of the columns marked for it; a column without values stays Null.
  void somma();
};

/// Reads a record set from its first row; the titles come from the field names, padding is trimmed.
Tabella daRecordset(ado::Recordset& rs);

}  // namespace bukorval::host
