#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ado/connection/Connection.h"
#include "values/Variant.h"

/// The tables that hang on a card (BU65_TESBUDGET and those below it), and whose a row is.
namespace bukorval::dati {

struct CardTable {
  std::string_view table;
  std::string_view key;           ///< identifies a row; of several columns the first
  std::string_view card;          ///< names the card
  std::string_view kind, period;  ///< "" where there is none
};
inline constexpr CardTable kCardTables[] = {{"BU65_TESBUDGET", "BU65_ID", "BU65_ID", "", ""},
                                            {"BU66_DETBUDGET", "BU66_ID", "BU66_ID_BU65", "BU66_TIPO", "BU66_PERIODO"},
                                            {"BU67_BDGCASHFLOW", "BU67_ID_BU65", "BU67_ID_BU65", "", ""},
                                            {"BU14_SCADCFLOW", "BU14_ID", "BU14_IDBUDGET", "", "BU14_PERIODO"},
                                            {"BU90_TABPERCBUD", "BU90_IDBUDGET", "BU90_IDBUDGET", "", ""},
                                            {"BU63_DETMASTRI", "BU63_ID", "BU63_ID_BU65", "", ""}};

/// Null when it is none of them.
const CardTable* findCardTable(std::string_view table);

struct RowPlace {
  std::int64_t card = 0;
  values::Variant kind, period;
};

/// Tells the card of changed rows. A row that was only updated does not say it; then the table does, or for a row that
/// is gone the change that made or deleted it. Show it changes from the newest to the oldest.
class RowPlaces {
 public:
  explicit RowPlaces(ado::Connection& connection) : connection_(connection) {}

  /// The places of these rows, in their order; nothing for a row of which no trace is left.
  std::vector<std::optional<RowPlace>> find(const std::vector<ado::RowChange>& rows);

 private:
  using Key = std::pair<std::string_view, std::int64_t>;  ///< table and row

  void learn(const std::vector<ado::RowChange>& rows);
  void lookUp(const CardTable& table, const std::vector<std::int64_t>& keys);

  ado::Connection& connection_;
  std::map<Key, RowPlace> known_;
};

}  // namespace bukorval::dati
