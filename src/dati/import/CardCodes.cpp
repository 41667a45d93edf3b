#include "dati/import/CardCodes.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "definition/Colonne.h"
#include "frame/TestoSql.h"
#include "language/Language.h"
#include "values/Conversion.h"

namespace bukorval::dati {
namespace {

std::string withParent(const values::Variant& parent, const values::Variant& code) {
  return values::toPlainText(parent) + "\n" + values::toPlainText(code);
}

}  // namespace

CardCodes::CardCodes(ado::Connection& connection, const values::Variant& company,
                     const std::vector<std::string>& columns, const std::vector<std::string>& except,
                     const std::vector<BroughtCode>& brought) {
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const auto& described = colonnaBU65(columns[i]);
    if (!described.haDescrizione() || std::ranges::find(except, columns[i]) != except.end()) continue;
    const auto table = codeTable(described);
    Column column{columns[i], i, {}, {}, {}};
    std::string fields(table.codice), conditions;
    for (const auto& [field, value] : table.altre) {
      if (field.empty()) continue;
      const bool isColumn = value.starts_with("BU65_");
      const auto parent = std::ranges::find(columns, value);
      if (parent != columns.end()) {
        column.parent = static_cast<std::size_t>(parent - columns.begin());
        fields.append(", ").append(field);
      } else if (value == "BU65_DITTA_CG18" || !isColumn) {
        conditions.append(conditions.empty() ? " WHERE  " : " AND    ").append(field).append(" = ");
        conditions.append(isColumn ? numero(company) : std::string(value));
      }
    }
    TestoSql sql;
    sql.riga(" SELECT DISTINCT ", fields).riga(" FROM   ", table.tabella, " WITH (NOLOCK) ").testo(conditions);
    column.read(*connection.Execute(sql));
    for (const auto& [name, code] : brought) {
      if (name != columns[i]) continue;
      column.codes.insert(code.code);
      column.codesOfParents.insert(withParent(code.parent, code.code));
    }
    if (!column.codes.empty()) columns_.push_back(std::move(column));
  }
}

void CardCodes::Column::read(ado::Recordset& rs) {
  for (; !rs.Eof(); rs.MoveNext()) {
    const auto& code = rs.Fields().Item(std::size_t{0}).Value();
    codes.insert(code);
    if (parent) codesOfParents.insert(withParent(rs.Fields().Item(std::size_t{1}).Value(), code));
  }
}

std::vector<std::string> CardCodes::problemsOf(const std::vector<values::Variant>& values) const {
  std::vector<std::string> found;
  for (const auto& column : columns_) {
    const auto& code = values[column.position];
    if (code.isEmpty()) continue;
    const bool known = column.parent && !values[*column.parent].isEmpty()
                           ? column.codesOfParents.contains(withParent(values[*column.parent], code))
                           : column.codes.contains(code);
    if (!known) found.push_back(tr("no {} {}", column.name, values::toPlainText(code)));
  }
  return found;
}

}  // namespace bukorval::dati
