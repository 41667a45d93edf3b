#include "dati/MovementWriter.h"

#include <string_view>

namespace bukorval::dati {
namespace {

using Columns = std::vector<std::string_view>;

/// The values of a row that are the same in every row come first.
constexpr std::size_t kCommon = 2;

Columns registrationColumns(bool adjusting) {
  Columns columns{"CG41_DITTA_CG18",    "CG41_INDPROVREG",  "CG41_NUMREG",     "CG41_DATAREG", "CG41_ANNO_CG19",
                  "CG41_PROGESER_CG19", "CG41_CODICE_CG31", "CG41_INDTIPOMOV", "CG41_DATADOC", "CG41_DESCR"};
  if (adjusting) columns.push_back("CG41_FLGRETTIF");
  return columns;
}

const Columns kLineColumns{"CG42_DITTA_CG18",    "CG42_GRUPPO_CG10", "CG42_NUMREG_CG41", "CG42_NUMRIGACONT",
                           "CG42_CONTOPAR_CG24", "CG42_INDDAAV",     "CG42_IMPTOTALE",   "CG42_FLGCOMP",
                           "CG42_DATAINICOMP",   "CG42_DATAFINCOMP", "CG42_CODICE_CG31"};

template <class... Values>
void setOwn(std::vector<values::Variant>& row, const Values&... values) {
  row.resize(kCommon + sizeof...(values));
  auto cell = row.begin() + kCommon;
  ((*cell++ = values), ...);
}

}  // namespace

MovementWriter::MovementWriter(ado::Connection& connection, const values::Variant& company,
                               const values::Variant& chart, bool adjusting)
    : adjusting_(adjusting),
      registrations_(connection.bulkInsert("CG41_PRIMANOTA", registrationColumns(adjusting))),
      lines_(connection.bulkInsert("CG42_MOVCONT", kLineColumns)),
      registration_{company, 0},
      line_{company, chart} {}

void MovementWriter::add(const Registration& r) {
  setOwn(registration_, r.number, r.date, r.year, r.progressive, r.site, r.kind, r.documentDate, r.description);
  if (adjusting_) registration_.emplace_back(r.adjusting ? 1 : 0);
  registrations_->add(registration_);
}

void MovementWriter::add(const MovementLine& m) {
  setOwn(line_, m.registration, m.line, m.account, m.credit ? 2 : 1, m.amount, m.competenceFrom.isNothing() ? 0 : 1,
         m.competenceFrom, m.competenceTo, m.site);
  lines_->add(line_);
}

void MovementWriter::finish() {
  registrations_->finish();
  lines_->finish();
}

}  // namespace bukorval::dati
