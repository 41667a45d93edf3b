#include "host/output/Formats.h"

#include <algorithm>
#include <array>

#include "language/Language.h"
#include "values/Errore.h"

namespace bukorval::host {
namespace {

constexpr std::array kFormats{
    Format{"table", true, writeAligned, writeAlignedResults}, Format{"md", true, writeMarkdown, writeMarkdownResults},
    Format{"html", true, writeHtml, writeHtmlResults},        Format{"csv", false, writeCsv, writeCsvResults},
    Format{"json", false, writeJson, writeJsonResults},
};

/// The names of the formats of one audience: "table, md or html".
std::string names(bool forPeople) {
  std::vector<std::string_view> found;
  for (const auto& format : kFormats)
    if (format.forPeople == forPeople) found.push_back(format.name);
  std::string text;
  for (std::size_t i = 0; i < found.size(); ++i)
    text.append(i == 0 ? "" : i + 1 == found.size() ? tr(" or ") : ", ").append(found[i]);
  return text;
}

}  // namespace

std::span<const Format> formats() { return kFormats; }

const Format& findFormat(std::string_view name) {
  const auto found = std::ranges::find(kFormats, name, &Format::name);
  if (found != kFormats.end()) return *found;
  throw values::Errore(tr("There is no format {}, only {}", name, formatHelp()));
}

std::string formatHelp() { return tr("{} (for people), {} (for programs)", names(true), names(false)); }

void writeEach(std::ostream& out, const CallResults& results, const Style& style, decltype(Format::write) write,
               void (*title)(std::ostream& out, const std::string& name, const Table& table)) {
  if (!results.values.empty()) {
    Table table{{{"name", "Name"}, {"value", "Value"}}, {}, {}};
    for (const auto& [name, value] : results.values)
      table.rows.push_back({name, value.isNull() ? "NULL" : value.isEmpty() ? "EMPTY" : value});
    write(out, table, style);
  }
  for (const auto& [name, table] : results.tables) {
    if (title) title(out, name, table);
    write(out, table, style);
  }
}

void writeAlignedResults(std::ostream& out, const CallResults& results, const Style& style) {
  writeEach(out, results, style, writeAligned, [](std::ostream& to, const std::string& name, const Table& table) {
    to << tr("{} ({} rows)", tr(name), table.rows.size()) << '\n';
  });
}

void writeCsvResults(std::ostream& out, const CallResults& results, const Style& style) {
  writeEach(out, results, style, writeCsv, nullptr);
}

}  // namespace bukorval::host
