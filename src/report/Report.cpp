#include "report/Report.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "report/Details.h"
#include "report/Evaluation.h"
#include "report/Plan.h"

namespace bukorval::report {
namespace {

/// Puts the nodes of a cube into the rows of a result.
class Arrangement {
 public:
  Arrangement(const Plan& plan, const Query& query, const Cube& cube, const Evaluation& evaluation,
              std::vector<Descriptions> descriptions)
      : plan_(plan),
        query_(query),
        cube_(cube),
        evaluation_(evaluation),
        descriptions_(std::move(descriptions)),
        shown_(query.top > 0 ? static_cast<std::size_t>(query.top) : SIZE_MAX) {}

  std::vector<Row> rows(const Node& total) {
    rows_.push_back({{}, 0, evaluation_.cells(total)});
    addBelow(total, {});
    return std::move(rows_);
  }

 private:
  /// A row below another one, with what it shows.
  struct Below {
    const Node* node;
    Key key;
    std::vector<Cell> cells;
  };

  void addBelow(const Node& node, const std::vector<Key>& keys) {
    if (keys.size() == plan_.rows.size()) return;
    auto rows = below(node, descriptions_[keys.size()]);
    sort(rows);
    const auto shown = std::min(rows.size(), shown_);
    for (std::size_t i = 0; i < shown; ++i) {
      auto path = keys;
      path.push_back(std::move(rows[i].key));
      rows_.push_back({path, 0, std::move(rows[i].cells)});
      addBelow(*rows[i].node, path);
    }
    if (shown == rows.size()) return;
    auto others = cube_.empty();
    for (std::size_t i = shown; i < rows.size(); ++i) others += *rows[i].node;
    auto path = keys;
    path.push_back({values::Variant::Null(), ""});
    rows_.push_back({path, static_cast<int>(rows.size() - shown), evaluation_.cells(others)});
  }

  std::vector<Below> below(const Node& node, const Descriptions& descriptions) const {
    std::vector<Below> rows;
    for (const auto& [code, one] : node.below) {
      const auto described = descriptions.find(code);
      rows.push_back({&one, {code, described == descriptions.end() ? "" : described->second}, evaluation_.cells(one)});
    }
    return rows;
  }

  /// By the total of the value that sorts; rows that have none of it come last.
  void sort(std::vector<Below>& rows) const {
    if (plan_.sortBy == plan_.figures.size()) return;
    std::ranges::stable_sort(rows, [&](const Below& a, const Below& b) {
      const auto total = a.cells.size() - plan_.figures.size() + plan_.sortBy;
      const auto &left = a.cells[total].value, &right = b.cells[total].value;
      if (left.isNothing() || right.isNothing()) return !left.isNothing() && right.isNothing();
      const ByCode less;
      return query_.ascending ? less(left, right) : less(right, left);
    });
  }

  const Plan& plan_;
  const Query& query_;
  const Cube& cube_;
  const Evaluation& evaluation_;
  std::vector<Descriptions> descriptions_;
  std::size_t shown_;
  std::vector<Row> rows_;
};

}  // namespace

Result run(CLSKORVAL& budget, ado::Connection& connection, const Query& query) {
  const Plan plan(budget, query);
  const auto describe = [&](const CardAxis& axis) {
    return plan.axes.describe(connection, axis, plan.reading.conditions);
  };
  Result result;
  result.axes.assign(plan.rows.begin(), plan.rows.end());
  result.values.assign(plan.figures.begin(), plan.figures.end());

  const Details details(plan, budget.TipoBudget, connection.Execute(statement(plan.reading)));
  result.columns = details.columns(plan.columns ? describe(*plan.columns) : Descriptions());
  Cube cube(result.columns.size(), factCount(plan.forecasts), static_cast<std::size_t>(plan.forecasts));
  details.fill(cube);
  const auto& total = cube.total();

  std::vector<Descriptions> descriptions;
  for (const auto& axis : plan.rows) descriptions.push_back(describe(axis));
  const Evaluation evaluation(budget, cube, plan.figures, result.columns.size());
  result.rows = Arrangement(plan, query, cube, evaluation, std::move(descriptions)).rows(total);
  return result;
}

}  // namespace bukorval::report
