#include "report/Report.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/commands/Command.h"
#include "host/commands/ReportPictures.h"
#include "host/environment/Arguments.h"
#include "host/environment/Errors.h"
#include "host/environment/Selection.h"
#include "host/output/Titles.h"
#include "language/Language.h"
#include "report/Lines.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

using values::Variant;

/// What cards without a code have instead of it, for people.
constexpr std::string_view kNone = "(none)";

/// The options as they were typed.
struct ReportOptions {
  std::string rows, columns = "year", values = "budget,actual,delta,delta%", measure = "amount", to, sort, page;
  std::vector<std::string> where;
  int top = 0;
  bool plot = false;
};

/// "site=1,2".
report::Filter filterOf(const std::string& text) {
  const auto equal = text.find('=');
  if (equal == std::string::npos || equal == 0)
    throw UsageError(tr("A condition is AXIS=CODE,CODE with * for any ending, not {}", text));
  auto codes = split(std::string_view(text).substr(equal + 1));
  if (codes.empty()) codes.emplace_back();
  return {text.substr(0, equal), std::move(codes)};
}

/// "2025-09".
values::Date monthOf(const std::string& text) {
  const auto day = text.size() == 7 ? values::Date::TryParse(text + "-01") : std::nullopt;
  if (!day) throw UsageError(tr("A month is given as 2025-09, not {}", text));
  return *day;
}

report::Query queryOf(const ReportOptions& options) {
  report::Query query;
  query.rows = split(options.rows);
  query.columns = options.columns;
  query.values = split(options.values);
  query.measure = options.measure;
  if (!options.to.empty()) query.to = monthOf(options.to);
  for (const auto& text : options.where) query.where.push_back(filterOf(text));
  const auto order = options.sort.find(':');
  query.sort = options.sort.substr(0, order);
  if (order != std::string::npos) {
    const auto direction = std::string_view(options.sort).substr(order + 1);
    query.ascending = direction == "asc";
    if (!query.ascending && direction != "desc") throw UsageError(tr("--sort takes VALUE, VALUE:desc or VALUE:asc"));
  }
  query.top = options.top;
  return query;
}

std::string nameOf(const report::Key& key) {
  const auto code = values::isBlank(key.code) ? tr(kNone) : values::toPlainText(key.code);
  if (key.description.empty()) return code;
  return code + " - " + key.description;
}

/// A result as a table. For people a group's subtotal follows its rows; programs get the innermost rows alone, so that
/// nothing counts twice.
class ReportTable {
 public:
  ReportTable(const report::Result& result, bool forPeople) : result_(result), forPeople_(forPeople) {
    addColumns();
    report::forEachLine(
        result, [&](const auto& row) { addRow(row); },
        [&](const auto& row) {
          if (forPeople_) addSubtotal(row);
        });
    addTotal(result.rows.front());
  }

  Table take() { return std::move(table_); }

 private:
  void addColumns() {
    for (const auto& axis : result_.axes) {
      table_.columns.push_back({axis.field, title(axis.field)});
      if (!forPeople_) table_.columns.push_back({axis.field + "_DESCR", title(axis.field + "_DESCR")});
    }
    keyColumns_ = table_.columns.size();
    // Where one row is all there is, it needs a name.
    if (keyColumns_ == 0 && forPeople_) {
      table_.columns.push_back({"RIGA", ""});
      keyColumns_ = 1;
    }
    for (const auto& column : result_.columns) {
      for (const auto& value : result_.values) {
        Column shown{column.name + (column.name.empty() ? "" : "_") + value.field, title(value.field)};
        shown.decimals = value.decimals;
        shown.number = value.decimals > 0;
        shown.percentage = value.ratio;
        if (result_.columns.size() > 1) shown.group = column.title.empty() ? tr(kNone) : column.title;
        table_.columns.push_back(std::move(shown));
      }
    }
  }

  std::vector<Variant> cellsOf(const report::Row& row, std::vector<Variant> keys) {
    keys.resize(keyColumns_, Variant::Null());
    for (const auto& cell : row.cells) keys.push_back(cell.value);
    RowLook look;
    look.alarm.assign(keyColumns_, false);
    for (const auto& cell : row.cells) look.alarm.push_back(cell.judgement == report::Judgement::Unfavourable);
    table_.looks.push_back(std::move(look));
    return keys;
  }

  static std::string othersText(int count) { return tr("Others ({})", count); }

  void addRow(const report::Row& row) {
    std::vector<Variant> keys;
    for (std::size_t i = 0; i < row.level(); ++i) {
      const auto& key = row.keys[i];
      const bool others = row.others > 0 && i + 1 == row.level();
      if (!forPeople_) {
        keys.push_back(others ? Variant(othersText(row.others)) : key.code);
        keys.emplace_back(key.description);
      } else {
        keys.emplace_back(others ? othersText(row.others) : nameOf(key));
      }
    }
    table_.rows.push_back(cellsOf(row, forPeople_ ? withoutRepeated(keys) : keys));
  }

  /// A group is named in its first row.
  std::vector<Variant> withoutRepeated(std::vector<Variant> keys) {
    const auto shown = keys;
    for (std::size_t i = 0; i + 1 < keys.size() && i < lastKeys_.size() && shown[i] == lastKeys_[i]; ++i)
      keys[i] = Variant::Null();
    lastKeys_ = shown;
    return keys;
  }

  void addSubtotal(const report::Row& row) {
    std::vector<Variant> keys(row.level(), Variant::Null());
    keys.back() = tr("Total {}", nameOf(row.keys.back()));
    table_.rows.push_back(cellsOf(row, std::move(keys)));
    table_.looks.back().subtotal = true;
    lastKeys_.clear();
  }

  void addTotal(const report::Row& row) {
    auto cells = cellsOf(row, {tr("Total")});
    (result_.axes.empty() ? table_.rows.emplace_back() : table_.totals) = std::move(cells);
  }

  const report::Result& result_;
  bool forPeople_;
  std::size_t keyColumns_ = 0;
  std::vector<Variant> lastKeys_;
  Table table_;
};

/// Axes whose codes are told when there are none like them.
constexpr std::pair<std::string_view, Codes> kAxisCodes[] = {
    {"site", Codes::Sites}, {"kind", Codes::CardKinds}, {"account", Codes::Accounts}, {"card", Codes::CardCodes}};

void tellUnknownCodes(Environment& environment, const std::vector<report::Filter>& filters) {
  for (const auto& [axis, codes] : filters)
    for (const auto& [name, list] : kAxisCodes)
      for (const auto& code : codes)
        if (axis == name && !code.ends_with('*')) tellUnknownCode(environment, list, code);
}

void showReport(Environment& environment, const ReportOptions& options) {
  requireBudget(environment);
  if (options.plot && !environment.format().forPeople)
    throw UsageError(tr("--plot draws for people: --format does not go with it"));
  const auto query = queryOf(options);
  tellUnknownCodes(environment, query.where);
  const auto result = report::run(environment.budget(), *environment.connection(), query);
  if (!options.page.empty()) writeReportPage(environment, query, result, options.page);
  if (options.plot) return plotReport(environment, query);
  if (options.page.empty()) environment.show(ReportTable(result, environment.format().forPeople).take());
}

}  // namespace

Command reportCommand() {
  const auto options = std::make_shared<ReportOptions>();
  return {"report",
          "Show a budget by any axes, with subtotals",
          "  bukorval report -d demo.db -t 4 -s 01 -y 2025 --rows site,account --columns quarter --to 2025-09\n"
          "  bukorval report -d demo.db -t 4 -s 01 -y 2025 --rows level:1 --values budget,forecast1,forecast1.from\n"
          "  bukorval report -d demo.db -t 4 -s 01 -y 2025 --rows site,account --to 2025-09 --html report.html\n"
          "All sites and card kinds are in it. An unknown axis, column or value lists those of the budget.",
          {{.flags = "--rows",
            .help = "axes, the outermost first: site, kind, card, account, id, level:N of the account, or an analysis "
                    "column of the budget",
            .target = &options->rows},
           {.flags = "--columns",
            .help = "month, quarter, half, year, period, site or kind",
            .target = &options->columns,
            .showDefault = true},
           {.flags = "--values",
            .help = "budget, actual, delta, delta%, orders, available, forecast1, forecast1.delta, forecast1.delta%, "
                    "forecast1.actual, forecast1.forecast, forecast1.from, forecast2 …",
            .target = &options->values,
            .showDefault = true},
           {.flags = "--measure", .help = "amount, qty1 or qty2", .target = &options->measure, .showDefault = true},
           {.flags = "--to", .help = "only the months up to this one: 2025-09", .target = &options->to},
           {.flags = "--where",
            .help = "only these codes of an axis: site=1,2 or account=60*; again for further axes",
            .target = &options->where},
           {.flags = "--sort",
            .help = "by the total of a value, the greatest first; VALUE:asc the least first",
            .target = &options->sort},
           {.flags = "--top",
            .help = "only the first rows of each group, the others in one",
            .target = &options->top,
            .range = std::pair(1, 1000000)},
           {"--plot", "draw the values by period and the greatest deltas, instead of the table", &options->plot},
           {.flags = "--html",
            .help = "write a page with both pictures and the table, instead of showing it",
            .target = &options->page,
            .valueName = "FILE"}},
          [options](Environment& environment) { showReport(environment, *options); }};
}

}  // namespace bukorval::host
