#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "dati/Failure.h"
#include "dati/WatchedRun.h"
#include "dati/Years.h"
#include "dati/import/Deviations.h"
#include "host/commands/Command.h"
#include "host/commands/ImportProblems.h"
#include "host/commands/RunReport.h"
#include "host/commands/UnlinkedBalances.h"
#include "host/environment/Arguments.h"
#include "host/environment/Errors.h"
#include "host/environment/Progress.h"
#include "host/environment/Selection.h"
#include "language/Language.h"
#include "values/Arithmetic.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval::host {
namespace {

using values::Variant;

struct BalancesOptions {
  std::string percentage, percentageFile;
  bool write = false, dryRun = false, strict = false;
};

/// The movements' year, dates and kinds when the command line does not say: all of the year before the budget's.
void completeInput(Environment& environment) {
  auto& budget = environment.budget();
  if (values::isBlank(budget.AnnoEsercizioMovimenti))
    budget.AnnoEsercizioMovimenti = values::toInt32(budget.AnnoEsercizio) - 1;
  if (values::isBlank(budget.ProgressivoEsercizioMovimenti)) budget.ProgressivoEsercizioMovimenti = 1;
  if (budget.TipoMovimenti.empty()) budget.TipoMovimenti = "1 = 1";
  if (values::isBlank(budget.CodicePdcCoGeDitta)) budget.CodicePdcCoGeDitta = environment.session().CodicePdcCoGe();
  if (!values::isBlank(budget.DaData) && !values::isBlank(budget.AData)) return;
  Variant begin, end;
  budget.DeterminaDateInizioFineEsercizio(budget.CodiceDitta, budget.AnnoEsercizioMovimenti,
                                          budget.ProgressivoEsercizioMovimenti, begin, end);
  environment.requireSuccess();
  if (values::isBlank(begin))
    dati::requireYear(*environment.connection(), budget.CodiceDitta, budget.AnnoEsercizioMovimenti,
                      budget.ProgressivoEsercizioMovimenti);
  if (values::isBlank(budget.DaData)) budget.DaData = begin;
  if (values::isBlank(budget.AData)) budget.AData = end;
}

/// One percentage that is given alone is meant for all balances.
void completeDeviation(Environment& environment, const BalancesOptions& options) {
  auto& budget = environment.budget();
  const auto& given = environment.options.properties;
  const bool percentage = given.contains("PercentualeScostamento");
  if (!given.contains("TipoScostamento"))
    budget.TipoScostamento = percentage ? bdgScostamentoFisso : bdgScostamentoNessuno;
  else if (percentage && budget.TipoScostamento != bdgScostamentoFisso)
    throw UsageError(
        tr("--PercentualeScostamento is the one percentage of --TipoScostamento 0: it has no effect with {}",
           budget.TipoScostamento));
  if (percentage && !(options.percentage.empty() && options.percentageFile.empty()))
    throw UsageError(tr("--PercentualeScostamento, --percent and --percent-file exclude each other"));
  if (percentage && !budget.PercentualeScostamento.isNumber())
    throw UsageError(tr("--PercentualeScostamento: '{}' is no number", given.at("PercentualeScostamento")));
}

void setDeviations(Environment& environment, const BalancesOptions& options) {
  completeDeviation(environment, options);
  auto& budget = environment.budget();
  if (!options.percentageFile.empty()) {
    dati::Problems problems;
    const auto deviations = dati::readDeviations(options.percentageFile, problems);
    refuseProblems(problems);
    budget.RstScostPerConto = deviations.byAccount;
    budget.RstScostPerPeriodo = deviations.byPeriod;
    budget.TipoScostamento = bdgScostamentoPerConto;
  } else if (!options.percentage.empty()) {
    budget.TipoScostamento = bdgScostamentoFisso;
    budget.PercentualeScostamento = parseArgument(options.percentage);
  }
}

/// What the cards of each account hold now, by account and period.
class AccountAmounts {
 public:
  AccountAmounts(const dati::DetailSnapshot& snapshot, const Variant& site) {
    for (const auto& [key, amount] : snapshot.amounts()) {
      const auto card = snapshot.cards().find(key.card);
      // Cards may come while others write.
      if (card == snapshot.cards().end() || amount.isNothing() || !isOfSite(card->second.site, site)) continue;
      auto& held = amounts_[{accountKey(card->second.account), key.period}];
      held = held.isNothing() ? amount : values::add(held, amount);
    }
  }
  /// Null when they hold nothing.
  Variant amount(const Variant& account, const Variant& period) const {
    const auto found = amounts_.find({accountKey(account), values::toInt32(period)});
    return found == amounts_.end() ? Variant::Null() : found->second;
  }

 private:
  /// Without a site every card counts.
  static bool isOfSite(const Variant& site, const Variant& wanted) {
    return values::isBlank(wanted) || (!values::isBlank(site) && values::compare(site, wanted) == 0);
  }
  static std::string accountKey(const Variant& account) { return values::foldText(values::toPlainText(account)); }
  std::map<std::pair<std::string, int>, Variant> amounts_;
};

/// The proposed rows beside what the cards hold, and what writing them would add.
Table proposalTable(ado::Recordset& rows, const AccountAmounts& held) {
  Table table{{{"CONTO", "Account"},
               {"DESCRIZIONE", "Description"},
               {"PERIODO", "Period", true},
               {"PRESENTE", "Present", true, 2, false, true},
               {"IMPORTO", "Proposed", true, 2, false, true},
               {"DIFFERENZA", "Difference", true, 2, false, true},
               {"BUDGETPRESENTE", "BUDGETPRESENTE", true, 0, false, false, true},
               {"SOVRASCRIVI", "Overwrite", true}},
              {},
              {}};
  for (; !rows.Eof(); rows.MoveNext()) {
    const auto& amount = rows["IMPORTO"].Value();
    const auto present = held.amount(rows["CONTO"].Value(), rows["PERIODO"].Value());
    table.rows.push_back({rows["CONTO"].Value(), rows["DESCRIZIONE"].Value(), rows["PERIODO"].Value(), present, amount,
                          values::subtract(amount, values::nvl(present, 0)), rows["BUDGETPRESENTE"].Value(),
                          rows["SOVRASCRIVI"].Value()});
  }
  if (table.rows.size() > 1) table.addTotals();
  return table;
}

void overwriteAll(ado::Recordset& rows) {
  for (; !rows.Eof(); rows.MoveNext()) {
    rows["SOVRASCRIVI"].Value(1);
    rows.Update();
  }
  if (rows.RecordCount() > 0) rows.MoveFirst();
}

void tellMissing(const Environment& environment, const ado::RecordsetPtr& missing) {
  if (!missing || missing->RecordCount() == 0) return;
  environment.tell(tr("{} accounts have no card and the budget's structure allows none; they were not written:",
                      missing->RecordCount()));
  for (missing->MoveFirst(); !missing->Eof(); missing->MoveNext())
    environment.tell("  " + values::toPlainText((*missing)["CONTO"].Value()) + "  " +
                     values::toPlainText((*missing)["DESCRIZIONE"].Value()));
}

Table writtenTable(ado::Recordset& rows, const dati::WatchedRun& run) {
  const auto proposed = rows.RecordCount();
  rows.Filter("SOVRASCRIVI = 0");
  const auto kept = rows.RecordCount();
  rows.Filter("");
  return {{{"PROPOSTE", "Rows proposed", true},
           {"CONSERVATE", "Present and kept", true},
           {"CAMBIATI", "Amounts changed", true},
           {"NUOVE", "New cards", true}},
          {{proposed, kept, run.changes().size(), run.newCards()}},
          {}};
}

/// A table of the run; beside it, where balances go through reclassification links, those without one.
void showWithUnlinked(Environment& environment, const char* name, const Table& table) {
  auto& budget = environment.budget();
  if (!budget.RstSaldiSenzaCollegamento) return environment.show(table);
  environment.show({{}, {{name, table}, {"Without a link", unlinkedTable(budget)}}});
}

/// Writes the proposed rows, or only shows what that changes.
void write(Environment& environment, dati::Transaction& transaction, const dati::DetailScope& scope, bool dryRun) {
  auto& budget = environment.budget();
  dati::WatchedRun run(budget, transaction, scope);
  run(&CLSKORVAL::BdgElaEco_ScriviBudget_DaRstSaldiElaEco);
  transaction.end(dryRun ? dati::RunMode::Trial : dati::RunMode::Write);
  showWithUnlinked(environment, "Amounts", dryRun ? tableOf(run.changes()) : writtenTable(*budget.RstSaldiElaEco, run));
  tellMissing(environment, budget.RstContiNonPresentiInStruttura);
}

void elaborateBalances(Environment& environment, const BalancesOptions& options) {
  requireBudget(environment);
  auto& budget = environment.budget();
  // A proposal that is only looked at keeps nobody from writing.
  std::optional<dati::Transaction> transaction;
  if (options.write || options.dryRun) transaction.emplace(budget, environment.connection(), environment.author());
  if (options.write) requireWritable(environment, budgetScelto(budget));
  completeInput(environment);
  setDeviations(environment, options);
  budget.ProponiBudgetMensili = true;
  const Progress progress(environment);
  budget.BdgElaEco_PopolaRstSaldiElaEco();
  environment.requireSuccess();
  auto& rows = *budget.RstSaldiElaEco;
  if (rows.RecordCount() == 0) environment.tell(tr("There are no balances in the range"));
  if (budget.IsSovrascriviEsistenti) overwriteAll(rows);
  const dati::DetailScope scope{budgetScelto(budget), budget.TipoDettaglioDestinazione,
                                budget.GetTipoPdC(budget.TipoBudget, budget.SottoTipoBudget)};
  const bool refused = options.strict && !unlinkedTable(budget).rows.empty();
  if (transaction) {
    write(environment, *transaction, scope, options.dryRun || refused);
  } else {
    const dati::DetailSnapshot held(*environment.connection(), scope);
    showWithUnlinked(environment, "Proposal", proposalTable(rows, AccountAmounts(held, budget.CodiceSede)));
  }
  if (refused)
    throw dati::Refused(tr("Not all balances have a reclassification link: with --strict nothing was written"));
}

}  // namespace

Command elaborateBalancesCommand() {
  const auto options = std::make_shared<BalancesOptions>();
  return {"elaborate-balances",
          "Propose a budget from accounting balances, and write it",
          "  bukorval elaborate-balances -d demo.db -t 5 -s 01 -y 2026 --percent 5\n"
          "  bukorval elaborate-balances -d demo.db -t 5 -s 01 -y 2026 --percent-file deviations.csv --write\n"
          "Shows the proposed rows beside what the cards hold now. Takes the year before the budget's unless options\n"
          "say otherwise. Rows whose card already holds an amount have SOVRASCRIVI 0 and are not written, unless\n"
          "--IsSovrascriviEsistenti. A budget by months gets one row a month.\n"
          "Where balances go through reclassification links, those without one are listed with their total.",
          {{"--percent", "one deviation for all balances, like --PercentualeScostamento", &options->percentage},
           {.flags = "--percent-file",
            .help = "CSV with " + dati::deviationColumns(),
            .target = &options->percentageFile,
            .excludes = "--percent"},
           {"--write", "write the proposed rows into the budget, in one transaction", &options->write},
           {"--strict", "write nothing and leave with exit code 1 when a balance has no reclassification link",
            &options->strict},
           {"--dry-run", "show the amounts that --write would change, and write nothing", &options->dryRun}},
          [options](Environment& environment) { elaborateBalances(environment, *options); },
          Writes::Cards};
}

}  // namespace bukorval::host
