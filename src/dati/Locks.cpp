#include "dati/Locks.h"

#include "dati/Failure.h"
#include "dati/OwnTables.h"
#include "dati/RowInsert.h"
#include "frame/TestoSql.h"
#include "frame/Transazione.h"
#include "language/Language.h"
#include "values/Arithmetic.h"
#include "values/Conversion.h"

namespace bukorval::dati {
namespace {

using values::Variant;

bool same(const BudgetAnno& a, const BudgetAnno& b) {
  const auto progressive = [](const Variant& value) { return values::isBlank(value) ? Variant(1) : value; };
  return a.tipo == b.tipo && values::toPlainText(a.sottoTipo) == values::toPlainText(b.sottoTipo) &&
         values::compare(a.anno, b.anno) == 0 &&
         values::compare(progressive(a.progressivo), progressive(b.progressivo)) == 0;
}

std::optional<BudgetLock> findLock(ado::Connection& connection, const BudgetAnno& budget) {
  for (const auto& lock : budgetLocks(connection, budget.ditta))
    if (same(lock.budget, budget)) return lock;
  return std::nullopt;
}

}  // namespace

std::string nameOf(const BudgetAnno& budget) {
  return std::to_string(budget.tipo) + "/" + values::toPlainText(budget.sottoTipo) + "@" +
         values::toPlainText(budget.anno);
}

std::vector<BudgetLock> budgetLocks(ado::Connection& connection, const Variant& company) {
  std::vector<BudgetLock> locks;
  if (!hasTable(connection, "BK05_BLOCCHI")) return locks;
  TestoSql sql;
  sql.riga(" SELECT BK05_INDTIPO_BU01, BK05_SOTTOTIPO_BU01, BK05_ANNO, BK05_PROGESER, ")
      .riga("        BK05_DATA, BK05_UTENTE, BK05_MOTIVO ")
      .riga(" FROM   BK05_BLOCCHI WITH (NOLOCK) ")
      .riga(" WHERE  BK05_DITTA_CG18 = ", numero(company))
      .riga(" ORDER BY BK05_INDTIPO_BU01, BK05_SOTTOTIPO_BU01, BK05_ANNO, BK05_PROGESER ");
  const auto rs = connection.Execute(sql);
  const auto value = [&](const char* field) { return (*rs)[field].Value(); };
  for (; !rs->Eof(); rs->MoveNext())
    locks.push_back({{company, values::toInt32(value("BK05_INDTIPO_BU01")), value("BK05_SOTTOTIPO_BU01"),
                      value("BK05_ANNO"), value("BK05_PROGESER")},
                     value("BK05_DATA"),
                     value("BK05_UTENTE"),
                     value("BK05_MOTIVO")});
  return locks;
}

void requireUnlocked(ado::Connection& connection, const BudgetAnno& budget) {
  const auto lock = findLock(connection, budget);
  if (!lock) return;
  const auto reason = values::toPlainText(lock->reason);
  throw Refused(tr("Budget {} is locked by {} since {}{}; `bukorval unlock {}` opens it", nameOf(budget),
                   values::toPlainText(lock->user), values::toPlainText(lock->when),
                   (reason.empty() ? "" : " (" + reason + ")"), nameOf(budget)));
}

void lockBudget(ado::Connection& connection, const BudgetAnno& budget, const std::string& user,
                const std::string& reason) {
  prepareTables(connection, "62_locks.sql", "BK05_BLOCCHI");
  Transazione transaction(connection);
  requireUnlocked(connection, budget);
  RowInsert("BK05_BLOCCHI")
      .set("BK05_DITTA_CG18", budget.ditta)
      .set("BK05_INDTIPO_BU01", budget.tipo)
      .set("BK05_SOTTOTIPO_BU01", budget.sottoTipo)
      .set("BK05_ANNO", budget.anno)
      .set("BK05_PROGESER", budget.progressivo)
      .set("BK05_DATA", values::Date::Now())
      .set("BK05_UTENTE", user)
      .set("BK05_MOTIVO", reason.empty() ? Variant::Null() : Variant(reason))
      .run(connection);
  transaction.conferma();
}

void unlockBudget(ado::Connection& connection, const BudgetAnno& budget) {
  if (!findLock(connection, budget)) throw Refused(tr("Budget {} is not locked", nameOf(budget)));
  TestoSql sql;
  sql.riga(" DELETE FROM BK05_BLOCCHI ")
      .riga(" WHERE  BK05_DITTA_CG18 = ", numero(budget.ditta))
      .riga(" AND    BK05_INDTIPO_BU01 = ", numero(budget.tipo))
      .riga(" AND    BK05_SOTTOTIPO_BU01 = ", testoDati(budget.sottoTipo))
      .riga(" AND    BK05_ANNO = ", numero(budget.anno))
      .riga(" AND    BK05_PROGESER = ", numero(budget.progressivo));
  connection.Execute(sql);
}

}  // namespace bukorval::dati
