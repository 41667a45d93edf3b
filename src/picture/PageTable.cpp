#include <cstddef>
#include <string>
#include <vector>

#include "picture/Markup.h"
#include "picture/Page.h"
#include "picture/SvgParts.h"
#include "report/Lines.h"
#include "values/Conversion.h"
#include "values/NumberText.h"

namespace bukorval::picture {
namespace {

using report::Row;

class TableWriter {
 public:
  TableWriter(const report::Result& result, const Words& words) : result_(result), words_(words) {}

  std::string write() {
    out_.open("table", {{"class", "report grouped"}});
    head();
    body();
    out_.open("tfoot").open("tr");
    if (keyColumns() > 0) key("th", "row", std::string(words_.phrases.total));
    cells(result_.rows.front());
    out_.close("tr").close("tfoot");
    return out_.close("table").str();
  }

 private:
  std::size_t keyColumns() const { return result_.axes.size(); }
  bool hasGroups() const { return result_.columns.size() > 1; }

  void head() {
    out_.open("thead").open("tr");
    const std::string rows = hasGroups() ? "2" : "";
    for (std::size_t i = 0; i < keyColumns(); ++i)
      out_.element("th",
                   {{"scope", "col"},
                    {"rowspan", rows},
                    {"data-column", std::to_string(i)},
                    {"data-field", result_.axes[i].field}},
                   words_.titleOf(result_.axes[i].field));
    if (hasGroups()) {
      for (const auto& column : result_.columns)
        out_.element("th",
                     {{"scope", "colgroup"}, {"class", "group"}, {"colspan", std::to_string(result_.values.size())}},
                     column.name.empty() ? words_.phrases.total : std::string_view(column.title));
      out_.close("tr").open("tr");
    }
    std::size_t position = keyColumns();
    for (const auto& column : result_.columns)
      for (const auto& value : result_.values)
        out_.element("th",
                     {{"scope", "col"},
                      {"class", isNumber(value) ? "num" : ""},
                      {"data-column", std::to_string(position++)},
                      {"data-field", column.name + (column.name.empty() ? "" : "_") + value.field}},
                     words_.titleOf(value.field));
    out_.close("tr").close("thead");
  }

  void body() {
    out_.open("tbody");
    report::forEachLine(
        result_, [&](const Row& row) { line(row); }, [&](const Row& row) { subtotal(row); });
    out_.close("tbody");
  }

  void line(const Row& row) {
    std::vector<std::string> names;
    for (const auto& key : row.keys) names.push_back(nameOf(key, words_));
    if (row.others > 0) names.back() = std::string(words_.phrases.others) + " (" + std::to_string(row.others) + ")";
    names.resize(keyColumns());
    out_.open("tr");
    bool again = true;
    for (std::size_t i = 0; i < names.size(); ++i) {
      again = again && i + 1 < names.size() && i < last_.size() && names[i] == last_[i];
      out_.element(i + 1 == names.size() ? "th" : "td",
                   {{"scope", i + 1 == names.size() ? "row" : ""}, {"class", again ? "again" : ""}}, names[i]);
    }
    cells(row);
    out_.close("tr");
    last_ = std::move(names);
  }

  void subtotal(const Row& row) {
    out_.open("tr", {{"class", "sub"}});
    key("th", "row", std::string(words_.phrases.total) + " " + nameOf(row.keys.back(), words_));
    cells(row);
    out_.close("tr");
    last_.clear();
  }

  void key(std::string_view element, const std::string& scope, const std::string& text) {
    out_.element(element, {{"scope", scope}, {"colspan", std::to_string(keyColumns())}}, text);
  }

  void cells(const Row& row) {
    for (std::size_t column = 0; column < result_.columns.size(); ++column)
      for (std::size_t value = 0; value < result_.values.size(); ++value)
        cell(result_.cell(row, column, value), result_.values[value]);
  }

  static bool isNumber(const report::Value& value) { return value.decimals > 0; }

  void cell(const report::Cell& cell, const report::Value& value) {
    if (cell.value.isNothing()) return void(out_.element("td", {{"data-value", ""}}, ""));
    if (!isNumber(value)) return void(out_.element("td", {}, values::toPlainText(cell.value)));
    const auto number = values::toDecimal(cell.value);
    const auto shown = value.ratio ? words_.number(number * values::Decimal::FromScaled(100), value.decimals - 2) + " %"
                                   : words_.number(number, value.decimals);
    const bool bad = cell.judgement == Judgement::Unfavourable;
    out_.element("td",
                 {{"class", bad ? "num bad" : "num"}, {"data-value", values::withDecimals(number, value.decimals)}},
                 shown);
  }

  const report::Result& result_;
  const Words& words_;
  std::vector<std::string> last_;
  Markup out_;
};

}  // namespace

std::string pageTable(const report::Result& result, const Words& words) { return TableWriter(result, words).write(); }

}  // namespace bukorval::picture
