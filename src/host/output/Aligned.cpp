#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "host/output/Formats.h"
#include "host/output/TextGrid.h"
#include "language/Language.h"
#include "values/Text.h"

namespace bukorval::host {
namespace {

constexpr std::string_view kBold = "\033[1m";
constexpr std::string_view kRed = "\033[31m";
constexpr std::string_view kEndOfRed = "\033[39m";
constexpr std::string_view kEnd = "\033[0m";

std::string padded(std::string_view text, std::size_t width, bool right) {
  const std::string blanks(width - values::length(text), ' ');
  return right ? blanks + std::string(text) : std::string(text) + blanks;
}

/// Visits the groups of neighbouring columns: where one begins, the column after it, and the width it takes.
template <class Visit>
void forEachGroup(const TextGrid& grid, const Visit& visit) {
  for (std::size_t begin = 0; begin < grid.columns.size();) {
    std::size_t width = grid.widths[begin], end = begin + 1;
    for (; end < grid.columns.size() && grid.columns[end]->group == grid.columns[begin]->group; ++end)
      width += 2 + grid.widths[end];
    visit(begin, end, width);
    begin = end;
  }
}

/// The name of a group fits above its columns.
void widenGroups(TextGrid& grid) {
  forEachGroup(grid, [&](std::size_t begin, std::size_t end, std::size_t width) {
    const auto needed = values::length(grid.columns[begin]->group);
    if (needed > width) grid.widths[end - 1] += needed - width;
  });
}

std::string groupLine(const TextGrid& grid) {
  std::string text;
  forEachGroup(grid, [&](std::size_t begin, std::size_t, std::size_t width) {
    text += (begin > 0 ? "  " : "") + values::padRight(grid.columns[begin]->group, width);
  });
  return std::string(values::rtrim(text));
}

std::string ruler(const TextGrid& grid) {
  std::string text;
  for (std::size_t i = 0; i < grid.widths.size(); ++i) {
    text += std::string(i > 0 ? 2 : 0, ' ') + std::string(grid.widths[i], '-');
  }
  return text;
}

std::string rowLine(const TextGrid& grid, const std::vector<std::string>& cells, const std::vector<bool>& red = {}) {
  std::string text;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (i > 0) text += "  ";
    const auto aligned = padded(cells[i], grid.widths[i], grid.columns[i]->number);
    text += !red.empty() && red[i] ? std::string(kRed).append(aligned).append(kEndOfRed) : aligned;
  }
  return std::string(values::rtrim(text));
}

/// The titles, the last line of each just above the ruler.
std::vector<std::string> titleLines(const TextGrid& grid) {
  auto lines = wrappedLines(grid, grid.titles);
  for (std::size_t i = 0; i < grid.columns.size(); ++i) {
    while (std::ranges::any_of(lines, [&](const auto& line) { return !line[i].empty(); }) && lines.back()[i].empty())
      for (auto k = lines.size() - 1; k > 0; --k) std::swap(lines[k][i], lines[k - 1][i]);
  }
  std::vector<std::string> texts;
  for (const auto& line : lines) texts.push_back(rowLine(grid, line));
  return texts;
}

/// Writes a grid that may be narrower than its texts.
class Writer {
 public:
  Writer(std::ostream& out, const Table& table, const TextGrid& grid, const Style& style)
      : out_(out), table_(table), grid_(grid), colour_(style.colour), wraps_(style.width > 0) {}

  void operator()() const {
    if (const auto groups = groupLine(grid_); !groups.empty()) line(groups, true);
    for (const auto& titles : titleLines(grid_)) line(titles, true);
    out_ << ruler(grid_) << '\n';
    for (std::size_t r = 0; r < table_.rows.size(); ++r) row(r, !table_.looks.empty() && table_.looks[r].subtotal);
    if (!table_.totals.empty()) {
      out_ << ruler(grid_) << '\n';
      row(table_.rows.size(), true);
    }
  }

 private:
  void line(const std::string& text, bool bold) const {
    if (colour_ && bold)
      out_ << kBold << text << kEnd << '\n';
    else
      out_ << text << '\n';
  }

  void row(std::size_t r, bool bold) const {
    const auto red = colour_ ? alarms(grid_, table_, r) : std::vector<bool>{};
    if (!wraps_) return line(rowLine(grid_, grid_.rows[r], red), bold);
    for (const auto& cells : wrappedLines(grid_, grid_.rows[r])) line(rowLine(grid_, cells, red), bold);
  }

  std::ostream& out_;
  const Table& table_;
  const TextGrid& grid_;
  bool colour_, wraps_;
};

}  // namespace

void writeAligned(std::ostream& out, const Table& table, const Style& style) {
  // A heading of dozens of empty columns would say less.
  if (table.rows.empty()) {
    out << tr("No rows") << '\n';
    return;
  }
  auto grid = textGrid(table, style);
  if (style.width > 0) fit(grid, style.width);
  widenGroups(grid);
  Writer(out, table, grid, style)();
  if (grid.dropped > 0)
    out << (grid.dropped == 1 ? tr("1 column more with --wide") : tr("{} columns more with --wide", grid.dropped))
        << '\n';
}

}  // namespace bukorval::host
