#pragma once

#include <libpq-fe.h>

#include <string>
#include <vector>

#include "postgres/RowReader.h"
#include "postgres/emitter/Translate.h"

namespace postgres {

/// A translated text that the server has prepared under a name, until it is forgotten.
class Plan {
 public:
  Plan(PGconn* server, Translation translation, std::string name);
  ~Plan();
  Plan(const Plan&) = delete;
  Plan& operator=(const Plan&) = delete;

  const Translation& translation() const { return translation_; }
  const std::string& name() const { return name_; }
  /// The server plans a join for the values of each run: without them it takes any range for a narrow one, and reads
  /// the tables in the wrong order.
  bool plannedEachTime() const { return joins_; }
  const Oid* types() const { return types_.data(); }
  RowReader& reader() { return reader_; }
  /// How often it has been run in this transaction.
  int runs(long transaction) const { return transaction == transaction_ ? runs_ : 0; }
  void countRun(long transaction) {
    runs_ = runs(transaction) + 1;
    transaction_ = transaction;
  }

 private:
  PGconn* server_;
  Translation translation_;
  std::string name_;
  RowReader reader_;
  std::vector<Oid> types_;  ///< of the parameters
  long transaction_ = 0;    ///< the last in which it was run
  int runs_ = 0;
  bool joins_ = false;
  bool prepared_ = false;
};

}  // namespace postgres
