#include "ado/connection/Connection.h"

#include <algorithm>
#include <cassert>
#include <map>
#include <mutex>
#include <utility>

#include "ado/Messages.h"
#include "ado/connection/ConnectionString.h"
#include "values/Errore.h"
#include "values/Text.h"

namespace ado {
namespace {

using values::Errore;

struct NameOrder {
  bool operator()(const std::string& a, const std::string& b) const { return values::compareText(a, b) < 0; }
};

struct Provider {
  std::function<ConnectionPtr()> create;
  std::vector<std::string> entries;  ///< that tell its connection strings when they name no provider

  bool knows(const std::string& connectionString) const {
    return std::ranges::any_of(entries,
                               [&](const auto& entry) { return !connectionEntry(connectionString, entry).empty(); });
  }
};

struct Registry {
  std::mutex guard;
  std::map<std::string, Provider, NameOrder> providers;
};

Registry& registry() {
  static Registry instance;
  return instance;
}

/// A connection of the provider that the string is meant for.
ConnectionPtr createFor(const std::string& connectionString) {
  auto& known = registry();
  const std::lock_guard lock(known.guard);
  const auto name = connectionEntry(connectionString, "Provider");
  const auto found =
      name.empty()
          ? std::ranges::find_if(known.providers, [&](const auto& each) { return each.second.knows(connectionString); })
          : known.providers.find(name);
  if (found != known.providers.end()) return found->second.create();
  if (name.empty()) throw Errore("The connection string names no Provider");
  std::string names;
  for (const auto& [each, provider] : known.providers) names += (names.empty() ? "" : ", ") + each;
  throw Errore("Provider " + name + " cannot be found; known providers: " + (names.empty() ? "none" : names));
}

/// Becomes a connection of the provider that its string names when it is opened. Clients make a connection before
/// they know the string, so the choice has to wait until then.
class AnyConnection : public Connection {
 public:
  void Open(std::string_view user, std::string_view password, std::int32_t options) override {
    if (real_ && real_->State() == adStateOpen) throw Errore(kObjectOpen);
    // Made anew each time: a closed connection may be given another string.
    real_ = createFor(ConnectionString);
    real_->ConnectionString = ConnectionString;
    opened(false).Open(user, password, options);
  }
  void Close() override {
    opened().Close();
    real_.reset();
  }
  ObjectStateEnum State() const override { return real_ ? real_->State() : adStateClosed; }
  RecordsetPtr Execute(std::string_view text) override { return opened().Execute(text); }
  void ForEachRow(std::string_view text, const RowVisitor& visit) override { opened().ForEachRow(text, visit); }
  std::unique_ptr<BulkInsert> bulkInsert(std::string_view table,
                                         const std::vector<std::string_view>& columns) override {
    return opened().bulkInsert(table, columns);
  }
  void BeginTrans() override { opened().BeginTrans(); }
  void CommitTrans() override { opened().CommitTrans(); }
  void RollbackTrans() override { opened().RollbackTrans(); }
  std::int64_t transaction() const override { return real_ ? real_->transaction() : 0; }
  ChangeTracker* changes() override { return real_ ? real_->changes() : nullptr; }
  std::string commitMark() override { return real_ ? real_->commitMark() : std::string(); }
  std::int64_t rowMark() override { return real_ ? real_->rowMark() : 0; }
  std::vector<std::int64_t> rowsSince(std::string_view table, std::string_view key, std::int64_t mark) override {
    return opened().rowsSince(table, key, mark);
  }
  ConnectionPtr reader() override { return real_ ? real_->reader() : nullptr; }

 private:
  /// The real connection with this one's settings, which a client may have changed since.
  Connection& opened(bool mustBeOpen = true) const {
    if (!real_ || (mustBeOpen && real_->State() == adStateClosed)) throw Errore(kObjectClosed);
    real_->CursorLocation = CursorLocation;
    real_->Mode = Mode;
    real_->IsolationLevel = IsolationLevel;
    return *real_;
  }

  ConnectionPtr real_;
};

}  // namespace

void Connection::ForEachRow(std::string_view text, const RowVisitor& visit) {
  const auto rows = Execute(text);
  const auto each = visit(*rows);
  rows->Fields().KeepLookedUp();
  for (; !rows->Eof(); rows->MoveNext()) each();
}

std::unique_ptr<BulkInsert> Connection::bulkInsert(std::string_view table,
                                                   const std::vector<std::string_view>& columns) {
  return insertByText(*this, table, columns);
}

std::vector<std::int64_t> Connection::rowsSince(std::string_view, std::string_view, std::int64_t) { return {}; }

void registerProvider(std::string_view name, std::function<ConnectionPtr()> create, std::vector<std::string> entries) {
  assert(!name.empty() && create);
  auto& known = registry();
  const std::lock_guard lock(known.guard);
  known.providers[std::string(name)] = {std::move(create), std::move(entries)};
}

ConnectionPtr createConnection() { return std::make_shared<AnyConnection>(); }

}  // namespace ado
