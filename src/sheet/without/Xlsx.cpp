#include "dati/Failure.h"
#include "language/Language.h"
#include "sheet/RawTable.h"
#include "sheet/XlsxWriter.h"

/// Stands in where the libraries for spreadsheets are missing.
namespace bukorval::sheet {
namespace {

[[noreturn]] void refuse(const std::string& file) {
  throw dati::Refused(tr("{}: this build reads and writes no spreadsheets; use a file that ends in .csv", file));
}

}  // namespace

/// Only cells of spreadsheets have names.
std::string RawTable::cellName(std::size_t, std::size_t) const { return {}; }

RawTable readXlsx(const std::string& file, std::string_view) { refuse(file); }

void writeXlsx(const BudgetSheet&, const std::string& file) { refuse(file); }

}  // namespace bukorval::sheet
