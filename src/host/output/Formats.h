#pragma once

#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/output/Table.h"

namespace bukorval::host {

/// How tables look.
struct Style {
  char separator = ',';   ///< decimal sign; CSV and JSON have a point
  bool colour = false;    ///< of the aligned table
  bool all = false;       ///< empty columns are left out, unless this is set
  std::size_t width = 0;  ///< what the aligned table fits into, in characters; 0: as wide as it is
};

/// What a call left behind, by name.
struct CallResults {
  std::vector<std::pair<std::string, values::Variant>> values;
  std::vector<std::pair<std::string, Table>> tables;
};

/// A way to show tables. The totals row belongs to formats for people only, so that a program does not add it up
/// twice.
struct Format {
  std::string_view name;
  bool forPeople;
  void (*write)(std::ostream& out, const Table& table, const Style& style);
  void (*writeResults)(std::ostream& out, const CallResults& results, const Style& style);
};

/// The formats of the program, the usual one first.
std::span<const Format> formats();
/// Throws values::Errore, which lists the known ones, for a name that is none of them.
const Format& findFormat(std::string_view name);
/// "table, md or html (for people), csv or json (for programs)".
std::string formatHelp();

/// Aligned columns for people.
void writeAligned(std::ostream& out, const Table& table, const Style& style);
/// A header line, commas, points, ISO dates.
void writeCsv(std::ostream& out, const Table& table, const Style& style);
/// A table of GitHub's Markdown.
void writeMarkdown(std::ostream& out, const Table& table, const Style& style);
/// A page that needs nothing else.
void writeHtml(std::ostream& out, const Table& table, const Style& style);
/// An array of objects, one for each row; numbers have the digits that they have.
void writeJson(std::ostream& out, const Table& table, const Style& style);
/// Writes plain values as one table, and each record set as a table of its own.
/// @param title  says what a table shows, before it; nothing for a program.
void writeEach(std::ostream& out, const CallResults& results, const Style& style, decltype(Format::write) write,
               void (*title)(std::ostream& out, const std::string& name, const Table& table));
/// Plain values as one table, each record set as a table of its own.
void writeAlignedResults(std::ostream& out, const CallResults& results, const Style& style);
void writeCsvResults(std::ostream& out, const CallResults& results, const Style& style);
void writeMarkdownResults(std::ostream& out, const CallResults& results, const Style& style);
void writeHtmlResults(std::ostream& out, const CallResults& results, const Style& style);
/// One object.
void writeJsonResults(std::ostream& out, const CallResults& results, const Style& style);

}  // namespace bukorval::host
