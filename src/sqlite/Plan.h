#pragma once

#include <memory>
#include <vector>

#include "ado/recordset/Recordset.h"
#include "sqlite/Handle.h"
#include "sqlite/RowReader.h"
#include "sqlite/emitter/Translate.h"

namespace sqlite {

/// How much work a connection has done: what benches and tests look at to see that plans are shared.
struct Statistics {
  long prepared = 0;  ///< statements the engine compiled
  long executed = 0;  ///< texts executed
};

/// A translated text with its compiled statements and its temporary stages, which go when the plan goes.
class Plan {
 public:
  Plan(sqlite3* database, Statistics& statistics, Translation translation);
  ~Plan();
  Plan(const Plan&) = delete;
  Plan& operator=(const Plan&) = delete;

  Translation::Kind kind() const { return translation_.kind; }
  const std::vector<tsql::ResultColumn>& columns() const { return translation_.columns; }
  bool insertsIdentity() const { return translation_.insertsIdentity; }
  bool hasStages() const { return !setup_.empty(); }

  /// Makes the temporary stages; once, before the first run.
  void setUp(const std::vector<tsql::Literal>& literals);

  /// Runs every step with these literals; the stages are emptied again even when a step fails. Outside a
  /// transaction the steps of a staged plan see one state of the database. Gives the rows of a query, else null.
  ado::RecordsetPtr run(const std::vector<tsql::Literal>& literals);
  /// Visits the rows of a query without stages.
  void visit(const std::vector<tsql::Literal>& literals, const ado::RowVisitor& visit);

 private:
  struct Step {
    const StepText* text;
    Prepared handle;
  };
  using Steps = std::vector<Step>;
  static Steps stepsOf(const std::vector<StepText>& statements);
  sqlite3_stmt* bound(Step& step, const std::vector<tsql::Literal>& literals);
  void runAll(Steps& steps, const std::vector<tsql::Literal>& literals);
  /// The step that gives these columns alone, one after the other.
  Step& stepFor(const std::vector<bool>& wanted);
  ado::RecordsetPtr runMain(const std::vector<tsql::Literal>& literals);
  ado::RecordsetPtr runStaged(const std::vector<tsql::Literal>& literals);

  sqlite3* database_;
  Statistics& statistics_;
  Translation translation_;
  Steps setup_, prepare_, cleanup_, teardown_;
  Step main_;
  /// For visits that want some columns only: those, and the statement that computes no others.
  std::vector<bool> wanted_;
  StepText narrowText_;
  Step narrow_;
  RowReader reader_;
  bool setUp_ = false;
};

}  // namespace sqlite
