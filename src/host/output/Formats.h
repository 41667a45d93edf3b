#pragma once

#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/output/Table.h"

namespace bukorval::host {

/// How the aligned table looks.
struct Style {
  char separator = ',';  ///< decimal sign; CSV and JSON have a point
  bool colour = false;
  bool all = false;  ///< empty columns are left out and descriptions cut, unless this is set
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
/// "table (for people), csv or json (for programs)".
std::string formatHelp();

/// Aligned columns for people.
void writeAligned(std::ostream& out, const Table& table, const Style& style);
/// A header line, commas, points, ISO dates.
void writeCsv(std::ostream& out, const Table& table, const Style& style);
/// An array of objects, one for each row.
void writeJson(std::ostream& out, const Table& table, const Style& style);
/// Plain values as one table, each record set as a table of its own.
void writeAlignedResults(std::ostream& out, const CallResults& results, const Style& style);
void writeCsvResults(std::ostream& out, const CallResults& results, const Style& style);
/// One object.
void writeJsonResults(std::ostream& out, const CallResults& results, const Style& style);

}  // namespace bukorval::host
