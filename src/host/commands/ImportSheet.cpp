#include "host/commands/ImportSheet.h"

#include <iostream>
#include <optional>
#include <set>

#include "dati/Budgets.h"
#include "dati/Cards.h"
#include "dati/Failure.h"
#include "dati/Locks.h"
#include "dati/Years.h"
#include "dati/import/Import.h"
#include "host/commands/DetailKind.h"
#include "host/commands/ImportProblems.h"
#include "host/environment/Errors.h"
#include "host/environment/Selection.h"
#include "host/output/Titles.h"
#include "language/Language.h"
#include "sheet/SheetFile.h"
#include "values/Arithmetic.h"

namespace bukorval::host {
namespace {

/// The file says which budget it is of.
void selectBudget(Environment& environment, const sheet::SheetSelection& selection, const std::string& file) {
  for (const auto* property : {"TipoBudget", "SottoTipoBudget", "AnnoEsercizio", "ProgressivoEsercizio"})
    if (environment.options.properties.contains(property))
      throw UsageError(tr("--{} is not for --sheet, which names its budget itself", property));
  auto& budget = environment.budget();
  const auto& of = selection.cards.budget;
  if (values::compare(budget.CodiceDitta, of.ditta) != 0) throw dati::Refused(tr("{} is of another company", file));
  auto& connection = *environment.connection();
  dati::requireYear(connection, of.ditta, of.anno, of.progressivo);
  if (!dati::isBudgetDefined(connection, of.tipo, of.sottoTipo))
    throw dati::Refused(tr("{} is of budget {}, which is not defined here", file, dati::nameOf(of)));
  budget.TipoBudget = of.tipo;
  budget.SottoTipoBudget = of.sottoTipo;
  budget.AnnoEsercizio = of.anno;
  budget.ProgressivoEsercizio = of.progressivo;
  requireDetailKind(budget, selection.kind);
}

Table tableOf(const std::vector<sheet::SheetChange>& changes, const std::vector<sheet::KeyColumn>& keys, int decimals) {
  Table table{{{"BU65_ID", "Card", true},
               {"CHIAVE", "Key"},
               {"PERIODO", "Period", true},
               {"PRIMA", "Before", true, decimals},
               {"DOPO", "After", true, decimals}},
              {},
              {}};
  for (const auto& change : changes)
    table.rows.push_back(
        {change.row->card.id, sheet::keyText(change.row->card, keys), change.period + 1, change.before, change.after});
  return table;
}

void tellCount(const std::vector<sheet::SheetChange>& changes, bool written) {
  std::set<const sheet::SheetRow*> cards;
  for (const auto& change : changes) cards.insert(change.row);
  std::cout << tr(written ? "Changed {} of {}" : "Would change {} of {}", dati::counted(changes.size(), "value"),
                  dati::counted(cards.size(), "card"))
            << '\n';
}

}  // namespace

void importSheet(Environment& environment, const SheetToImport& sheet,
                 std::string (*remedies)(const dati::Problems& problems)) {
  dati::Problems problems;
  const auto file = sheet::readSheetFile(sheet.file, sheet.encoding, problems);
  refuseProblems(problems, remedies(problems));
  selectBudget(environment, file.selection, sheet.file);
  auto& budget = environment.budget();
  if (!sheet.dryRun) requireWritable(environment, file.selection.cards.budget);
  // What is compared is what is written over: both in one transaction.
  auto transaction = environment.transaction();
  if (!sheet.dryRun) requireWritable(environment, file.selection.cards.budget);
  auto now = sheet::readBudgetSheet(budget, transaction.connection(), file.selection);
  for (auto& key : now.keys) key.hidden = isTechnical(key.name);
  const auto changes = sheet::sheetChanges(file, now, problems);
  refuseProblems(problems);
  const auto& measure = *file.selection.measure;
  for (const auto& change : changes) {
    if (sheet.dryRun) break;
    dati::writeCardValue(budget, change.row->card.id, file.selection.kind, static_cast<int>(change.period) + 1,
                         measure.kind, change.after);
  }
  transaction.end(sheet.dryRun ? dati::RunMode::Trial : dati::RunMode::Write);
  environment.show(tableOf(changes, now.keys, measure.decimals));
  if (environment.format().forPeople) tellCount(changes, !sheet.dryRun);
}

}  // namespace bukorval::host
