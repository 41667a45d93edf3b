#include "dati/OwnTables.h"

#include <algorithm>

#include "frame/TestoSql.h"
#include "frame/Transazione.h"
#include "schema/Schema.h"
#include "values/Errore.h"

namespace bukorval::dati {

bool hasTable(ado::Connection& connection, std::string_view table) {
  try {
    TestoSql sql;
    sql.riga(" SELECT TOP 1 1 FROM ", table, " WITH (NOLOCK) ");
    connection.Execute(sql);
    return true;
  } catch (const values::Errore&) {
    return false;
  }
}

void prepareTables(ado::Connection& connection, std::string_view file, std::string_view table) {
  if (hasTable(connection, table)) return;
  const auto found = std::ranges::find(schema::files(), file, &schema::File::name);
  Transazione transaction(connection);
  schema::run(connection, found->text);
  transaction.conferma();
}

}  // namespace bukorval::dati
