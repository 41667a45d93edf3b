#include "dati/import/Batches.h"

#include <algorithm>
#include <utility>

#include "dati/Failure.h"
#include "dati/OwnTables.h"
#include "dati/RowInsert.h"
#include "frame/TestoSql.h"
#include "frame/Transazione.h"
#include "language/Language.h"
#include "values/Conversion.h"

namespace bukorval::dati {

Batches::Batches(ado::Connection& connection, values::Variant company)
    : connection_(connection), company_(std::move(company)) {}

bool Batches::kept() const {
  if (!kept_) kept_ = hasTable(connection_, "BK02_REGIMPORTI");
  return *kept_;
}

void Batches::prepare() {
  prepareTables(connection_, "60_imports.sql", "BK02_REGIMPORTI");
  kept_ = true;
}

values::Variant Batches::identifierOf(const std::string& name) const {
  if (!kept()) return {};
  TestoSql sql;
  sql.riga(" SELECT BK01_ID ")
      .riga(" FROM   BK01_IMPORTI WITH (NOLOCK) ")
      .riga(" WHERE  BK01_DITTA_CG18 = ", numero(company_))
      .riga(" AND    BK01_NOME = N", testoDati(name));
  const auto rs = connection_.Execute(sql);
  return rs->Eof() ? values::Variant() : (*rs)["BK01_ID"].Value();
}

values::Variant Batches::require(const std::string& name) const {
  auto identifier = identifierOf(name);
  if (identifier.isEmpty()) throw Refused(tr("There is no import with the name {}", name));
  return identifier;
}

std::vector<Batch> Batches::all() const {
  std::vector<Batch> batches;
  if (!kept()) return batches;
  TestoSql sql;
  sql.riga(" SELECT BK01_ID, BK01_NOME, BK01_TIPO, BK01_RIGHE, BK01_DATA, COUNT(BK02_NUMREG_CG41) AS REGISTRAZIONI ")
      .riga(" FROM   BK01_IMPORTI WITH (NOLOCK) ")
      .riga("        LEFT OUTER JOIN BK02_REGIMPORTI WITH (NOLOCK) ")
      .riga("        ON BK02_ID_BK01 = BK01_ID ")
      .riga(" WHERE  BK01_DITTA_CG18 = ", numero(company_))
      .riga(" GROUP  BY BK01_ID, BK01_NOME, BK01_TIPO, BK01_RIGHE, BK01_DATA ")
      .riga(" ORDER  BY BK01_ID ");
  const auto rs = connection_.Execute(sql);
  const auto value = [&](const char* field) { return (*rs)[field].Value(); };
  for (; !rs->Eof(); rs->MoveNext())
    batches.push_back(
        {value("BK01_NOME"), value("BK01_TIPO"), value("BK01_RIGHE"), value("REGISTRAZIONI"), value("BK01_DATA")});
  return batches;
}

std::int64_t Batches::registrationsOf(const std::string& name) const {
  TestoSql sql;
  sql.riga(" SELECT COUNT(*) AS N ")
      .riga(" FROM   BK02_REGIMPORTI WITH (NOLOCK) ")
      .riga(" WHERE  BK02_ID_BK01 = ", numero(require(name)));
  return values::toInt64(connection_.Execute(sql)->Fields().Item(std::size_t{0}).Value());
}

void Batches::add(const std::string& name, const std::string& kind, std::size_t rows,
                  const std::vector<std::int64_t>& registrations) {
  const auto identifier = RowInsert("BK01_IMPORTI")
                              .set("BK01_DITTA_CG18", company_)
                              .set("BK01_NOME", name)
                              .set("BK01_TIPO", kind)
                              .set("BK01_RIGHE", static_cast<std::int64_t>(rows))
                              .set("BK01_DATA", values::Date::Now())
                              .runForIdentity(connection_);
  for (const auto registration : registrations)
    RowInsert("BK02_REGIMPORTI")
        .set("BK02_DITTA_CG18", company_)
        .set("BK02_NUMREG_CG41", registration)
        .set("BK02_ID_BK01", identifier)
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
  Transazione transaction(connection_);
  const auto identifier = numero(require(name));
  const auto registrations =
      "( SELECT BK02_NUMREG_CG41 FROM BK02_REGIMPORTI WHERE BK02_ID_BK01 = " + identifier + " ) ";
  TestoSql lines, heads, notes, batch;
  lines.riga(" DELETE FROM CG42_MOVCONT ")
      .riga(" WHERE  CG42_DITTA_CG18 = ", numero(company_))
      .riga(" AND    CG42_NUMREG_CG41 IN ", registrations);
  heads.riga(" DELETE FROM CG41_PRIMANOTA ")
      .riga(" WHERE  CG41_DITTA_CG18 = ", numero(company_))
      .riga(" AND    CG41_NUMREG IN ", registrations);
  notes.riga(" DELETE FROM BK02_REGIMPORTI ").riga(" WHERE  BK02_ID_BK01 = ", identifier);
  batch.riga(" DELETE FROM BK01_IMPORTI ").riga(" WHERE  BK01_ID = ", identifier);
  for (const auto* sql : {&lines, &heads, &notes, &batch}) connection_.Execute(*sql);
  transaction.conferma();
}

}  // namespace bukorval::dati
