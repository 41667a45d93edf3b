#pragma once

#include <memory>

#include "ado/connection/Connection.h"
#include "odbc/Handle.h"

namespace odbc {

/// Reads the rows of an executed statement into a record set that stands on its first row. Decimals are
/// exact; a date keeps its whole seconds. Throws values::Errore for a value that its column cannot mean.
ado::RecordsetPtr readRows(const Handle& statement, SQLSMALLINT columns);

/// Reads the rows of an executed statement one after the other, each in the place of the one before it. Many servers
/// answer one statement at a time: what is still to come can be kept when another is to run.
class RowStream {
 public:
  RowStream(const Handle& statement, SQLSMALLINT columns);
  ~RowStream();

  void visitAll(const ado::RowVisitor& visit);
  /// Takes in the rest of the rows, so that the statement has nothing more to say.
  void keepRest();

 private:
  struct Reader;
  std::unique_ptr<Reader> reader_;
  ado::RecordsetPtr rest_;
};

}  // namespace odbc
