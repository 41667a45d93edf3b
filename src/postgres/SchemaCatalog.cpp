#include "postgres/SchemaCatalog.h"

#include <cstdlib>

#include "postgres/Handle.h"
#include "postgres/ServerFunctions.h"
#include "postgres/emitter/StoredType.h"
#include "tsql/Names.h"

namespace postgres {
namespace {

/// The tables of every schema on the search path but the server's own, in the path's order.
constexpr const char* kColumns = R"(
SELECT c.relname, a.attname, a.atttypid::int8, a.atttypmod, a.attnotnull,
       coalesce(d.description LIKE 'N%CHAR(%', false), coalesce(x.identity, false)
FROM pg_class c
JOIN pg_attribute a ON a.attrelid = c.oid AND a.attnum > 0 AND NOT a.attisdropped
LEFT JOIN pg_description d ON d.objoid = c.oid AND d.objsubid = a.attnum AND d.classoid = 'pg_class'::regclass
LEFT JOIN (SELECT DISTINCT refobjid, refobjsubid, true AS identity FROM pg_depend
           JOIN pg_class s ON s.oid = objid AND s.relkind = 'S'
           WHERE classid = 'pg_class'::regclass AND deptype IN ('a', 'i')) x
       ON x.refobjid = c.oid AND x.refobjsubid = a.attnum
WHERE c.relkind IN ('r', 'p', 'v') AND pg_table_is_visible(c.oid)
  AND c.relnamespace = ANY (current_schemas(false)::regnamespace[])
ORDER BY c.oid, a.attnum)";

constexpr const char* kVersion = "SELECT obj_description(to_regprocedure('bk_fold(text)'))";

bool isTrue(const PGresult* result, int row, int column) { return cell(result, row, column) == "t"; }

}  // namespace

const tsql::Table* SchemaCatalog::find(std::string_view table) const {
  const auto found = tables_.find(tsql::upperName(table));
  return found == tables_.end() ? nullptr : &found->second;
}

void SchemaCatalog::load(PGconn* server) {
  const auto version = runSimple(server, kVersion);
  hasFunctions_ = cell(version.get(), 0, 0) == kFunctionsVersion;
  const auto columns = runSimple(server, kColumns);
  tables_.clear();
  for (int row = 0; row < PQntuples(columns.get()); ++row) {
    const auto text = [&](int column) { return std::string(cell(columns.get(), row, column)); };
    const auto name = shownName(text(0));
    auto& table = tables_[tsql::upperName(name)];
    table.name = name;
    tsql::Column column{shownName(text(1)),
                        typeOf(static_cast<Oid>(std::strtoul(text(2).c_str(), nullptr, 10)), std::atoi(text(3).c_str()),
                               isTrue(columns.get(), row, 5)),
                        isTrue(columns.get(), row, 6)};
    column.type.nullable = !isTrue(columns.get(), row, 4);
    table.columns.push_back(std::move(column));
  }
}

}  // namespace postgres
