#include "ado/connection/Connection.h"

#include <map>
#include <mutex>
#include <utility>

#include "ado/Messages.h"
#include "values/Errore.h"
#include "values/Text.h"

namespace ado {
namespace {

using values::Errore;

/// What a string that names a driver or data source, but no provider, is meant for.
constexpr const char* kDriverProvider = "ODBC";

struct NameOrder {
  bool operator()(const std::string& a, const std::string& b) const { return values::compareText(a, b) < 0; }
};

struct Registry {
  std::mutex guard;
  std::map<std::string, std::function<ConnectionPtr()>, NameOrder> providers;
};

Registry& registry() {
  static Registry instance;
  return instance;
}

std::string providerName(const std::string& connectionString) {
  auto name = connectionEntry(connectionString, "Provider");
  if (!name.empty()) return name;
  for (const char* entry : {"Driver", "DSN"})
    if (!connectionEntry(connectionString, entry).empty()) return kDriverProvider;
  throw Errore("The connection string names no Provider");
}

ConnectionPtr createProvider(const std::string& name) {
  auto& known = registry();
  const std::lock_guard lock(known.guard);
  const auto found = known.providers.find(name);
  if (found != known.providers.end()) return found->second();
  std::string names;
  for (const auto& [each, create] : known.providers) names += (names.empty() ? "" : ", ") + each;
  throw Errore("Provider " + name + " cannot be found; known providers: " + (names.empty() ? "none" : names));
}

/// Becomes a connection of the provider that its string names when it is opened. Clients make a connection before
/// they know the string, so the choice has to wait until then.
class AnyConnection : public Connection {
 public:
  void Open(std::string_view user, std::string_view password, std::int32_t options) override {
    if (real_ && real_->State() == adStateOpen) throw Errore(kObjectOpen);
    // Made anew each time: a closed connection may be given another string.
    real_ = createProvider(providerName(ConnectionString));
    real_->ConnectionString = ConnectionString;
    opened(false).Open(user, password, options);
  }
  void Close() override {
    opened().Close();
    real_.reset();
  }
  ObjectStateEnum State() const override { return real_ ? real_->State() : adStateClosed; }
  RecordsetPtr Execute(std::string_view text) override { return opened().Execute(text); }
  void BeginTrans() override { opened().BeginTrans(); }
  void CommitTrans() override { opened().CommitTrans(); }
  void RollbackTrans() override { opened().RollbackTrans(); }

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

void registerProvider(std::string_view name, std::function<ConnectionPtr()> create) {
  auto& known = registry();
  const std::lock_guard lock(known.guard);
  known.providers[std::string(name)] = std::move(create);
}

ConnectionPtr createConnection() { return std::make_shared<AnyConnection>(); }

}  // namespace ado
