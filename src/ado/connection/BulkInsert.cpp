#include "ado/connection/BulkInsert.h"

#include <utility>

#include "ado/connection/Connection.h"
#include "values/Conversion.h"

namespace ado {
namespace {

class TextInsert : public BulkInsert {
 public:
  TextInsert(Connection& connection, std::string head) : connection_(connection), head_(std::move(head)) {}

  void add(const std::vector<values::Variant>& values) override {
    std::string text = head_;
    for (const auto& value : values) text.append(literalOf(value)).append(", ");
    text.resize(text.size() - 2);
    connection_.Execute(text += ")");
  }
  void finish() override {}

 private:
  Connection& connection_;
  std::string head_;
};

}  // namespace

std::string literalOf(const values::Variant& value) {
  switch (value.kind()) {
    case values::Kind::Empty:
    case values::Kind::Null: return "NULL";
    case values::Kind::Date: return "'" + value.as<values::Date>().toSql() + "'";
    case values::Kind::Boolean: return value.as<bool>() ? "1" : "0";
    case values::Kind::String: break;
    default: return values::toPlainText(value);
  }
  std::string text = "N'";
  for (const char c : value.as<std::string>()) text.append(c == '\'' ? 2 : 1, c);
  return text += '\'';
}

std::unique_ptr<BulkInsert> insertByText(Connection& connection, std::string_view table,
                                         const std::vector<std::string_view>& columns) {
  std::string head("INSERT INTO ");
  head.append(table).append(" (");
  for (const auto column : columns) head.append(column).append(", ");
  head.resize(head.size() - 2);
  return std::make_unique<TextInsert>(connection, head += ") VALUES (");
}

}  // namespace ado
