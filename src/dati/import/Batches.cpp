#include "dati/import/Batches.h"

#include <algorithm>
#include <utility>

#include "dati/Failure.h"
#include "dati/RowInsert.h"
#include "frame/TestoSql.h"
#include "frame/Transazione.h"
#include "schema/Schema.h"
#include "values/Conversion.h"
#include "values/Errore.h"

namespace bukorval::dati {

Batches::Batches(ado::Connection& connection, values::Variant company)
    : connection_(connection), company_(std::move(company)) {}

/// Engines list their tables each in its own way; all of them refuse to read one that is missing.
bool Batches::kept() const {
  if (!kept_) try {
      connection_.Execute(" SELECT TOP 1 1 FROM BK02_REGIMPORTI WITH (NOLOCK) ");
      kept_ = true;
    } catch (const values::Errore&) {
      kept_ = false;
    }
  return *kept_;
}

void Batches::prepare() {
  if (kept()) return;
  const auto tables = std::ranges::find(schema::files(), "60_imports.sql", &schema::File::name);
  Transazione transaction(connection_);
  schema::run(connection_, tables->text);
  transaction.conferma();
  kept_ = true;
}

std::string Batches::condition(const char* companyColumn, const char* nameColumn, const std::string& name) const {
  return std::string(companyColumn) + " = " + numero(company_) + " AND " + nameColumn + " = N" + testoDati(name);
}

bool Batches::has(const std::string& name) const {
  if (!kept()) return false;
  TestoSql sql;
  sql.riga(" SELECT TOP 1 1 ")
      .riga(" FROM   BK01_IMPORTI WITH (NOLOCK) ")
      .riga(" WHERE  ", condition("BK01_DITTA_CG18", "BK01_NOME", name));
  return connection_.Execute(sql)->RecordCount() > 0;
}

std::vector<Batch> Batches::all() const {
  std::vector<Batch> batches;
  if (!kept()) return batches;
  TestoSql sql;
  sql.riga(" SELECT BK01_NOME, BK01_TIPO, BK01_RIGHE, BK01_DATA, COUNT(BK02_NUMREG_CG41) AS REGISTRAZIONI ")
      .riga(" FROM   BK01_IMPORTI WITH (NOLOCK) ")
      .riga("        LEFT OUTER JOIN BK02_REGIMPORTI WITH (NOLOCK) ")
      .riga("        ON BK02_DITTA_CG18 = BK01_DITTA_CG18 AND BK02_NOME_BK01 = BK01_NOME ")
      .riga(" WHERE  BK01_DITTA_CG18 = ", numero(company_))
      .riga(" GROUP  BY BK01_NOME, BK01_TIPO, BK01_RIGHE, BK01_DATA ")
      .riga(" ORDER  BY BK01_DATA, BK01_NOME ");
  const auto rs = connection_.Execute(sql);
  const auto value = [&](const char* field) { return (*rs)[field].Value(); };
  for (; !rs->Eof(); rs->MoveNext())
    batches.push_back(
        {value("BK01_NOME"), value("BK01_TIPO"), value("BK01_RIGHE"), value("REGISTRAZIONI"), value("BK01_DATA")});
  return batches;
}

std::int64_t Batches::registrationsOf(const std::string& name) const {
  if (!has(name)) throw Refused("There is no import with the name " + name);
  TestoSql sql;
  sql.riga(" SELECT COUNT(*) AS N ")
      .riga(" FROM   BK02_REGIMPORTI WITH (NOLOCK) ")
      .riga(" WHERE  ", condition("BK02_DITTA_CG18", "BK02_NOME_BK01", name));
  return values::toInt64(connection_.Execute(sql)->Fields().Item(std::size_t{0}).Value());
}

void Batches::add(const std::string& name, const std::string& kind, std::size_t rows,
                  const std::vector<std::int64_t>& registrations) {
  RowInsert("BK01_IMPORTI")
      .set("BK01_DITTA_CG18", company_)
      .set("BK01_NOME", name)
      .set("BK01_TIPO", kind)
      .set("BK01_RIGHE", static_cast<std::int64_t>(rows))
      .set("BK01_DATA", values::Date::Now())
      .run(connection_);
  for (const auto registration : registrations)
    RowInsert("BK02_REGIMPORTI")
        .set("BK02_DITTA_CG18", company_)
        .set("BK02_NUMREG_CG41", registration)
        .set("BK02_NOME_BK01", name)
        .run(connection_);
}

void Batches::release(std::int64_t registration) {
  if (!kept()) return;
  TestoSql sql;
  sql.riga(" DELETE FROM BK02_REGIMPORTI ")
      .riga(" WHERE  BK02_DITTA_CG18 = ", numero(company_))
      .riga(" AND    BK02_NUMREG_CG41 = ", numero(registration));
  connection_.Execute(sql);
}

void Batches::remove(const std::string& name) {
  if (!has(name)) throw Refused("There is no import with the name " + name);
  const auto ofBatch = condition("BK02_DITTA_CG18", "BK02_NOME_BK01", name);
  struct Rows {
    const char *table, *company, *registration;
  };
  Transazione transaction(connection_);
  for (const auto& rows : {Rows{"CG42_MOVCONT", "CG42_DITTA_CG18", "CG42_NUMREG_CG41"},
                           Rows{"CG41_PRIMANOTA", "CG41_DITTA_CG18", "CG41_NUMREG"}}) {
    TestoSql sql;
    sql.riga(" DELETE FROM ", rows.table)
        .riga(" WHERE  ", rows.company, " = ", numero(company_))
        .riga(" AND    ", rows.registration, " IN ")
        .riga("        ( SELECT BK02_NUMREG_CG41 FROM BK02_REGIMPORTI WHERE ", ofBatch, " ) ");
    connection_.Execute(sql);
  }
  for (const auto& [table, own] :
       {std::pair{"BK02_REGIMPORTI", ofBatch}, {"BK01_IMPORTI", condition("BK01_DITTA_CG18", "BK01_NOME", name)}}) {
    TestoSql sql;
    sql.riga(" DELETE FROM ", table).riga(" WHERE  ", own);
    connection_.Execute(sql);
  }
  transaction.conferma();
}

}  // namespace bukorval::dati
