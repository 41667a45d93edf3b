#include "dati/MovementWriter.h"

#include <string_view>
#include <utility>

namespace bukorval::dati {
namespace {

using Columns = std::vector<std::string_view>;

Columns registrationColumns(bool adjusting) {
  Columns columns{"CG41_DITTA_CG18",  "CG41_NUMREG",     "CG41_DATAREG", "CG41_ANNO_CG19", "CG41_PROGESER_CG19",
                  "CG41_CODICE_CG31", "CG41_INDTIPOMOV", "CG41_DATADOC", "CG41_DESCR",     "CG41_INDPROVREG"};
  if (adjusting) columns.push_back("CG41_FLGRETTIF");
  return columns;
}

const Columns kLineColumns{"CG42_DITTA_CG18",    "CG42_NUMREG_CG41", "CG42_NUMRIGACONT", "CG42_GRUPPO_CG10",
                           "CG42_CONTOPAR_CG24", "CG42_INDDAAV",     "CG42_IMPTOTALE",   "CG42_FLGCOMP",
                           "CG42_DATAINICOMP",   "CG42_DATAFINCOMP", "CG42_CODICE_CG31"};

}  // namespace

MovementWriter::MovementWriter(ado::Connection& connection, values::Variant company, values::Variant chart,
                               bool adjusting)
    : company_(std::move(company)),
      chart_(std::move(chart)),
      adjusting_(adjusting),
      registrations_(connection.bulkInsert("CG41_PRIMANOTA", registrationColumns(adjusting))),
      lines_(connection.bulkInsert("CG42_MOVCONT", kLineColumns)) {}

void MovementWriter::add(const Registration& r) {
  row_.assign({company_, r.number, r.date, r.year, r.progressive, r.site, r.kind, r.documentDate, r.description, 0});
  if (adjusting_) row_.emplace_back(r.adjusting ? 1 : 0);
  registrations_->add(row_);
}

void MovementWriter::add(const MovementLine& m) {
  row_.assign({company_, m.registration, m.line, chart_, m.account, m.credit ? 2 : 1, m.amount,
               m.competenceFrom.isNothing() ? 0 : 1, m.competenceFrom, m.competenceTo, m.site});
  lines_->add(row_);
}

void MovementWriter::finish() {
  registrations_->finish();
  lines_->finish();
}

}  // namespace bukorval::dati
