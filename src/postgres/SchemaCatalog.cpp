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

constexpr const char* kFunctions = "SELECT obj_description(to_regprocedure('bk_fold(text)'))";

/// Another one whenever a table is made, dropped or gets a column.
constexpr const char* kVersion =
    "SELECT sum(hashtext(oid::text || ' ' || xmin::text)) FROM pg_class"
    " WHERE relkind IN ('r', 'p', 'v') AND relnamespace = ANY (current_schemas(false)::regnamespace[])";

std::string readVersion(PGconn* server) { return std::string(cell(runSimple(server, kVersion).get(), 0, 0)); }

bool isTrue(const PGresult* result, int row, int column) { return cell(result, row, column) == "t"; }

}  // namespace

const tsql::Table* SchemaCatalog::find(std::string_view table) const {
  const auto found = tables_.find(tsql::upperName(table));
  return found == tables_.end() ? nullptr : &found->second;
}

bool SchemaCatalog::outdated(PGconn* server) const { return readVersion(server) != version_; }

void SchemaCatalog::load(PGconn* server) {
  version_ = readVersion(server);
  const auto functions = runSimple(server, kFunctions);
  hasFunctions_ = cell(functions.get(), 0, 0) == kFunctionsVersion;
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
