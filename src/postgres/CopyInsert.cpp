#include "postgres/CopyInsert.h"

#include <string>
#include <string_view>
#include <utility>

#include "engine/SqlWords.h"
#include "postgres/Parameters.h"
#include "postgres/PostgresConnection.h"
#include "postgres/emitter/StoredType.h"

namespace postgres {
namespace {

/// Bytes that are gathered before they are sent.
constexpr std::size_t kGathered = std::size_t{1} << 18U;

std::string textOf(const engine::BulkRow& row) {
  std::vector<std::string> names;
  for (const auto& column : row.columns()) names.push_back(sqlName(column.column));
  return "COPY " + sqlName(row.table()) + " (" + engine::joined(names) + ") FROM STDIN";
}

/// Signs that would end a column or a row, and the one that says so.
void appendEscaped(std::string& rows, std::string_view text) {
  if (text.find_first_of("\\\t\n\r") == std::string_view::npos) {
    rows += text;
    return;
  }
  for (const char c : text) {
    switch (c) {
      case '\\': rows += "\\\\"; break;
      case '\t': rows += "\\t"; break;
      case '\n': rows += "\\n"; break;
      case '\r': rows += "\\r"; break;
      default: rows += c;
    }
  }
}

class CopyInsert : public ado::BulkInsert {
 public:
  CopyInsert(PostgresConnection& connection, engine::BulkRow columns)
      : connection_(connection), row_(std::move(columns)), sql_(textOf(row_)) {}

  void add(const std::vector<values::Variant>& values) override {
    const auto begun = rows_.size();
    try {
      for (std::size_t i = 0; i < values.size(); ++i) append(i, values[i]);
    } catch (...) {
      rows_.resize(begun);
      throw;
    }
    rows_.back() = '\n';
    if (rows_.size() >= kGathered) finish();
  }

  void finish() override {
    const auto rows = std::exchange(rows_, {});
    if (!rows.empty()) connection_.copyIn(sql_, rows);
    rows_.reserve(rows.size());
  }

 private:
  void append(std::size_t column, const values::Variant& value) {
    if (const auto bound = row_.convert(column, value)) {
      appendEscaped(rows_, serverText(*bound, row_.columns()[column].target));
    } else {
      rows_ += "\\N";
    }
    rows_ += '\t';
  }

  PostgresConnection& connection_;
  engine::BulkRow row_;
  std::string sql_;
  std::string rows_;
};

}  // namespace

std::unique_ptr<ado::BulkInsert> insertByCopy(PostgresConnection& connection, engine::BulkRow columns) {
  return std::make_unique<CopyInsert>(connection, std::move(columns));
}

}  // namespace postgres
