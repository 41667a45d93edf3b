#pragma once

#include <array>
#include <ostream>
#include <string>
#include <string_view>

#include "values/Variant.h"

namespace bukorval::sheet {

/// How a CSV file is written.
struct CsvStyle {
  std::string_view name;
  char separator, decimalSign;
  std::string_view start;  ///< of the file
};
inline constexpr std::array kCsvStyles{CsvStyle{"plain", ',', '.', ""}, CsvStyle{"it", ';', ',', "\xEF\xBB\xBF"}};

/// Writes a file line by line.
class CsvWriter {
 public:
  CsvWriter(std::ostream& out, const CsvStyle& style) : out_(out), style_(style) { out_ << style.start; }

  /// The next field of the line.
  void field(std::string_view text);
  /// Null is no text; a number has the decimals that it comes with, but at least these.
  void value(const values::Variant& value, int decimals = 0);
  /// Fields that stand in a text already, as `quoted` makes them.
  void ready(std::string_view fields) { next() << fields; }
  void endLine();

  static std::string quoted(std::string_view text, const CsvStyle& style);
  static std::string textOf(const values::Variant& value, int decimals, const CsvStyle& style);

 private:
  std::ostream& next();

  std::ostream& out_;
  const CsvStyle& style_;
  bool first_ = true;
};

}  // namespace bukorval::sheet
