#include <string>
#include <utility>
#include <vector>

#include "dati/Checks.h"
#include "dati/Failure.h"
#include "host/commands/Command.h"
#include "language/Language.h"
#include "sqlite/Upkeep.h"

namespace bukorval::host {
namespace {

dati::CheckResult checkFile(const std::string& connectionString) {
  dati::CheckResult result{"Damage in the file", 0, {}};
  if (!sqlite::isEmbedded(connectionString)) {
    result.example = "not offered by this engine";
    return result;
  }
  const auto damage = sqlite::findDamage(connectionString);
  result.findings = static_cast<std::int64_t>(damage.size());
  if (!damage.empty()) result.example = damage.front();
  return result;
}

void check(Environment& environment) {
  auto results = std::vector{checkFile(environment.connectionString())};
  // What a damaged file says of its rows is nothing to go by.
  if (results.front().findings == 0) {
    auto& connection = *environment.connection();
    for (auto& result : dati::checkRows(connection)) results.push_back(std::move(result));
    results.push_back(dati::checkGrids(environment.budget(), connection));
  }
  Table table{
      {{.name = "CONTROLLO", .title = "Check", .words = true}, {"TROVATI", "Findings", true}, {"ESEMPIO", "Example"}},
      {},
      {}};
  std::int64_t findings = 0;
  for (const auto& result : results) {
    findings += result.findings;
    table.rows.push_back({result.check, result.findings, result.example});
  }
  environment.show(table);
  if (findings > 0) throw dati::Refused(findings == 1 ? tr("1 finding") : tr("{} findings", findings));
}

}  // namespace

Command checkCommand() {
  return {"check",
          "Look whether the database is whole and its cards hold together",
          "  bukorval check -d demo.db\n"
          "Changes nothing. The exit code is 1 when something is found. Grids are those of the session's company (-c); "
          "of a "
          "file that is damaged nothing else is looked at.",
          {},
          check};
}

}  // namespace bukorval::host
