#include <algorithm>
#include <numeric>
#include <set>
#include <string>
#include <string_view>
#include <tuple>

#include "host/output/TextGrid.h"
#include "values/Text.h"

namespace bukorval::host {
namespace {

/// No text is wrapped into less than this for the sake of one long word.
constexpr std::size_t kNarrowest = 12;
constexpr std::size_t kGap = 2;

std::size_t longestWord(std::string_view text) {
  std::size_t longest = 0;
  while (!text.empty()) {
    const auto end = std::min(text.find(' '), text.size());
    longest = std::max(longest, values::length(text.substr(0, end)));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return longest;
}

/// How narrow a column may get: numbers stay on one line.
std::size_t leastWidth(const TextGrid& grid, std::size_t column) {
  std::size_t words = longestWord(grid.titles[column]), numbers = 0;
  for (const auto& row : grid.rows) {
    if (grid.columns[column]->number)
      numbers = std::max(numbers, values::length(row[column]));
    else
      words = std::max(words, longestWord(row[column]));
  }
  return std::max({std::size_t{1}, numbers, std::min(words, kNarrowest)});
}

std::size_t sum(const std::vector<std::size_t>& widths) {
  return std::accumulate(widths.begin(), widths.end(), kGap * (widths.size() - 1));
}

/// How much each column tells: whether it stays in any case, whether it is summed, and how many texts it has.
using Telling = std::tuple<bool, bool, std::size_t>;

std::vector<Telling> tellings(const TextGrid& grid) {
  std::vector<Telling> all;
  for (std::size_t i = 0; i < grid.columns.size(); ++i) {
    std::set<std::string_view> texts;
    for (const auto& row : grid.rows) texts.insert(row[i]);
    all.emplace_back(i == 0 || grid.columns[i]->wanted, grid.columns[i]->total, texts.size());
  }
  return all;
}

template <class T>
void erase(std::vector<T>& items, std::size_t i) {
  items.erase(items.begin() + static_cast<std::ptrdiff_t>(i));
}

void drop(TextGrid& grid, std::size_t i) {
  erase(grid.columns, i);
  erase(grid.positions, i);
  erase(grid.titles, i);
  erase(grid.widths, i);
  for (auto& row : grid.rows) erase(row, i);
  ++grid.dropped;
}

void dropUntilRoom(TextGrid& grid, std::vector<std::size_t>& least, std::size_t width) {
  if (sum(least) <= width) return;
  auto telling = tellings(grid);
  while (sum(least) > width) {
    // Of equals the last one goes.
    const auto found = std::min_element(telling.rbegin(), telling.rend());
    if (std::get<0>(*found)) return;
    const auto i = static_cast<std::size_t>(telling.rend() - found) - 1;
    drop(grid, i);
    erase(least, i);
    erase(telling, i);
  }
}

/// Cuts the widest columns to one width, the greatest that leaves room for all.
void narrow(std::vector<std::size_t>& widths, const std::vector<std::size_t>& least, std::size_t width) {
  const auto natural = widths;
  for (auto limit = width; sum(widths) > width && limit > 0; --limit)
    for (std::size_t i = 0; i < widths.size(); ++i) widths[i] = std::min(natural[i], std::max(limit, least[i]));
}

/// The first line of a text, as long as the width; a word that is longer is cut, behind a joint where it has one.
std::string_view firstLine(std::string_view text, std::size_t width) {
  if (values::length(text) <= width) return text;
  const auto line = values::left(text, width);
  if (text[line.size()] == ' ') return line;
  if (const auto blank = line.rfind(' '); blank != std::string_view::npos && blank > 0) return line.substr(0, blank);
  const auto joint = line.find_last_of("/-_");
  return joint == std::string_view::npos || joint == 0 ? line : line.substr(0, joint + 1);
}

std::vector<std::string> wrapped(std::string_view text, std::size_t width) {
  std::vector<std::string> lines;
  do {
    const auto line = firstLine(text, width);
    lines.emplace_back(values::rtrim(line));
    text.remove_prefix(line.size());
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  } while (!text.empty());
  return lines;
}

}  // namespace

void fit(TextGrid& grid, std::size_t width) {
  if (grid.widths.empty() || sum(grid.widths) <= width) return;
  std::vector<std::size_t> least;
  for (std::size_t i = 0; i < grid.columns.size(); ++i) least.push_back(leastWidth(grid, i));
  dropUntilRoom(grid, least, width);
  narrow(grid.widths, least, width);
}

std::vector<std::vector<std::string>> wrappedLines(const TextGrid& grid, const std::vector<std::string>& cells) {
  std::vector<std::vector<std::string>> lines;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    auto parts = wrapped(cells[i], grid.widths[i]);
    if (lines.size() < parts.size()) lines.resize(parts.size(), std::vector<std::string>(cells.size()));
    for (std::size_t k = 0; k < parts.size(); ++k) lines[k][i] = std::move(parts[k]);
  }
  return lines;
}

}  // namespace bukorval::host
