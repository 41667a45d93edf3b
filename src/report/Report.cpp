#include "report/Report.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <unordered_map>
#include <utility>

#include "dati/Failure.h"
#include "frame/BudgetAnno.h"
#include "report/Axes.h"
#include "report/Columns.h"
#include "report/Cube.h"
#include "report/Evaluation.h"
#include "report/Measures.h"
#include "report/Statement.h"
#include "values/Conversion.h"

namespace bukorval::report {
namespace {

using values::Variant;

constexpr int kCost = 0, kRevenue = 1;

/// The kind of cards that do not tell theirs, by the type of their budget; -1 for budgets that have both.
int kindOfType(BdgTipo type) {
  constexpr int kKinds[] = {kRevenue, kCost, kCost, kCost, -1, -1, kRevenue, kCost, -1, kCost};
  const auto position = static_cast<std::size_t>(type);
  return position < std::size(kKinds) ? kKinds[position] : -1;
}

/// One report while it is made.
class Making {
 public:
  Making(CLSKORVAL& budget, ado::Connection& connection, const Query& query)
      : budget_(budget), connection_(connection), query_(query), axes_(budget), measure_(findMeasure(query.measure)) {
    askAxes();
    askFigures();
    askDetails();
  }

  Result run() {
    const auto details = connection_.Execute(statement(reading_));
    makeColumns(*details);
    Cube cube(result_.columns.size(), factCount(forecasts_), static_cast<std::size_t>(forecasts_));
    fill(cube, *details);
    for (std::size_t i = 0; i < rowAxes_.size(); ++i)
      descriptions_.push_back(axes_.describe(connection_, rowAxes_[i], reading_.conditions));
    const Evaluation evaluation(budget_, cube, figures_, result_.columns.size());
    addRows(cube, evaluation, cube.total(), {}, 0);
    return std::move(result_);
  }

 private:
  void askAxes() {
    for (const auto& name : query_.rows) {
      if (std::ranges::count(query_.rows, name) > 1) throw dati::Refused("The axis " + name + " stands twice");
      rowAxes_.push_back(axes_.find(name));
      result_.axes.push_back(rowAxes_.back());
    }
    reading_.axes = rowAxes_;
    if (isPeriods(query_.columns)) {
      periods_ = periodColumns(budget_, query_.columns);
      return;
    }
    if (query_.columns != "site" && query_.columns != "kind")
      throw dati::Refused("There are no columns '" + query_.columns +
                          "'; there are month, quarter, half, year, period, site, kind");
    columnAxis_ = axes_.find(query_.columns);
    reading_.axes.push_back(*columnAxis_);
  }

  void askFigures() {
    forecasts_ = budget_.GetNumeroForecast(budget_.TipoBudget, budget_.SottoTipoBudget);
    dati::requireSuccess(budget_);
    std::set<int> forecasts;
    bool turns = false;
    for (const auto& name : query_.values) {
      figures_.push_back(findFigure(name, measure_, forecasts_));
      const auto& figure = figures_.back();
      result_.values.push_back(figure);
      if (figure.forecast > 0) forecasts.insert(figure.forecast);
      turns = turns || figure.formula == Formula::Turn;
      reading_.orders = reading_.orders || figure.formula == Formula::Available ||
                        std::ranges::find(figure.facts, kOrders) != figure.facts.end();
      reading_.budgetOrActual = reading_.budgetOrActual || needsBudgetOrActual(figure);
    }
    if (figures_.empty()) throw dati::Refused("A report shows at least one value");
    reading_.forecasts.assign(forecasts.begin(), forecasts.end());
    reading_.byPeriod = turns || periods_.columns.size() > 1;
    sortBy_ = figures_.size();
    if (!query_.sort.empty()) {
      const auto found = std::ranges::find(query_.values, query_.sort);
      if (found == query_.values.end())
        throw dati::Refused("Only a value that is shown sorts, not '" + query_.sort + "'");
      sortBy_ = static_cast<std::size_t>(found - query_.values.begin());
    } else if (query_.top > 0) {
      sortBy_ = 0;
    }
  }

  static bool needsBudgetOrActual(const Figure& figure) {
    if (figure.formula == Formula::Turn) return false;
    return figure.formula != Formula::Sum ||
           std::ranges::any_of(figure.facts, [](auto fact) { return fact < kOrders; });
  }

  void askDetails() {
    reading_.measure = measure_.column;
    reading_.conditions = condizioniSchede(budgetScelto(budget_));
    for (const auto& filter : query_.where) reading_.conditions += axes_.condition(filter);
    if (query_.to) reading_.periods = periodsUpTo(budget_, *query_.to);
  }

  /// The codes of a column axis are those that the cards have.
  void makeColumns(ado::Recordset& details) {
    result_.columns = periods_.columns;
    if (columnAxis_) {
      const auto &voice = details["VOCE"], &field = details["ASSE" + std::to_string(reading_.axes.size())];
      forEachRow(details, [&] {
        if (voice.Value().isNothing()) columnOf_.emplace(field.Value(), 0);
      });
      const auto descriptions = axes_.describe(connection_, *columnAxis_, reading_.conditions);
      for (auto& [code, position] : columnOf_) {
        position = result_.columns.size();
        const auto text = values::toPlainText(code);
        const auto described = descriptions.find(code);
        result_.columns.push_back(
            {(query_.columns == "site" ? "SITE" : "KIND") + text,
             described == descriptions.end() || described->second.empty() ? text : described->second});
      }
    }
    if (result_.columns.size() == 1 && !columnAxis_) result_.columns.clear();
    result_.columns.push_back({"", "Totale"});
  }

  /// Cards that share their codes and kind.
  struct Group {
    Node* node;
    int kind;
    std::size_t column;  ///< where the columns are no periods
  };
  using Groups = std::unordered_map<std::int64_t, Group>;

  static void forEachRow(ado::Recordset& rows, const std::function<void()>& visit) {
    if (rows.RecordCount() == 0) return;
    for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext()) visit();
  }

  Groups makeGroups(Cube& cube, ado::Recordset& details) const {
    std::vector<const ado::Field*> codes;
    for (std::size_t i = 0; i < reading_.axes.size(); ++i) codes.push_back(&details["ASSE" + std::to_string(i + 1)]);
    const auto &group = details["GRUPPO"], &voice = details["VOCE"], &kind = details["GENERE"];
    Groups groups;
    std::vector<Variant> keys(rowAxes_.size());
    forEachRow(details, [&] {
      if (!voice.Value().isNothing()) return;
      for (std::size_t i = 0; i < keys.size(); ++i) keys[i] = codes[i]->Value();
      const int cards = kind.Value().isNothing() ? kindOfType(budget_.TipoBudget) : values::toInt32(kind.Value());
      groups[values::toInt64(group.Value())] = {&cube.node(keys), cards,
                                                columnAxis_ ? columnOf_.at(codes.back()->Value()) : 0};
    });
    return groups;
  }

  void fill(Cube& cube, ado::Recordset& details) const {
    const auto groups = makeGroups(cube, details);
    const auto &group = details["GRUPPO"], &voice = details["VOCE"], &period = details["PERIODO"],
               &value = details["VALORE"], &actual = details["CONSUNTIVO"];
    forEachRow(details, [&] {
      if (voice.Value().isNothing() || (value.Value().isNothing() && actual.Value().isNothing())) return;
      const auto& [node, cards, column] = groups.at(values::toInt64(group.Value()));
      const int number = values::toInt32(period.Value());
      const Place place{*node, columnAxis_ ? column : columnOfPeriod(number), number};
      add(cube, place, values::toInt32(voice.Value()), sumOf(value.Value(), cards), sumOf(actual.Value(), cards));
    });
  }

  struct Place {
    Node& node;
    std::size_t column;
    int period;
  };
  static void add(Cube& cube, const Place& place, int detail, const Sum& own, const Sum& taken) {
    if (detail <= bdgDettaglioOrdini) {
      cube.add(place.node, place.column, static_cast<std::size_t>(detail), own);
      return;
    }
    const int forecast = detail - bdgDettaglioOrdini;
    cube.add(place.node, place.column, ownOf(forecast), own);
    cube.add(place.node, place.column, actualOf(forecast), taken);
    place.node.turns[static_cast<std::size_t>(forecast - 1)] +=
        {taken.any ? place.period : 0, own.any ? place.period : 0};
  }

  /// A detail of a period that the budget does not have is in no column but the total's.
  std::size_t columnOfPeriod(int period) const {
    const auto position = static_cast<std::size_t>(std::max(period, 0));
    return position < periods_.ofPeriods.size() ? periods_.ofPeriods[position] : result_.columns.size();
  }

  static Sum sumOf(const Variant& value, int kind) {
    if (value.isNothing()) return {};
    const auto number = values::toDecimal(value);
    return {number, kind == kRevenue ? number : kind == kCost ? -number : values::Decimal(), true};
  }

  /// A row below another one, with what it shows.
  struct Below {
    const Node* node;
    Key key;
    std::vector<Cell> cells;
  };

  void addRows(const Cube& cube, const Evaluation& evaluation, const Node& node, const std::vector<Key>& keys,
               int others) {
    if (keys.empty()) result_.rows.push_back({keys, others, evaluation.cells(node)});
    if (keys.size() == rowAxes_.size()) return;
    const auto& descriptions = descriptions_[keys.size()];
    std::vector<Below> rows;
    for (const auto& [code, below] : node.below) {
      const auto described = descriptions.find(code);
      rows.push_back(
          {&below, {code, described == descriptions.end() ? "" : described->second}, evaluation.cells(below)});
    }
    sort(rows);
    const auto shown = query_.top > 0 ? std::min(rows.size(), static_cast<std::size_t>(query_.top)) : rows.size();
    for (std::size_t i = 0; i < shown; ++i) {
      auto path = keys;
      path.push_back(std::move(rows[i].key));
      result_.rows.push_back({path, 0, std::move(rows[i].cells)});
      addRows(cube, evaluation, *rows[i].node, path, 0);
    }
    if (shown == rows.size()) return;
    auto rest = cube.empty();
    for (std::size_t i = shown; i < rows.size(); ++i) rest += *rows[i].node;
    auto path = keys;
    path.push_back({Variant::Null(), ""});
    result_.rows.push_back({path, static_cast<int>(rows.size() - shown), evaluation.cells(rest)});
  }

  /// By the total of the value that sorts; rows that have none of it come last.
  void sort(std::vector<Below>& rows) const {
    if (sortBy_ == figures_.size()) return;
    const auto position = (result_.columns.size() - 1) * figures_.size() + sortBy_;
    std::ranges::stable_sort(rows, [&](const Below& a, const Below& b) {
      const auto &left = a.cells[position].value, &right = b.cells[position].value;
      if (left.isNothing() || right.isNothing()) return !left.isNothing() && right.isNothing();
      const ByCode less;
      return query_.ascending ? less(left, right) : less(right, left);
    });
  }

  CLSKORVAL& budget_;
  ado::Connection& connection_;
  const Query& query_;
  Axes axes_;
  const Measure& measure_;
  int forecasts_ = 0;
  std::vector<CardAxis> rowAxes_;
  std::optional<CardAxis> columnAxis_;
  std::map<Variant, std::size_t, ByCode> columnOf_;
  PeriodColumns periods_;
  std::vector<Figure> figures_;
  std::size_t sortBy_ = 0;  ///< position of a figure; past the last for none
  Reading reading_;
  std::vector<Descriptions> descriptions_;
  Result result_;
};

}  // namespace

Result run(CLSKORVAL& budget, ado::Connection& connection, const Query& query) {
  return Making(budget, connection, query).run();
}

}  // namespace bukorval::report
