
#include <fstream>

#include "dati/Failure.h"
#include "dati/import/CsvModel.h"
#include "dati/import/CsvReader.h"
#include "support/Test.h"

namespace {

using namespace bukorval::dati;

/// "a|b 2:1|2 3:3|4": the header, then each record behind its first line.
std::string readAll(CsvReader reader) {
  std::string shown;
  const auto add = [&](const std::vector<std::string>& fields) {
    for (const auto& field : fields) shown += (&field == &fields.front() ? "" : "|") + field;
  };
  add(reader.header());
  for (std::vector<std::string> fields; reader.next(fields); add(fields))
    shown += " " + std::to_string(reader.line()) + ":";
  return shown;
}

CsvReader::Source blocksOf(std::string_view text, std::size_t size) {
  return [=](std::string& block) mutable {
    block = text.substr(0, size);
    text.remove_prefix(block.size());
    return !block.empty();
  };
}

TEST(CsvReader, ReadsWhatSpreadsheetsWrite) {
  const std::pair<const char*, const char*> cases[] = {
      {"a,b\n1,2\n3,4\n", "a|b 2:1|2 3:3|4"},
      {"a,b\n1,2", "a|b 2:1|2"},
      {"\xEF\xBB\xBF"
       "a,b\r\n1,2\r\n",
       "a|b 2:1|2"},
      {"a,b\r1,\"x\ry\"\r3,4", "a|b 2:1|x\ry 4:3|4"},
      {"a; b\n1,5;2\n", "a|b 2:1,5|2"},
      {"a,b\n\"x, \"\"y\"\"\",\"\"\n", "a|b 2:x, \"y\"|"},
      {"a\n\"x\ny\"\nz\n", "a 2:x\ny 4:z"},
      {"a\n\n  \n1\n", "a 4:1"},
      {"a,b\n1,\n", "a|b 2:1|"},
      {"", ""},
  };
  for (const auto& [text, shown] : cases) {
    EXPECT_EQ(readAll(CsvReader(text)), shown) << text;
    for (const std::size_t size : {3u, 4u, 7u})
      EXPECT_EQ(readAll(CsvReader(blocksOf(text, size))), shown) << text << " by " << size;
  }
}

TEST(CsvReader, AnUnclosedQuoteNamesItsLine) {
  std::size_t line = 0;
  try {
    readAll(CsvReader("a\n1\r\"never\nclosed\n"));
  } catch (const UnclosedQuote& e) {
    line = e.line;
  }
  EXPECT_EQ(line, 3u);
}

TEST(CsvFile, AFileThatChangesIsRefused) {
  const auto name = testing::TempDir() + "changing.csv";
  const auto write = [&](const char* text) { std::ofstream(name, std::ios::binary) << text; };
  const CsvModel model{"x", {{"a", CsvType::Integer, true, 4, ""}}};
  for (const char* later : {"a\n1\n3\n", "a\n1\n2\n3\n", "a\n1\nx\n", "a\n1\n\"2\n", "a\n1\n\xE0\n", "b\n1\n2\n"}) {
    write("a\n1\n2\n");
    CsvFile file(name, model, {});
    Problems problems;
    int rows = 0;
    const auto count = [&](CsvRow&) { ++rows; };
    EXPECT_TRUE(file.read(problems, count));
    file.readAgain(count);
    EXPECT_EQ(rows, 4);
    write(later);
    EXPECT_THROW(file.readAgain(count), Refused) << later;
  }
}

TEST(CsvModel, ReadsOneValue) {
  struct Case {
    CsvType type;
    const char* text;
    const char* plain;  ///< as plain text, or the reason it is refused
    bool accepted;
  };
  const Case cases[] = {
      {CsvType::Amount, " 1234.50 ", "1234.5", true},
      {CsvType::Amount, "1.234,5", "1234.5", true},
      {CsvType::Amount, "1.000",
       "'1.000' can be read as a whole number or with three decimals: leave the sign out or add decimals", false},
      {CsvType::Amount, "-0,01", "-0.01", true},
      {CsvType::Amount, "9999999999999.99", "9999999999999.99", true},
      {CsvType::Amount, "12345678901234", "'12345678901234' is too large", false},
      {CsvType::Amount, "0.005", "'0.005' has more than 2 decimals", false},
      {CsvType::Amount, "0.5000", "0.5", true},
      {CsvType::Amount, "12a", "'12a' is not a number", false},
      {CsvType::Quantity, "0,125", "0.125", true},
      {CsvType::Date, "29/02/2012", "29/02/2012", true},
      {CsvType::Date, "2011-02-29", "'2011-02-29' is not a date", false},
      {CsvType::Integer, "007", "7", true},
      {CsvType::Integer, "-1", "'-1' is not a whole number", false},
      {CsvType::Integer, "12345", "'12345' has more than 4 digits", false},
      {CsvType::Text, "àèìò", "àèìò", true},
      {CsvType::Text, "12345", "'12345' has more than 4 characters", false},
      {CsvType::Text, "   ", "a value is needed", false},
  };
  for (const auto& c : cases) {
    const CsvField field{"x", c.type, true, 4, ""};
    std::string plain;
    const auto refusal = errorOf([&] { plain = values::toPlainText(parseField(c.text, field, ',')); });
    EXPECT_EQ(c.accepted ? plain : refusal, c.plain) << c.text;
    EXPECT_EQ(refusal.empty(), c.accepted) << c.text;
  }
  EXPECT_TRUE(parseField(" ", {"x", CsvType::Date, false, 0, ""}, ',').isEmpty());
}

}  // namespace
