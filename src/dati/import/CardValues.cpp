#include <algorithm>
#include <array>
#include <cstdint>
#include <deque>
#include <optional>
#include <utility>

#include "dati/CardWriter.h"
#include "dati/Cards.h"
#include "dati/import/CardCodes.h"
#include "dati/import/CsvModel.h"
#include "dati/import/Import.h"
#include "language/Language.h"
#include "values/Arithmetic.h"
#include "values/Conversion.h"

namespace bukorval::dati {
namespace {

using values::Variant;

enum : std::size_t { kPeriod, kKind, kAmount, kQuantity1, kQuantity2, kFirstColumn };
/// The columns that tell one card from another follow: those of the selected budget.
const CsvModel kFixed{
    "values",
    {{"period", CsvType::Integer, true, 2, ""},
     {"kind", CsvType::Integer, false, 2, "0 budget, 1 actuals, 2 orders, 2 + n forecast n; by default 0"},
     {"amount", CsvType::Amount, false, 0, ""},
     {"quantity1", CsvType::Quantity, false, 0, ""},
     {"quantity2", CsvType::Quantity, false, 0, ""}}};

constexpr std::array<std::pair<std::size_t, BdgTipoValore>, 3> kMeasures{
    std::pair{kAmount, bdgValoreImporto}, {kQuantity1, bdgValoreQta1}, {kQuantity2, bdgValoreQta2}};

/// Shorter names for the commonest columns.
struct Synonym {
  std::string_view name, column;
};
constexpr const char *kCard = "BU65_SCHEDA_BU07", *kCardKind = "BU65_INDCOSRIC_BU07", *kSite = "BU65_CODICE_CG31",
                     *kAccount = "BU65_CONTO_CG24";
constexpr std::array kSynonyms{Synonym{"card", kCard}, Synonym{"card_kind", kCardKind}, Synonym{"site", kSite},
                               Synonym{"account", kAccount}};

class CardValues : public FileImporter {
 public:
  void read(const std::string& file, ImportContext& import) override {
    auto& budget = import.budget();
    file_.emplace(import.open(file, makeModel(budget, *import.connection)));
    const auto periodicity = budget.GetPeriodicitaBudget(budget.TipoBudget, budget.SottoTipoBudget);
    const int periods = values::toInt32(values::nvl(budget.GetBdgNrPeriodi(periodicity), 0));
    const int lastKind = budget.GetNumeroForecast(budget.TipoBudget, budget.SottoTipoBudget) + bdgDettaglioOrdini;
    const CardCodes codes(*import.connection, import.company, columns_, {kCard, kAccount, kSite}, import.codes);
    file_->read(import.problems, [&](const CsvRow& row) {
      ++rows_;
      checkRange(row, kFixed, kPeriod, 1, periods, file, import.problems);
      checkRange(row, kFixed, kKind, 0, lastKind, file, import.problems);
      const std::vector<Variant> card(row.values.begin() + kFirstColumn, row.values.end());
      for (const auto& problem : codes.problemsOf(card)) import.problems.add(file, row.line, problem);
      checkCard(row.line, card, import);
    });
  }

  void write(ImportContext& import) override {
    CardWriter cards(import.budget(), *import.connection);
    Steps steps(import.options.progress, tr("Writing values"), static_cast<std::int64_t>(rows_));
    std::int64_t written = 0;
    file_->readAgain([&](const CsvRow& row) {
      steps.done(++written);
      const auto card = cards.findOrCreate(keyOf(row));
      const auto kind =
          row.values[kKind].isEmpty() ? BdgTipoDettaglio{bdgDettaglioBudget} : values::toInt32(row.values[kKind]);
      const int period = values::toInt32(row.values[kPeriod]);
      for (const auto& [field, measure] : kMeasures) {
        if (row.values[field].isEmpty()) continue;
        cards.write(card, kind, period, measure, row.values[field]);
        ++values_;
      }
    });
    newCards_ = cards.created();
  }

  std::string outcome() const override {
    return counted(values_, "value") + ", " + counted(static_cast<std::size_t>(newCards_), "new card");
  }

 private:
  CsvModel makeModel(CLSKORVAL& budget, ado::Connection& connection) {
    CsvModel model = kFixed;
    for (const auto& column : cardColumns(budget, connection)) {
      columns_.push_back(column.name);
      model.fields.push_back(
          {nameOf(column.name), column.number ? CsvType::Integer : CsvType::Text, false, column.width, ""});
    }
    return model;
  }

  std::string_view nameOf(const std::string& column) {
    for (const auto& synonym : kSynonyms)
      if (synonym.column == column) return synonym.name;
    return names_.emplace_back(column);
  }

  /// What every company has: accounts, sites and two kinds of cards.
  void checkCard(std::size_t line, const std::vector<Variant>& card, ImportContext& import) const {
    const auto given = [&](const std::string& column) -> Variant {
      const auto position = std::ranges::find(columns_, column);
      return position == columns_.end() ? Variant() : card[static_cast<std::size_t>(position - columns_.begin())];
    };
    const auto say = [&](const std::string& what, const Variant& code) {
      import.problems.add(file_->name(), line, tr("no {} {}", what, values::toPlainText(code)));
    };
    const auto chart = given("BU65_GRUPPO_CG10"), account = given(kAccount), site = given(kSite),
               kind = given(kCardKind);
    const bool ownChart = chart.isEmpty() || values::compare(chart, import.chart) == 0;
    if (!account.isEmpty() && ownChart && !import.hasAccount(account)) say("account", account);
    if (!site.isEmpty() && !import.hasSite(site)) say("site", site);
    if (!kind.isEmpty() && values::toInt64(kind) > 1) say("card kind", kind);
  }

  /// The columns of the card that the line fills.
  CardKey keyOf(const CsvRow& row) const {
    CardKey key;
    for (std::size_t i = 0; i < columns_.size(); ++i)
      if (!row.values[kFirstColumn + i].isEmpty()) key.emplace_back(columns_[i], row.values[kFirstColumn + i]);
    return key;
  }

  std::optional<CsvFile> file_;
  std::size_t rows_ = 0;
  std::vector<std::string> columns_;
  std::deque<std::string> names_;  ///< keeps the names that the model's fields look at
  std::size_t values_ = 0;
  int newCards_ = 0;
};

}  // namespace

FileKind valuesFile() {
  return {
      .name = kFixed.name,
      .columns = columnList(kFixed) +
                 ", and the columns of the selected budget (-t, -s, -y) that tell its cards apart, among them card, "
                 "card_kind, site, account; a card that is missing is made",
      .create = []() -> std::unique_ptr<FileImporter> { return std::make_unique<CardValues>(); },
      .needsBudget = true};
}

}  // namespace bukorval::dati
