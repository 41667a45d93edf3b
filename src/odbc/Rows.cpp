#include "odbc/Rows.h"

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "odbc/Wide.h"
#include "values/Errore.h"

namespace odbc {

using namespace ado;

namespace {

using values::Variant;

constexpr int kDecimalDigits = 28;
constexpr std::int32_t kUnlimitedText = 1'073'741'823;

enum class How { Integer, Decimal, Float, Text, Date, Bit };

struct TypeRow {
  SQLSMALLINT sql;
  DataTypeEnum field;
  How how;
};

constexpr TypeRow kTypes[] = {
    {SQL_TINYINT, adSmallInt, How::Integer},
    {SQL_SMALLINT, adSmallInt, How::Integer},
    {SQL_INTEGER, adInteger, How::Integer},
    {SQL_BIGINT, adBigInt, How::Integer},
    {SQL_DECIMAL, adDecimal, How::Decimal},
    {SQL_NUMERIC, adDecimal, How::Decimal},
    {SQL_REAL, adDouble, How::Float},
    {SQL_FLOAT, adDouble, How::Float},
    {SQL_DOUBLE, adDouble, How::Float},
    {SQL_BIT, adBoolean, How::Bit},
    {SQL_TYPE_DATE, adDBTimeStamp, How::Date},
    {SQL_TYPE_TIMESTAMP, adDBTimeStamp, How::Date},
    {SQL_CHAR, adChar, How::Text},
    {SQL_VARCHAR, adVarChar, How::Text},
    {SQL_LONGVARCHAR, adVarChar, How::Text},
    {SQL_WCHAR, adWChar, How::Text},
    {SQL_WVARCHAR, adVarWChar, How::Text},
    {SQL_WLONGVARCHAR, adVarWChar, How::Text},
    {SQL_GUID, adChar, How::Text},
};

struct Column {
  std::string name;
  TypeRow type{};
  SQLULEN size = 0;
  SQLSMALLINT scale = 0;
  bool nullable = true;
};

Column describe(const Handle& statement, SQLUSMALLINT position) {
  std::array<char16_t, 256> name{};
  SQLSMALLINT length = 0;
  SQLSMALLINT type = 0;
  SQLSMALLINT nullable = SQL_NULLABLE;
  Column column;
  statement.check(SQLDescribeColW(statement.get(), position, reinterpret_cast<SQLWCHAR*>(name.data()),
                                  static_cast<SQLSMALLINT>(name.size()), &length, &type, &column.size, &column.scale,
                                  &nullable));
  const auto* known =
      std::find_if(std::begin(kTypes), std::end(kTypes), [&](const auto& row) { return row.sql == type; });
  // The name ends at its zero: some drivers count bytes in the length.
  column.name = fromWide(name.data());
  // Any other type travels as text.
  column.type = known != std::end(kTypes) ? *known : TypeRow{type, adVarWChar, How::Text};
  column.nullable = nullable != SQL_NO_NULLS;
  return column;
}

void append(Recordset& set, const Column& column) {
  auto& fields = set.Fields();
  // Two columns of a query may carry one name; a record set finds the first by it, so the others get a number.
  std::string unique = column.name;
  for (int copy = 2; fields.Find(unique) != nullptr; ++copy) unique = column.name + "#" + std::to_string(copy);
  const bool limited = column.size > 0 && column.size < static_cast<SQLULEN>(kUnlimitedText);
  const std::int32_t size = column.type.how != How::Text ? 0
                            : limited                    ? static_cast<std::int32_t>(column.size)
                                                         : kUnlimitedText;
  auto& field = fields.Append(unique, column.type.field, size, column.nullable ? adFldIsNullable : adFldUnspecified);
  if (column.type.how == How::Decimal) {
    field.Precision(static_cast<int>(std::min<SQLULEN>(column.size, kDecimalDigits)));
    field.NumericScale(std::min<int>(column.scale, kDecimalDigits));
  }
}

/// Reads cells one after the other; the buffer for texts serves them all.
class CellReader {
 public:
  explicit CellReader(const Handle& statement) : statement_(statement) {}

  void read(SQLUSMALLINT position, const Column& column, Variant& cell) {
    switch (column.type.how) {
      case How::Integer: return readInteger(position, column, cell);
      case How::Decimal: return readDecimal(position, column, cell);
      case How::Date: return readDate(position, cell);
      case How::Float:
        if (double value = 0; fetch(position, SQL_C_DOUBLE, &value, sizeof value)) cell = value;
        return;
      case How::Bit:
        if (unsigned char value = 0; fetch(position, SQL_C_BIT, &value, sizeof value)) cell = value != 0;
        return;
      case How::Text:
        if (fetchText(position)) cell = Variant(fromWide(text_));
    }
  }

 private:
  bool fetch(SQLUSMALLINT position, SQLSMALLINT type, SQLPOINTER target, SQLLEN size) {
    SQLLEN length = 0;
    statement_.check(SQLGetData(statement_.get(), position, type, target, size, &length));
    return length != SQL_NULL_DATA;
  }

  bool fetchText(SQLUSMALLINT position) {
    text_.clear();
    constexpr SQLLEN kBytes = sizeof part_;
    for (;;) {
      SQLLEN length = 0;
      const auto outcome = SQLGetData(statement_.get(), position, SQL_C_WCHAR, part_.data(), kBytes, &length);
      statement_.check(outcome);
      if (outcome == SQL_NO_DATA) return true;
      if (length == SQL_NULL_DATA) return false;
      // A part that does not hold the rest ends in a zero as well.
      const bool more = length == SQL_NO_TOTAL || length >= kBytes;
      text_.append(part_.data(), more ? part_.size() - 1 : static_cast<std::size_t>(length) / sizeof(char16_t));
      if (!more) return true;
    }
  }

  void readInteger(SQLUSMALLINT position, const Column& column, Variant& cell) {
    SQLBIGINT value = 0;
    if (!fetch(position, SQL_C_SBIGINT, &value, sizeof value)) return;
    if (column.type.field != adSmallInt) {
      cell = static_cast<std::int64_t>(value);
    } else if (std::in_range<std::int16_t>(value)) {
      cell = static_cast<std::int16_t>(value);
    } else {
      throw values::Errore("Column '" + column.name + "' holds " + std::to_string(value) +
                           ", which its type does not allow");
    }
  }

  /// As digits, so that none is lost on the way.
  void readDecimal(SQLUSMALLINT position, const Column& column, Variant& cell) {
    if (!fetchText(position)) return;
    const auto digits = fromWide(text_);
    const auto value = values::Decimal::TryParse(digits);
    if (!value) throw values::Errore("Column '" + column.name + "' holds no number: '" + digits + "'");
    // A sum or a quotient may have more digits than a decimal holds; zeros at its end are no loss.
    const auto point = std::min(digits.find('.'), digits.size() - 1);
    const auto kept = point + 1 + static_cast<std::size_t>(value->scale());
    if (kept < digits.size() && digits.find_first_not_of('0', kept) != std::string::npos)
      throw values::Errore("Column '" + column.name + "' holds " + digits + ", which has more than " +
                           std::to_string(kDecimalDigits) + " digits");
    cell = *value;
  }

  void readDate(SQLUSMALLINT position, Variant& cell) {
    SQL_TIMESTAMP_STRUCT at{};
    if (!fetch(position, SQL_C_TYPE_TIMESTAMP, &at, sizeof at)) return;
    cell = values::Date::FromYmd(at.year, at.month, at.day, at.hour, at.minute, at.second);
  }

  const Handle& statement_;
  /// Holds the longest text of a bounded column whole.
  std::array<char16_t, 8001> part_;
  std::u16string text_;
};

/// The columns of a statement, and how to read them.
class RowReader {
 public:
  RowReader(const Handle& statement, SQLSMALLINT count) : statement_(statement), cells_(statement) {
    for (SQLUSMALLINT position = 1; position <= count; ++position) columns_.push_back(describe(statement, position));
  }

  RecordsetPtr emptySet() const {
    auto set = std::make_shared<Recordset>();
    set->CursorLocation = adUseClient;
    for (const auto& column : columns_) append(*set, column);
    set->Open();
    return set;
  }
  bool fetch() const {
    const auto outcome = SQLFetch(statement_.get());
    statement_.check(outcome);
    return outcome != SQL_NO_DATA;
  }
  void read(std::span<Variant> row) {
    for (std::size_t i = 0; i < columns_.size(); ++i) readCell(i, row);
  }
  void read(std::span<Variant> row, const std::vector<bool>& wanted) {
    for (std::size_t i = 0; i < columns_.size(); ++i)
      if (wanted[i]) readCell(i, row);
  }
  /// From here to the end.
  RecordsetPtr readAll() {
    auto set = emptySet();
    bool rows = false;
    for (; fetch(); rows = true) read(set->AppendRow());
    if (rows) set->MoveFirst();
    return set;
  }

 private:
  void readCell(std::size_t place, std::span<Variant> row) {
    cells_.read(static_cast<SQLUSMALLINT>(place + 1), columns_[place], row[place]);
  }

  const Handle& statement_;
  std::vector<Column> columns_;
  CellReader cells_;
};

}  // namespace

RecordsetPtr readRows(const Handle& statement, SQLSMALLINT count) { return RowReader(statement, count).readAll(); }

struct RowStream::Reader : RowReader {
  using RowReader::RowReader;
};

RowStream::RowStream(const Handle& statement, SQLSMALLINT columns)
    : reader_(std::make_unique<Reader>(statement, columns)) {}
RowStream::~RowStream() = default;

void RowStream::keepRest() {
  if (!rest_) rest_ = reader_->readAll();
}

void RowStream::visitAll(const ado::RowVisitor& visit) {
  const auto set = reader_->emptySet();
  const auto row = set->AppendRow();
  set->MoveFirst();
  const auto each = visit(*set);
  const auto& wanted = set->Fields().KeepLookedUp();
  for (;;) {
    if (!rest_ && !reader_->fetch()) return;
    if (rest_ && rest_->Eof()) return;
    for (std::size_t i = 0; i < row.size(); ++i)
      if (wanted[i]) row[i] = rest_ ? rest_->Fields().Item(i).Value() : Variant::Null();
    if (rest_)
      rest_->MoveNext();
    else
      reader_->read(row, wanted);
    each();
  }
}

}  // namespace odbc
