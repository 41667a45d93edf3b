#include "sheet/XlsxWriter.h"

#include <xlsxwriter.h>

#include <array>
#include <memory>

#include "dati/Failure.h"
#include "dati/Locks.h"
#include "language/Language.h"
#include "sheet/WideShape.h"
#include "values/Conversion.h"

namespace bukorval::sheet {
namespace {

constexpr lxw_row_t kNames = 0, kTitles = 1, kFirstCard = 2;
constexpr std::size_t kMostCards = 1'000'000;

/// How the columns of a role look.
struct Look {
  Role role;
  double width;
  bool hidden;
};
constexpr std::array kLooks{Look{Role::Sheet, 10, true},  Look{Role::Card, 8, false},
                            Look{Role::Stamp, 18, true},  Look{Role::Exported, 10, true},
                            Look{Role::Key, 12, false},   Look{Role::Description, 34, false},
                            Look{Role::Period, 14, false}};

void require(lxw_error error) {
  if (error != LXW_NO_ERROR) throw dati::Refused(tr("The spreadsheet cannot be written: {}", lxw_strerror(error)));
}

struct Range {
  lxw_row_t firstRow;
  std::size_t firstColumn;
  lxw_row_t lastRow;
  std::size_t lastColumn;
};

class Book {
 public:
  Book(const BudgetSheet& sheet, const std::string& file)
      : sheet_(sheet), shape_(sheet), book_(workbook_new(file.c_str()), lxw_workbook_free) {
    if (!book_) throw dati::Refused(tr("The spreadsheet cannot be written: not enough memory"));
    page_ = workbook_add_worksheet(book_.get(), "Budget");
    firstPeriod_ = shape_.columns().size() - sheet.periods.size();
    total_ = shape_.columns().size();
    totals_ = kFirstCard + static_cast<lxw_row_t>(sheet.rows.size());
    makeFormats();
  }

  void write() {
    layColumns();
    for (std::size_t i = 0; i < sheet_.rows.size(); ++i)
      writeCard(kFirstCard + static_cast<lxw_row_t>(i), sheet_.rows[i]);
    writeTotals();
    drawTotals();
    protect();
    require(workbook_close(book_.release()));
  }

 private:
  lxw_format* format(const std::string& numbers, bool bold, bool open) {
    auto* made = workbook_add_format(book_.get());
    format_set_num_format(made, numbers.c_str());
    if (bold) format_set_bold(made);
    if (open) format_set_unlocked(made);
    return made;
  }

  void makeFormats() {
    const auto numbers = "#,##0." + std::string(static_cast<std::size_t>(sheet_.selection.measure->decimals), '0');
    title_ = format("General", true, false);
    open_ = format(numbers, false, true);
    locked_ = format(numbers, false, false);
    sum_ = format(numbers, true, false);
  }

  void text(lxw_row_t row, std::size_t column, std::string_view value, lxw_format* format = nullptr) {
    require(worksheet_write_string(page_, row, static_cast<lxw_col_t>(column), std::string(value).c_str(), format));
  }
  void number(lxw_row_t row, std::size_t column, const values::Variant& value, lxw_format* format = nullptr) {
    require(worksheet_write_number(page_, row, static_cast<lxw_col_t>(column), values::toDecimal(value).toDouble(),
                                   format));
  }
  /// The sum of a range, with the value that it has for who does not calculate.
  void sum(lxw_row_t row, std::size_t column, Range cells, const values::Decimal& value) {
    std::array<char, LXW_MAX_CELL_RANGE_LENGTH> range{};
    lxw_rowcol_to_range(range.data(), cells.firstRow, static_cast<lxw_col_t>(cells.firstColumn), cells.lastRow,
                        static_cast<lxw_col_t>(cells.lastColumn));
    require(worksheet_write_formula_num(page_, row, static_cast<lxw_col_t>(column),
                                        ("=SUM(" + std::string(range.data()) + ")").c_str(), sum_, value.toDouble()));
  }

  void layColumns() {
    lxw_row_col_options hidden{.hidden = 1, .level = 0, .collapsed = 0};
    for (std::size_t i = 0; i < total_; ++i) {
      const auto& column = shape_.columns()[i];
      const auto& look = *std::ranges::find(kLooks, column.role, &Look::role);
      // A description begins with its code.
      const auto* key = column.role == Role::Key ? &sheet_.keys[column.index] : nullptr;
      const bool hides = look.hidden || (key && (key->described || key->hidden));
      const auto at = static_cast<lxw_col_t>(i);
      require(worksheet_set_column_opt(page_, at, at, look.width, nullptr, hides ? &hidden : nullptr));
      text(kNames, i, column.name);
      text(kTitles, i, column.role == Role::Sheet ? kTitlesLine : std::string_view(column.title), title_);
    }
    text(kTitles, total_, "Totale", title_);
    require(worksheet_set_column(page_, static_cast<lxw_col_t>(total_), static_cast<lxw_col_t>(total_), 16, nullptr));
    require(worksheet_set_row_opt(page_, kNames, LXW_DEF_ROW_HEIGHT, nullptr, &hidden));
    worksheet_freeze_panes(page_, kFirstCard, static_cast<lxw_col_t>(firstPeriod_));
    constexpr std::uint8_t kA4 = 9;
    worksheet_set_paper(page_, kA4);
    worksheet_set_landscape(page_);
    worksheet_fit_to_pages(page_, 1, 0);
    require(worksheet_repeat_rows(page_, kTitles, kTitles));
  }

  void writeCard(lxw_row_t at, const SheetRow& row) {
    for (std::size_t i = 0; i < total_; ++i) {
      const auto& column = shape_.columns()[i];
      const auto value = shape_.value(row, column);
      if (column.role == Role::Period)
        writeCell(at, i, row.cells[column.index]);
      else if (value.isNumber())
        number(at, i, value);
      else
        text(at, i, values::toPlainText(value));
    }
    sum(at, total_, {at, firstPeriod_, at, total_ - 1}, sumOf(row));
  }

  /// What has several details cannot be written as one.
  void writeCell(lxw_row_t at, std::size_t column, const SheetCell& cell) {
    auto* look = cell.details > 1 ? locked_ : open_;
    if (cell.value.isNothing())
      require(worksheet_write_blank(page_, at, static_cast<lxw_col_t>(column), look));
    else
      number(at, column, cell.value, look);
  }

  static values::Decimal sumOf(const SheetRow& row) {
    values::Decimal sum;
    for (const auto& cell : row.cells)
      if (!cell.value.isNothing()) sum = sum + values::toDecimal(cell.value);
    return sum;
  }

  void writeTotals() {
    text(totals_, 0, kTotalsLine);
    text(totals_, firstPeriod_ - 1, "Totale", title_);
    std::vector<values::Decimal> sums(sheet_.periods.size());
    values::Decimal all;
    for (const auto& row : sheet_.rows) {
      all = all + sumOf(row);
      for (std::size_t i = 0; i < sums.size(); ++i)
        if (!row.cells[i].value.isNothing()) sums[i] = sums[i] + values::toDecimal(row.cells[i].value);
    }
    for (std::size_t i = 0; i <= sums.size(); ++i)
      sum(totals_, firstPeriod_ + i, {kFirstCard, firstPeriod_ + i, totals_ - 1, firstPeriod_ + i},
          i < sums.size() ? sums[i] : all);
  }

  void drawTotals() {
    auto* page = workbook_add_chartsheet(book_.get(), "Grafico");
    auto* chart = workbook_add_chart(book_.get(), LXW_CHART_COLUMN);
    auto* series = chart_add_series(chart, nullptr, nullptr);
    const auto draw = [&](auto set, lxw_row_t row) {
      set(series, "Budget", row, static_cast<lxw_col_t>(firstPeriod_), row, static_cast<lxw_col_t>(total_ - 1));
    };
    draw(chart_series_set_categories, kTitles);
    draw(chart_series_set_values, totals_);
    chart_series_set_name(series, dati::kindName(sheet_.selection.kind).c_str());
    chart_title_set_name(chart, dati::nameOf(sheet_.selection.cards.budget).c_str());
    require(chartsheet_set_chart(page, chart));
  }

  void protect() {
    lxw_data_validation numbers{};
    numbers.validate = LXW_VALIDATION_TYPE_DECIMAL;
    numbers.criteria = LXW_VALIDATION_CRITERIA_BETWEEN;
    numbers.minimum_number = -1e13;
    numbers.maximum_number = 1e13;
    require(worksheet_data_validation_range(page_, kFirstCard, static_cast<lxw_col_t>(firstPeriod_), totals_ - 1,
                                            static_cast<lxw_col_t>(total_ - 1), &numbers));
    lxw_protection allowed{};
    allowed.format_cells = allowed.format_columns = allowed.format_rows = LXW_TRUE;
    worksheet_protect(page_, nullptr, &allowed);
  }

  const BudgetSheet& sheet_;
  WideShape shape_;
  std::unique_ptr<lxw_workbook, void (*)(lxw_workbook*)> book_;
  lxw_worksheet* page_ = nullptr;
  std::size_t firstPeriod_ = 0, total_ = 0;  ///< columns
  lxw_row_t totals_ = 0;
  lxw_format *title_ = nullptr, *open_ = nullptr, *locked_ = nullptr, *sum_ = nullptr;
};

}  // namespace

void writeXlsx(const BudgetSheet& sheet, const std::string& file) {
  if (sheet.rows.size() > kMostCards) throw dati::Refused(tr("A spreadsheet has no room for so many cards"));
  Book(sheet, file).write();
}

}  // namespace bukorval::sheet
