#pragma once

#include <string>
#include <string_view>

#include "host/output/Table.h"

/// What is shown, as JSON. Exact numbers keep their digits: what a binary number could lose is text.
namespace bukorval::host::server {

void appendQuoted(std::string& out, std::string_view text);
/// null, true or false, a whole number, "1250.50", "2025-03-01" or text.
void appendCell(std::string& out, const values::Variant& value, const Column& column);
/// An object with title, columns, rows and totals.
void appendTable(std::string& out, const Table& table, std::string_view title);

inline std::string quotedText(std::string_view text) {
  std::string out;
  appendQuoted(out, text);
  return out;
}

}  // namespace bukorval::host::server
