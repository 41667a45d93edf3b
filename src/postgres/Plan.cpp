#include "postgres/Plan.h"

#include <utility>
#include <vector>

#include "postgres/Handle.h"
#include "values/Errore.h"

namespace postgres {

Plan::Plan(PGconn* server, Translation translation, std::string name)
    : server_(server), translation_(std::move(translation)), name_(std::move(name)), reader_(translation_.columns) {
  using Kind = Translation::Kind;
  if (translation_.kind != Kind::Query && translation_.kind != Kind::Change) return;
  std::vector<Oid> types;
  for (const auto& parameter : translation_.parameters) types.push_back(parameter.type);
  const Result result(
      PQprepare(server_, name_.c_str(), translation_.sql.c_str(), static_cast<int>(types.size()), types.data()));
  if (!succeeded(result.get())) throw values::Errore(describeFailure(server_, result.get()));
  prepared_ = true;
}

Plan::~Plan() {
  // In a failed transaction the server refuses: the name then stays taken, but no later plan has it.
  if (prepared_ && PQstatus(server_) == CONNECTION_OK)
    const Result done(PQexec(server_, ("DEALLOCATE " + name_).c_str()));
}

}  // namespace postgres
