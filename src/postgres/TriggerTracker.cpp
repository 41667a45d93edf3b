#include "postgres/TriggerTracker.h"

#include <algorithm>
#include <string>
#include <utility>

#include "engine/SqlWords.h"
#include "postgres/PostgresConnection.h"
#include "postgres/RowReader.h"
#include "postgres/emitter/StoredType.h"
#include "values/Errore.h"

namespace postgres {
namespace {

using values::Variant;

constexpr const char* kSessionTable =
    "CREATE TEMP TABLE IF NOT EXISTS bk_tracked (i bigserial, t text, o jsonb, n jsonb) ON COMMIT DELETE ROWS";

/// Every row that differs, with its key; of one that was updated only what differs.
constexpr const char* kFinish = R"(
WITH keys AS (
  SELECT c.relname::text AS t, jsonb_agg(a.attname ORDER BY a.attnum) AS k
  FROM pg_index i JOIN pg_class c ON c.oid = i.indrelid AND pg_table_is_visible(c.oid)
  JOIN pg_attribute a ON a.attrelid = c.oid AND a.attnum = ANY (i.indkey)
  WHERE i.indisprimary GROUP BY c.oid, c.relname),
rows AS (
  SELECT t, k, i, o, n, (SELECT jsonb_agg(coalesce(n, o) -> c) FROM jsonb_array_elements_text(k) c) AS id
  FROM bk_tracked JOIN keys USING (t)),
net AS (
  SELECT t, k, min(i) AS i, (array_agg(o ORDER BY i))[1] AS o, (array_agg(n ORDER BY i DESC))[1] AS n
  FROM rows GROUP BY t, k, id)
SELECT count(*), translate(encode(convert_to(string_agg(jsonb_build_array(t, k,
         CASE WHEN n IS NULL THEN o ELSE (SELECT jsonb_object_agg(key, value) FROM jsonb_each(o)
                                          WHERE k ? key OR value IS DISTINCT FROM n -> key) END,
         CASE WHEN o IS NULL THEN n ELSE (SELECT jsonb_object_agg(key, value) FROM jsonb_each(n)
                                          WHERE k ? key OR value IS DISTINCT FROM o -> key) END
       )::text, E'\n' ORDER BY i), 'UTF8'), 'base64'), E'\n', '')
FROM net WHERE o IS DISTINCT FROM n)";

/// The columns that each row tells of, in the table's order: row, table, kind, column, before, after.
constexpr const char* kRead = R"(
SELECT r.i, r.t, CASE WHEN r.o IS NULL THEN 'I' WHEN r.n IS NULL THEN 'D' ELSE 'U' END, a.attname, r.o ->> a.attname,
       r.n ->> a.attname
FROM bk_changes($1) r JOIN pg_attribute a ON a.attrelid = to_regclass(quote_ident(r.t)) AND coalesce(r.n, r.o) ? a.attname
ORDER BY r.i, a.attnum)";

/// The same of what has changed since; nothing when the rows are as they were.
constexpr const char* kTakeBack =
    "SELECT i, t, 'U', c, before, after FROM bk_take_back($1, string_to_array($2, ' ')) ORDER BY i, place";

class TriggerTracker : public ado::ChangeTracker {
 public:
  explicit TriggerTracker(PostgresConnection& connection) : connection_(connection) {}

  void start(const std::vector<std::string_view>& tables) override {
    connection_.ensureFunctions();
    connection_.runBeside(kSessionTable);
    for (const auto table : tables) {
      const auto name = engine::quotedText(sqlName(table));
      connection_.runBeside("SELECT bk_track_table(" + name + "::regclass)");
    }
    connection_.runBeside("DELETE FROM bk_tracked");
    connection_.runBeside("SET bukorval.track TO 'on'");
  }

  ado::ChangeSet finish() override {
    const auto result = connection_.runBeside(kFinish);
    const auto rows = std::stoll(std::string(cell(result.get(), 0, 0)));
    ado::ChangeSet changes{std::string(cell(result.get(), 0, 1)), rows};
    connection_.runBeside("SET bukorval.track TO 'off'");
    return changes;
  }

  void cancel() noexcept override {
    // A session that is lost tracks nothing.
    if (!connection_.isConnected()) return;
    try {
      connection_.runBeside("SET bukorval.track TO 'off'");
    } catch (...) {
    }
  }

  std::vector<ado::RowChange> read(const std::string& changes) override {
    return rowsOf(connection_.runBeside(kRead, {changes}).get());
  }

  std::vector<ado::RowChange> takeBack(const std::string& changes,
                                       const std::vector<std::string_view>& stamps) override {
    std::string names;
    for (const auto stamp : stamps) names += (names.empty() ? "" : " ") + storedName(stamp);
    return rowsOf(connection_.runBeside(kTakeBack, {changes, names}).get());
  }

 private:
  std::vector<ado::RowChange> rowsOf(const PGresult* result) const {
    std::vector<ado::RowChange> rows;
    std::string_view last;
    for (int i = 0; i < PQntuples(result); ++i) {
      const auto number = cell(result, i, 0);
      const auto& table = tableOf(cell(result, i, 1));
      if (i == 0 || number != last) rows.push_back({table.name, kindOf(cell(result, i, 2)), {}});
      last = number;
      const auto* column = table.find(shownName(cell(result, i, 3)));
      if (!column) throw values::Errore("The recorded changes do not fit the tables");
      rows.back().columns.push_back({column->name, valueOf(result, i, 4, *column), valueOf(result, i, 5, *column)});
    }
    return rows;
  }

  const tsql::Table& tableOf(std::string_view stored) const {
    const auto* table = connection_.catalog().find(shownName(stored));
    if (!table) throw values::Errore("The recorded changes do not fit the tables");
    return *table;
  }

  static ado::RowChange::Kind kindOf(std::string_view letter) {
    using Kind = ado::RowChange::Kind;
    return letter == "I" ? Kind::Inserted : letter == "D" ? Kind::Deleted : Kind::Updated;
  }

  /// Whole numbers of any width come as decimals.
  static Variant valueOf(const PGresult* result, int row, int position, const tsql::Column& column) {
    if (PQgetisnull(result, row, position) != 0) return Variant::Null();
    std::string text(cell(result, row, position));
    if (column.type.kind == tsql::TypeKind::DateTime) std::ranges::replace(text, 'T', ' ');
    if (column.type.kind == tsql::TypeKind::Integer) return parsedValue(text, tsql::decimalType(19, 0));
    return parsedValue(text, column.type);
  }

  PostgresConnection& connection_;
};

}  // namespace

std::unique_ptr<ado::ChangeTracker> makeTriggerTracker(PostgresConnection& connection) {
  return std::make_unique<TriggerTracker>(connection);
}

}  // namespace postgres
