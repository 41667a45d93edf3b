// The engine's header declares its sessions only where these are asked for.
#define SQLITE_ENABLE_SESSION 1
#define SQLITE_ENABLE_PREUPDATE_HOOK 1

#include "sqlite/SessionTracker.h"

#include <sqlite3.h>

#include <algorithm>
#include <charconv>
#include <string>

#include "engine/DateNumber.h"
#include "sqlite/Handle.h"
#include "values/Decimal.h"
#include "values/Errore.h"

namespace sqlite {

using namespace engine;
namespace {

using values::Variant;

struct DeleteSession {
  void operator()(sqlite3_session* session) const { sqlite3session_delete(session); }
};
struct FreeMemory {
  void operator()(void* memory) const { sqlite3_free(memory); }
};
using Bytes = std::unique_ptr<void, FreeMemory>;

void require(int outcome, const char* step) {
  if (outcome != SQLITE_OK)
    throw values::Errore(std::string("Changes cannot be ") + step + ": " + sqlite3_errstr(outcome));
}

std::string toHex(const void* bytes, int size) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  const auto* data = static_cast<const unsigned char*>(bytes);
  std::string text;
  text.reserve(static_cast<std::size_t>(size) * 2);
  for (int i = 0; i < size; ++i) {
    text += kDigits[data[i] >> 4U];
    text += kDigits[data[i] & 15U];
  }
  return text;
}

std::string fromHex(const std::string& text) {
  std::string bytes;
  bytes.reserve(text.size() / 2);
  for (std::size_t i = 0; i + 1 < text.size(); i += 2) {
    unsigned value = 0;
    const auto [end, error] = std::from_chars(text.data() + i, text.data() + i + 2, value, 16);
    if (error != std::errc() || end != text.data() + i + 2) throw values::Errore("The recorded changes are damaged");
    bytes += static_cast<char>(value);
  }
  return bytes;
}

/// A stored value as the column's type has it.
Variant valueOf(sqlite3_value* value, const tsql::Type& type) {
  if (!value || sqlite3_value_type(value) == SQLITE_NULL) return Variant::Null();
  switch (type.kind) {
    case tsql::TypeKind::Decimal: return values::Decimal::FromScaled(sqlite3_value_int64(value), type.scale);
    case tsql::TypeKind::DateTime: return fromDateNumber(sqlite3_value_int64(value));
    case tsql::TypeKind::Float: return sqlite3_value_double(value);
    case tsql::TypeKind::Integer:
    case tsql::TypeKind::Bit: return values::Decimal::FromScaled(sqlite3_value_int64(value));
    default: break;
  }
  const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
  return std::string(text, static_cast<std::size_t>(sqlite3_value_bytes(value)));
}

ado::RowChange::Kind kindOf(int operation) {
  if (operation == SQLITE_INSERT) return ado::RowChange::Kind::Inserted;
  return operation == SQLITE_DELETE ? ado::RowChange::Kind::Deleted : ado::RowChange::Kind::Updated;
}

/// The row that an iterator stands on.
ado::RowChange rowAt(sqlite3_changeset_iter* row, const tsql::Catalog& catalog) {
  const char* table = nullptr;
  int count = 0;
  int operation = 0;
  require(sqlite3changeset_op(row, &table, &count, &operation, nullptr), "read");
  unsigned char* isKey = nullptr;
  require(sqlite3changeset_pk(row, &isKey, nullptr), "read");
  const auto* found = catalog.find(table);
  if (!found || found->columns.size() < static_cast<std::size_t>(count))
    throw values::Errore(std::string("The table ") + table + " is not what it was when its changes were recorded");
  ado::RowChange change{table, kindOf(operation), {}};
  for (int i = 0; i < count; ++i) {
    const auto& column = found->columns[static_cast<std::size_t>(i)];
    sqlite3_value* before = nullptr;
    sqlite3_value* after = nullptr;
    if (operation != SQLITE_INSERT) require(sqlite3changeset_old(row, i, &before), "read");
    if (operation != SQLITE_DELETE) require(sqlite3changeset_new(row, i, &after), "read");
    if (!before && !after) continue;
    // The key of an updated row is told once.
    if (isKey[i] != 0 && operation == SQLITE_UPDATE) after = before;
    change.columns.push_back({column.name, valueOf(before, column.type), valueOf(after, column.type)});
  }
  return change;
}

std::int64_t countRows(void* bytes, int size) {
  sqlite3_changeset_iter* row = nullptr;
  require(sqlite3changeset_start(&row, size, bytes), "read");
  std::int64_t rows = 0;
  while (sqlite3changeset_next(row) == SQLITE_ROW) ++rows;
  require(sqlite3changeset_finalize(row), "read");
  return rows;
}

/// What has changed since, found while a change set is taken back.
struct Conflicts {
  const tsql::Catalog& catalog;
  const std::vector<std::string_view>& stamps;
  std::vector<ado::RowChange> rows;
  bool failed = false;

  static int onConflict(void* context, int why, sqlite3_changeset_iter* row) noexcept {
    auto& self = *static_cast<Conflicts*>(context);
    // A foreign key belongs to no row.
    if (why == SQLITE_CHANGESET_FOREIGN_KEY) return SQLITE_CHANGESET_ABORT;
    try {
      auto conflict = why == SQLITE_CHANGESET_DATA ? self.differences(row) : self.lost(row);
      if (why == SQLITE_CHANGESET_DATA && std::ranges::all_of(conflict.columns, &Conflicts::unchanged))
        return SQLITE_CHANGESET_REPLACE;
      self.rows.push_back(std::move(conflict));
    } catch (...) {
      self.failed = true;
      return SQLITE_CHANGESET_ABORT;
    }
    return SQLITE_CHANGESET_OMIT;
  }

 private:
  static bool unchanged(const ado::ColumnChange& column) { return column.before == column.after; }

  /// What the change set expects in the row beside what is there, but for stamps.
  ado::RowChange differences(sqlite3_changeset_iter* row) const {
    auto change = rowAt(row, catalog);
    const auto& table = *catalog.find(change.table);
    change.kind = ado::RowChange::Kind::Updated;
    std::erase_if(change.columns, [&](ado::ColumnChange& each) {
      const auto column = std::ranges::find(table.columns, each.name, &tsql::Column::name);
      sqlite3_value* present = nullptr;
      require(sqlite3changeset_conflict(row, static_cast<int>(column - table.columns.begin()), &present), "read");
      each.after = valueOf(present, column->type);
      return std::ranges::find(stamps, each.name) != stamps.end();
    });
    return change;
  }

  /// A row that is not there any more, or is there again.
  ado::RowChange lost(sqlite3_changeset_iter* row) const {
    auto change = rowAt(row, catalog);
    change.kind = ado::RowChange::Kind::Updated;
    for (auto& column : change.columns) column.after = column.before.isNothing() ? column.after : column.before;
    return change;
  }
};

class SessionTracker : public ado::ChangeTracker {
 public:
  SessionTracker(sqlite3* database, const SchemaCatalog& catalog) : database_(database), catalog_(catalog) {}

  void start(const std::vector<std::string_view>& tables) override {
    sqlite3_session* session = nullptr;
    require(sqlite3session_create(database_, "main", &session), "recorded");
    session_.reset(session);
    for (const auto table : tables) require(sqlite3session_attach(session, std::string(table).c_str()), "recorded");
  }

  ado::ChangeSet finish() override {
    if (!session_) return {};
    int size = 0;
    void* bytes = nullptr;
    const int outcome = sqlite3session_changeset(session_.get(), &size, &bytes);
    const Bytes owned(bytes);
    session_.reset();
    require(outcome, "recorded");
    return {toHex(bytes, size), countRows(bytes, size)};
  }

  void cancel() noexcept override { session_.reset(); }

  std::vector<ado::RowChange> read(const std::string& changes) override {
    auto bytes = fromHex(changes);
    sqlite3_changeset_iter* row = nullptr;
    require(sqlite3changeset_start(&row, static_cast<int>(bytes.size()), bytes.data()), "read");
    std::vector<ado::RowChange> rows;
    try {
      while (sqlite3changeset_next(row) == SQLITE_ROW) rows.push_back(rowAt(row, catalog_));
    } catch (...) {
      sqlite3changeset_finalize(row);
      throw;
    }
    require(sqlite3changeset_finalize(row), "read");
    return rows;
  }

  std::vector<ado::RowChange> takeBack(const std::string& changes,
                                       const std::vector<std::string_view>& stamps) override {
    auto bytes = fromHex(changes);
    int size = 0;
    void* inverse = nullptr;
    require(sqlite3changeset_invert(static_cast<int>(bytes.size()), bytes.data(), &size, &inverse), "taken back");
    const Bytes owned(inverse);
    Conflicts conflicts{catalog_, stamps, {}};
    run(database_, "SAVEPOINT bk_takeback");
    const int outcome = sqlite3changeset_apply(database_, size, inverse, nullptr, &Conflicts::onConflict, &conflicts);
    if (outcome != SQLITE_OK || !conflicts.rows.empty()) run(database_, "ROLLBACK TO bk_takeback");
    run(database_, "RELEASE bk_takeback");
    if (conflicts.failed) throw values::Errore("The recorded changes do not fit the tables");
    require(outcome, "taken back");
    return std::move(conflicts.rows);
  }

 private:
  sqlite3* database_;
  const SchemaCatalog& catalog_;
  std::unique_ptr<sqlite3_session, DeleteSession> session_;
};

}  // namespace

std::unique_ptr<ado::ChangeTracker> makeSessionTracker(sqlite3* database, const SchemaCatalog& catalog) {
  return std::make_unique<SessionTracker>(database, catalog);
}

}  // namespace sqlite
