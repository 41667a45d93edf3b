#include "sqlite/Plan.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

#include "sqlite/Binder.h"
#include "values/Errore.h"

namespace sqlite {

using namespace ado;

namespace {

using Literals = std::vector<tsql::Literal>;

/// A transaction of the provider's own around the steps of one text, when the caller has none open.
class StepTransaction {
 public:
  StepTransaction(sqlite3* database, bool writes) : database_(database), open_(sqlite3_get_autocommit(database) != 0) {
    if (open_) sqlite::run(database_, writes ? "BEGIN IMMEDIATE" : "BEGIN");
  }
  ~StepTransaction() {
    if (open_ && sqlite3_get_autocommit(database_) == 0) {
      sqlite3_exec(database_, "ROLLBACK", nullptr, nullptr, nullptr);
    }
  }
  StepTransaction(const StepTransaction&) = delete;
  StepTransaction& operator=(const StepTransaction&) = delete;

  void commit() {
    if (open_) sqlite::run(database_, "COMMIT");
    open_ = false;
  }

 private:
  sqlite3* database_;
  bool open_;
};

/// The engine takes the query apart and computes the columns that are wanted alone.
std::string narrowed(const std::string& query, const std::vector<bool>& wanted) {
  std::string names, columns;
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    const auto name = "c" + std::to_string(i);
    names.append(i == 0 ? "" : ", ").append(name);
    if (wanted[i]) columns.append(columns.empty() ? "" : ", ").append(name);
  }
  if (columns.empty()) columns = "NULL";
  return "WITH bk_all(" + names + ") AS (" + query + ") SELECT " + columns + " FROM bk_all";
}

}  // namespace

Plan::Plan(sqlite3* database, Statistics& statistics, Translation translation)
    : database_(database),
      statistics_(statistics),
      translation_(std::move(translation)),
      setup_(stepsOf(translation_.setup)),
      prepare_(stepsOf(translation_.prepare)),
      cleanup_(stepsOf(translation_.cleanup)),
      teardown_(stepsOf(translation_.teardown)),
      main_{&translation_.main, nullptr},
      narrow_{&narrowText_, nullptr},
      reader_(translation_.columns, translation_.order) {}

Plan::~Plan() {
  if (!setUp_) return;
  // Compiled statements that still name a stage would keep it from being dropped.
  for (auto* steps : {&prepare_, &cleanup_}) steps->clear();
  main_.handle.reset();
  narrow_.handle.reset();
  for (const auto& step : teardown_) sqlite3_exec(database_, step.text->sql.c_str(), nullptr, nullptr, nullptr);
}

Plan::Steps Plan::stepsOf(const std::vector<StepText>& statements) {
  Steps steps;
  steps.reserve(statements.size());
  for (const auto& statement : statements) steps.push_back({&statement, nullptr});
  return steps;
}

/// Compiled on first use, because a step may name what an earlier step creates.
sqlite3_stmt* Plan::bound(Step& step, const Literals& literals) {
  if (!step.handle) {
    step.handle = prepare(database_, step.text->sql, SQLITE_PREPARE_PERSISTENT);
    if (!step.handle) throw values::Errore("Command text was not set for the command object");
    ++statistics_.prepared;
  }
  bindLiterals(step.handle.get(), step.text->bindings, literals);
  return step.handle.get();
}

void Plan::runAll(Steps& steps, const Literals& literals) {
  for (auto& step : steps) stepToEnd(database_, bound(step, literals));
}

void Plan::setUp(const Literals& literals) {
  setUp_ = true;
  runAll(setup_, literals);
  for (auto& step : setup_) step.handle.reset();
}

RecordsetPtr Plan::run(const Literals& literals) {
  return prepare_.empty() && cleanup_.empty() ? runMain(literals) : runStaged(literals);
}

RecordsetPtr Plan::runMain(const Literals& literals) {
  auto* statement = bound(main_, literals);
  if (kind() == Translation::Kind::Query) return reader_.readAll(database_, statement);
  stepToEnd(database_, statement);
  return nullptr;
}

void Plan::visit(const Literals& literals, const RowVisitor& visit) {
  const auto [set, cells] = reader_.singleRow();
  const auto each = visit(*set);
  const auto& wanted = set->Fields().KeepLookedUp();
  reader_.readEach(database_, bound(stepFor(wanted), literals), wanted, cells, each);
}

Plan::Step& Plan::stepFor(const std::vector<bool>& wanted) {
  if (std::ranges::find(wanted, false) == wanted.end()) return main_;
  if (wanted != wanted_) {
    narrow_ = {&narrowText_, nullptr};
    narrowText_ = {narrowed(translation_.main.sql, wanted), translation_.main.bindings};
    wanted_ = wanted;
  }
  return narrow_;
}

RecordsetPtr Plan::runStaged(const Literals& literals) {
  RecordsetPtr rows;
  try {
    StepTransaction transaction(database_, kind() != Translation::Kind::Query);
    runAll(prepare_, literals);
    rows = runMain(literals);
    transaction.commit();
  } catch (...) {
    // The first failure is the one to report.
    try {
      runAll(cleanup_, literals);
    } catch (const values::Errore&) {
    }
    throw;
  }
  runAll(cleanup_, literals);
  return rows;
}

}  // namespace sqlite
