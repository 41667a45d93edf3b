#include <sstream>

#include "host/output/Formats.h"
#include "host/output/SafeText.h"
#include "host/output/Titles.h"
#include "support/Test.h"

namespace {

using namespace bukorval::host;

Table sample() {
  Table table;
  table.columns = {{"CODE", "Code"},
                   {"EMPTY", "Empty"},
                   {"AMOUNT", "Amount", true, 2, false, true},
                   {"RATIO", "Delta %", true, 4, true},
                   {"DAY", "Day"}};
  table.rows = {{"à, \"x\"", Variant::Null(), Decimal::FromScaled(123456789, 2), Decimal::FromScaled(25, 2),
                 Date::FromYmd(2011, 2, 28)},
                {"b", Variant::Null(), Decimal::FromScaled(-5, 1), Variant::Null(), Variant::Null()}};
  table.addTotals();
  return table;
}

std::string shown(const char* format, char separator = ',', bool all = false, bool colour = false) {
  std::ostringstream out;
  findFormat(format).write(out, sample(), {separator, colour, all});
  return out.str();
}

TEST(Formats, AlignsForPeople) {
  EXPECT_EQ(shown("table"),
            "Code          Amount  Delta %  Day\n"
            "------  ------------  -------  ----------\n"
            "à, \"x\"  1.234.567,89    25,00  28/02/2011\n"
            "b              -0,50\n"
            "------  ------------  -------  ----------\n"
            "        1.234.567,39\n");
  EXPECT_NE(shown("table", '.').find("1,234,567.89    25.00"), std::string::npos);
  EXPECT_NE(shown("table", ',', true).find("Code    Empty  "), std::string::npos);
  EXPECT_NE(shown("table", ',', false, true).find("\033[31m       -0,50\033[39m"), std::string::npos);
}

TEST(Formats, WritesPlainValuesForPrograms) {
  EXPECT_EQ(shown("csv"),
            "CODE,AMOUNT,RATIO,DAY\n"
            "\"à, \"\"x\"\"\",1234567.89,0.2500,2011-02-28\n"
            "b,-0.50,,\n");
  EXPECT_EQ(shown("csv", ',', true).substr(0, 28), "CODE,EMPTY,AMOUNT,RATIO,DAY\n");
  EXPECT_EQ(shown("json"),
            "[\n"
            "  {\n    \"CODE\": \"à, \\\"x\\\"\",\n    \"EMPTY\": null,\n    \"AMOUNT\": 1234567.89,\n"
            "    \"RATIO\": 0.2500,\n    \"DAY\": \"2011-02-28\"\n  },\n"
            "  {\n    \"CODE\": \"b\",\n    \"EMPTY\": null,\n    \"AMOUNT\": -0.50,\n    \"RATIO\": null,\n"
            "    \"DAY\": null\n  }\n]\n");
}

TEST(Formats, JsonNeverLosesADigit) {
  Table table;
  table.columns = {{"A", "A", true, 2}, {"B", "B", true, 2}};
  table.rows = {{Decimal::FromScaled(999999999999999, 2), *Decimal::TryParse("12345678901234567.89")}};
  std::ostringstream out;
  findFormat("json").write(out, table, {});
  EXPECT_NE(out.str().find("\"A\": 9999999999999.99"), std::string::npos) << out.str();
  EXPECT_NE(out.str().find("\"B\": 12345678901234567.89"), std::string::npos) << out.str();
}

TEST(Formats, ATerminalObeysNoData) {
  const std::string data =
      "a\x1b[2Jb\nc\x7f\t\xc2\x9b"
      "1m\xe2\x80\xae"
      "d\xe2\x81\xa9 \xff\xe2\x80 à€😀\\";
  Table table;
  table.columns = {{"A", "A"}};
  table.rows = {{data}};
  const auto in = [&](const char* format) {
    std::ostringstream out;
    findFormat(format).write(out, table, {});
    return out.str();
  };
  EXPECT_NE(in("table").find("\n"
                             R"(a\x1B[2Jb\nc\x7F\t\u009B1m\u202Ed\u2069 \xFF\xE2\x80 à€😀\)"
                             "\n"),
            std::string::npos)
      << in("table");
  EXPECT_EQ(in("csv"), "A\n\"" + data + "\"\n");
  EXPECT_NE(in("json").find(R"("a\u001b[2Jb\nc)"), std::string::npos) << in("json");
  table.rows = {{"<b>|&*\"\x1b"}};
  EXPECT_EQ(in("md"), "| A |\n| --- |\n| \\<b\\>\\|\\&\\*\"\\\\x1B |\n");
  EXPECT_NE(in("html").find(R"(<td>&lt;b&gt;|&amp;*&quot;\x1B</td>)"), std::string::npos) << in("html");
  EXPECT_EQ(safeText("one\r\ntwo\r\x1b", Lines::Keep), "one\r\ntwo\\r\\x1B");
}

TEST(Formats, AnUnknownOneIsRefusedWithTheKnownOnes) {
  EXPECT_EQ(errorOf([] { findFormat("xml"); }),
            "There is no format xml, only table, md or html (for people), csv or json (for programs)");
}

TEST(Titles, ShortenFieldNames) {
  const std::pair<const char*, const char*> cases[] = {
      {"IMP_BUDGET", "Budget"},
      {"IMP_FORECAST12", "Forecast 12"},
      {"DELTAPERCIMP_FORE2", "Delta F2 %"},
      {"DELTAPERCIMP_CONS", "Delta %"},
      {"BU65_MARCA_MG64", "MARCA"},
      {"BU65_MARCA_MG64_DESCR", "MARCA descr."},
      {"BU65_DATAULTAGG", "DATAULTAGG"},
      {"BU65", "BU65"},
  };
  for (const auto& [field, expected] : cases) EXPECT_EQ(title(field), expected);
}

}  // namespace
