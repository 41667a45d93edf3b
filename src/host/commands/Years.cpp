#include "dati/Years.h"

#include <memory>
#include <string>

#include "dati/Failure.h"
#include "frame/Transazione.h"
#include "host/commands/Command.h"
#include "host/commands/Lists.h"
#include "host/environment/Arguments.h"
#include "host/environment/Errors.h"
#include "language/Language.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

using values::Variant;

struct YearsOptions {
  std::string action = "list", from;
  int year = 0, progressive = 0, months = 12;
};

Variant parseFrom(const std::string& text) {
  if (text.empty()) return {};
  const auto date = values::Date::TryParse(text);
  if (!date) throw UsageError(tr("--from is a date, 2025-07-01 or 01/07/2025, not {}", text));
  return *date;
}

void setClosed(Environment& environment, const YearsOptions& options, bool closed) {
  auto& connection = *environment.connection();
  const auto company = environment.session().CodiceDitta();
  const Variant progressive = options.progressive == 0 ? Variant() : Variant(options.progressive);
  dati::requireYear(connection, company, options.year, progressive);
  dati::setYearClosed(connection, company, *dati::findYear(connection, company, options.year, progressive), closed);
}

void years(Environment& environment, const YearsOptions& options) {
  if (options.action != "list") {
    if (options.year == 0) throw UsageError(tr("years {} needs a year", options.action));
    Transazione transaction(*environment.connection());
    if (options.action == "add")
      dati::addAccountingYear(*environment.connection(), environment.session().CodiceDitta(), options.year,
                              parseFrom(options.from), options.months);
    else
      setClosed(environment, options, options.action == "close");
    transaction.conferma();
    environment.noteWritten();
  }
  environment.show(yearsTable(environment));
}

}  // namespace

Table yearsTable(Environment& environment) {
  Table table{{{"ANNO", "Year", true},
               {"PROGRESSIVO", "Progressive", true},
               {"DATAINIZIO", "From"},
               {"DATAFINE", "To"},
               {.name = "STATO", .title = "State", .words = true}},
              {},
              {}};
  for (const auto& year : dati::accountingYears(*environment.connection(), environment.session().CodiceDitta()))
    table.rows.push_back({year.year, year.progressive, year.begin, year.end, year.closed ? "closed" : "open"});
  return table;
}

Command yearsCommand() {
  const auto options = std::make_shared<YearsOptions>();
  return {
      "years",
      "List, add, close and reopen the accounting years",
      "  bukorval years -d demo.db\n"
      "  bukorval years add 2027 -d demo.db                               after 2026, twelve months\n"
      "  bukorval years add 2026 --from 2026-01-01 --months 6 -d acme.db\n"
      "  bukorval years close 2024 -d demo.db\n"
      "Budgets are kept for accounting years: one must be there before its first card. Nothing is written into a\n"
      "closed year, except with --force.",
      {{.flags = "ACTION",
        .help = "list, add, close or reopen",
        .target = &options->action,
        .showDefault = true,
        .oneOf = {"list", "add", "close", "reopen"}},
       {.flags = "YEAR", .help = "number of the year", .target = &options->year, .range = {{1900, 2999}}},
       {"--from", "first day of a year that is added", &options->from},
       {.flags = "--months", .help = "its length", .target = &options->months, .showDefault = true, .range = {{1, 24}}},
       {.flags = "--progressive",
        .help = "which one to close or reopen, where a number has several",
        .target = &options->progressive,
        .range = {{1, 99}}}},
      [options](Environment& environment) { years(environment, *options); }};
}

}  // namespace bukorval::host
