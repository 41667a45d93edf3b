#include "dati/import/FinanceImport.h"

#include <cstdint>
#include <map>
#include <set>
#include <tuple>
#include <utility>

#include "dati/Budgets.h"
#include "dati/CardWriter.h"
#include "dati/Ledger.h"
#include "dati/import/FinanceChart.h"
#include "dati/import/Import.h"
#include "frame/Transazione.h"
#include "language/Language.h"

namespace bukorval::dati {
namespace {

constexpr BdgTipo kType = bdgTipoSpeseGenerali;
constexpr const char* kSubtype = "01";
/// The account; site, card kind and code are every such budget's.
constexpr const char* kStructure = "CON";

/// What identifies a card of one year: site, department, account.
using Place = std::tuple<int, int, std::string>;
/// A card's values by detail kind and month.
using MonthlyValues = std::map<std::pair<BdgTipoDettaglio, int>, values::Decimal>;

int yearOf(const FinanceAmount& amount) { return amount.month.year(); }

class FinanceImport {
 public:
  FinanceImport(CLSKORVAL& budget, ado::Connection& connection, const suite::ActiveInterface& session,
                const FinanceFolder& finance, ImportProgress* progress)
      : budget_(budget),
        connection_(connection),
        ledger_(connection, session.CodiceDitta(), session.CodicePdcCoGe()),
        finance_(finance),
        progress_(progress) {}

  std::vector<std::string> write() {
    Transazione transaction(connection_);
    if (ledger_.hasAccounts() || ledger_.hasMovements() || isBudgetDefined(connection_, kType, kSubtype))
      throw CompanyNotEmpty();
    writeFrame();
    writeMovements();
    writeBudgets();
    transaction.conferma();
    return outcomes_;
  }

 private:
  /// Chart, sites, accounting years and the budget's definition.
  void writeFrame() {
    ledger_.setAccountStructure(kFinanceAccountStructure);
    std::set<int> years;
    for (const auto& amount : finance_.amounts) years.insert(yearOf(amount));
    for (const int year : years)
      if (!ledger_.hasYear(year)) ledger_.addYear(year);
    for (const auto& [code, description] : finance_.sites) ledger_.putSite(code, description);
    const auto chart = chartOf(finance_);
    for (const auto& [code, account] : chart)
      ledger_.putAccount(code, account.description, account.nature, account.total ? 1 : 2);
    BudgetDefinition definition{kType, kSubtype, "Budget per sede e reparto", kStructure};
    definition.perSite = 1;
    definition.forecasts = finance_.hasForecasts() ? 1 : 0;
    defineBudget(connection_, definition);
    outcomes_.push_back(counted(chart.size(), "account") + ", " + counted(finance_.sites.size(), "site") + ", " +
                        counted(years.size(), "accounting year"));
  }

  /// One registration for each site and month, a line for each amount; a negative one goes to the other side.
  void writeMovements() {
    auto next = ledger_.lastRegistration() + 1;
    std::map<std::pair<int, values::Date>, std::pair<std::int64_t, int>> registrations;
    std::size_t lines = 0;
    auto writer = ledger_.movementWriter();
    Steps steps(progress_, tr("Writing movements"), static_cast<std::int64_t>(finance_.amounts.size()));
    std::int64_t looked = 0;
    for (const auto& amount : finance_.amounts) {
      steps.done(++looked);
      if (amount.scenario != Scenario::Actual) continue;
      auto [position, isNew] = registrations.try_emplace({amount.site, amount.month}, next, 0);
      auto& [registration, line] = position->second;
      if (isNew) {
        ++next;
        writer.add(Registration{registration, amount.month, yearOf(amount), 1, amount.site, 0, amount.month,
                                "Movimenti del mese"});
      }
      const bool negative = amount.amount.isNegative();
      const bool credit = finance_.isRevenue(amount.account) != negative;
      writer.add(MovementLine{registration,
                              ++line,
                              accountCode(amount),
                              amount.site,
                              {},
                              {},
                              credit,
                              negative ? -amount.amount : amount.amount});
      ++lines;
    }
    writer.finish();
    outcomes_.push_back(tr("{} in {}", counted(lines, "movement"), counted(registrations.size(), "registration")));
  }

  /// Every year with a budget gets a card for each place that has an amount in that year.
  void writeBudgets() {
    std::map<int, std::map<Place, MonthlyValues>> years;
    std::size_t amounts = 0;
    for (const auto& amount : finance_.amounts) {
      if (amount.scenario == Scenario::Actual) continue;
      const auto kind = amount.scenario == Scenario::Budget ? bdgDettaglioBudget : bdgDettaglioOrdini + 1;
      auto& monthly = years[yearOf(amount)][{amount.site, amount.department, amount.account}];
      auto& value = monthly[{kind, amount.month.month()}];
      value = value + amount.amount;
      ++amounts;
    }
    for (const auto& amount : finance_.amounts) {
      const auto year = years.find(yearOf(amount));
      if (year != years.end()) year->second.try_emplace({amount.site, amount.department, amount.account});
    }
    for (const auto& [year, cards] : years) writeYear(year, cards);
    outcomes_.push_back(counted(amounts, "budget amount"));
  }

  void writeYear(int year, const std::map<Place, MonthlyValues>& cards) {
    budget_.TipoBudget = kType;
    budget_.SottoTipoBudget = kSubtype;
    budget_.AnnoEsercizio = year;
    budget_.ProgressivoEsercizio = 1;
    CardWriter writer(budget_, connection_);
    Steps steps(progress_, tr("Writing cards of {}", year), static_cast<std::int64_t>(cards.size()));
    std::int64_t written = 0;
    for (const auto& [place, monthly] : cards) {
      steps.done(++written);
      const auto card = writer.findOrCreate(keyOf(place));
      for (const auto& [where, value] : monthly) writer.write(card, where.first, where.second, bdgValoreImporto, value);
    }
    outcomes_.push_back(tr("{} of {}", counted(cards.size(), "card"), year));
  }

  CardKey keyOf(const Place& place) {
    const auto& [site, department, account] = place;
    const int cardKind = finance_.isRevenue(account) ? 1 : 0;
    const auto card = cardCode(account, department);
    ledger_.addCardCode(cardKind, card, accountDescription(finance_, account, department));
    return {{"BU65_CODICE_CG31", site},
            {"BU65_INDCOSRIC_BU07", cardKind},
            {"BU65_SCHEDA_BU07", card},
            {"BU65_CONTO_CG24", accountCode(account, department)}};
  }

  CLSKORVAL& budget_;
  ado::Connection& connection_;
  Ledger ledger_;
  const FinanceFolder& finance_;
  ImportProgress* progress_;
  std::vector<std::string> outcomes_;
};

}  // namespace

std::vector<std::string> importFinance(CLSKORVAL& budget, ado::Connection& connection,
                                       const suite::ActiveInterface& session, const FinanceFolder& finance,
                                       ImportProgress* progress) {
  return FinanceImport(budget, connection, session, finance, progress).write();
}

}  // namespace bukorval::dati
