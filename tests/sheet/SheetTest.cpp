// Budgets as sheets, there and back.

#include <filesystem>
#include <sstream>

#include "dati/SmallBudgets.h"
#include "dati/import/Encoding.h"
#include "sheet/CellNumber.h"
#include "sheet/CsvFiles.h"
#include "sheet/ReplaceFile.h"
#include "sheet/SheetFile.h"
#include "sheet/WideShape.h"
#include "sheet/XlsxWriter.h"

namespace {

using namespace dati_tests;
using namespace bukorval::sheet;
using bukorval::dati::kMeasures;

TEST(SheetIdentity, ComesBackAsItWasWritten) {
  SheetSelection selection{{{1, 4, "01", 2025, 2}, {}, {}}, 3, &kMeasures[1]};
  const auto identity = selection.identity();
  EXPECT_EQ(identity, "bukorval|1|1|4|2025|2|3|qty1|01");
  EXPECT_EQ(parseIdentity(identity)->identity(), identity);
  EXPECT_EQ(parseIdentity("bukorval|1|1|4|2025|2|3|amount|")->identity(), "bukorval|1|1|4|2025|2|3|amount|");
  for (const char* other :
       {"", "bukorval|2|1|4|2025|2|3|qty1|01", "bukorval|1|1|4|2025|2|3|qty3|01", "bukorval|1|1|4|2025|2|qty1|01",
        "bukorval|1|x|4|2025|2|3|qty1|01", "bukorval|1|1|4|2025|2|3|qty1", "bukorval|1|1|4|2025|2|3.0|qty1|01",
        "bukorval|1|1|4|99999999999|2|3|qty1|01"})
    EXPECT_FALSE(parseIdentity(other)) << other;
}

TEST(SheetCells, HoldNumbersOfTheMeasureOnly) {
  RawTable table;
  table.lettered = true;
  const struct {
    RawKind kind;
    const char *text, *amount;
  } kRows[] = {{RawKind::Number, "18500.5", "18500.5"},
               {RawKind::Number, "0.30000000000000004", "0.3"},
               {RawKind::Number, "9.9999999999", "10"},
               {RawKind::Number, "1.234", "1.234 has more than 2 decimals"},
               {RawKind::Number, "0.0000000009", "0"},
               {RawKind::Number, "0.0000000011", "0.0000000011 has more than 2 decimals"},
               {RawKind::Number, "-1e2", "-100"},
               {RawKind::Number, "9999999999999.99", "9999999999999.99"},
               {RawKind::Number, "1e13", "10000000000000 is too large"},
               {RawKind::Number, "1e15", "'1e15' is too large"},
               {RawKind::Number, "1e400", "'1e400' is not a number"},
               {RawKind::Number, "", "'' is not a number"},
               {RawKind::Text, "abc", "'abc' is text, not a number"},
               {RawKind::Text, "12", "'12' is text, not a number"},
               {RawKind::Boolean, "1", "a truth value is no number"},
               {RawKind::Error, "#REF!", "the cell shows '#REF!', not a number"},
               {RawKind::Unknown, "", "a formula without its value: save the file with a spreadsheet program"}};
  for (const auto& row : kRows) {
    std::string text;
    const auto error = errorOf([&] {
      text = values::toPlainText(cellNumber({0, row.kind, row.text}, table, kMeasures[0]));
    });
    EXPECT_EQ(error.empty() ? text : error, row.amount) << row.text;
  }
  EXPECT_EQ(values::toPlainText(cellNumber({0, RawKind::Number, "1.234"}, table, kMeasures[1])), "1.234");
  EXPECT_EQ(errorOf([&] {
              cellNumber({0, RawKind::Number, "99999999999.9999"}, table, kMeasures[1]);
            }),
            "99999999999.9999 has more than 3 decimals");
  table.lettered = false;
  table.decimalSign = ',';
  EXPECT_EQ(values::toPlainText(cellNumber({0, RawKind::Text, "1.234,5"}, table, kMeasures[0])), "1234.5");
  EXPECT_NE(errorOf([&] { cellNumber({0, RawKind::Text, "1.234"}, table, kMeasures[0]); }), "");
}

TEST(SheetCells, KeepWhatWasExportedInOneText) {
  SheetRow row;
  for (const char* value : {"100.00", "", "-0.01"})
    row.cells.push_back({*value ? Variant(*Decimal::TryParse(value)) : Variant::Null(), 1});
  EXPECT_EQ(exportedText(row), "|100.00||-0.01|");
  std::vector<Variant> values;
  ASSERT_TRUE(parseExported("|100.00||-0.01|", 3, values));
  EXPECT_EQ(shown(values), "100.00,-,-0.01");
  for (const char* other : {"", "|", "|1|2|", "|1|2|3|4|", "|1|2|3|x", "|1|2|3", "1|2|3|", "|1|x|3|", "|1| |3|"})
    EXPECT_FALSE(parseExported(other, 3, values)) << other;
}

TEST(SheetCsv, QuotesWhatWouldBeReadOtherwise) {
  std::ostringstream out;
  CsvWriter csv(out, kCsvStyles[1]);
  csv.field("a;b");
  csv.field("a,b");
  csv.field("say \"x\"");
  csv.field("two\nlines");
  csv.endLine();
  csv.value(*Decimal::TryParse("1234.5"), 2);
  csv.value(*Decimal::TryParse("0.125"), 2);
  csv.value(Variant::Null(), 2);
  csv.value("1.5", 2);
  csv.value(7);
  csv.endLine();
  EXPECT_EQ(out.str(), "\xEF\xBB\xBF\"a;b\";a,b;\"say \"\"x\"\"\";\"two\nlines\"\n1234,50;0,125;;1.5;7\n");
}

/// Sheets of 4/01 in 2025: the budget's amounts of two cards.
struct Sheets : SmallBudgets {
  std::int64_t a = card("A1"), b = card("B1", "BU65_CONTO_CG24='50010002'");
  SheetSelection selection{{year("01", 2025), {}, {}}, 0, &kMeasures[0]};
  std::filesystem::path folder =
      std::filesystem::path(testing::TempDir()) / ("sheet" + std::to_string(std::random_device{}()));

  Sheets() {
    std::filesystem::create_directories(folder);
    for (const char* text : {"0 1 100", "0 3 -0.5", "1 1 7"}) detail(a, text);
    detail(b, "0 2 5");
  }
  ~Sheets() override { std::filesystem::remove_all(folder); }

  BudgetSheet read() { return readBudgetSheet(bo, *db, selection); }
  std::string wide(std::size_t style = 0) {
    std::ostringstream out;
    writeWide(out, read(), kCsvStyles[style]);
    return out.str();
  }
  /// What a file brings, "A1 2 before>after; …", else "line: problem; …", else the refusal.
  std::string changes(const std::string& content, const char* name = "file.csv") {
    const auto file = (folder / name).string();
    if (!content.empty()) std::ofstream(file, std::ios::binary) << content;
    std::string text;
    const auto failure = failureOf([&] {
      dati::Problems problems;
      const auto sheet = readSheetFile(file, std::string(dati::encodings().front()), problems);
      const auto now = read();
      if (problems.count() == 0)
        for (const auto& change : sheetChanges(sheet, now, problems))
          text += values::toPlainText(change.row->card.codes[1]) + " " + std::to_string(change.period + 1) + " " +
                  shown(std::vector<Variant>{change.before}) + ">" + shown(std::vector<Variant>{change.after}) + "; ";
      if (problems.count() > 0) text.clear();
      for (const auto& problem : problems.sorted()) text += std::to_string(problem.line) + ": " + problem.text + "; ";
    });
    return failure.empty() ? text : failure;
  }
  static std::string with(std::string text, const std::string& from, const std::string& to) {
    const auto at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
  }
};

TEST_F(Sheets, HaveALineACardAndAColumnAPeriod) {
  const auto lines = [](const std::string& text) { return std::count(text.begin(), text.end(), '\n'); };
  const auto text = wide();
  EXPECT_EQ(lines(text), 3);
  EXPECT_EQ(text.substr(0, text.find('\n')),
            "sheet,BU65_DATAULTAGG,exported,BU65_ID,BU65_INDCOSRIC_BU07,BU65_SCHEDA_BU07,BU65_SCHEDA_BU07_DESCR,"
            "BU65_GRUPPO_CG10,BU65_CONTO_CG24,BU65_CONTO_CG24_DESCR,BU65_FLGBUDGET,BU65_FLGCFLOW,p1,p2,p3,p4");
  EXPECT_NE(text.find("bukorval|1|1|4|2025|1|0|amount|01,20250301 10:00:00,|100.00||-0.50||," + std::to_string(a) +
                      ",0,A1,A1,1,50010001,50010001 - Merci,,,100.00,,-0.50,\n"),
            std::string::npos)
      << text;
  EXPECT_NE(wide(1).find(";100,00;;-0,50;\n"), std::string::npos);
  selection.cards.cardKind = 1;
  EXPECT_EQ(lines(wide()), 1);
  selection.cards = {year("01", 2024), {}, {}};
  EXPECT_EQ(lines(wide()), 1);
}

TEST_F(Sheets, BringBackWhatWasChangedAndNothingElse) {
  for (const std::size_t style : {0U, 1U}) EXPECT_EQ(changes(wide(style)), "") << style;
  EXPECT_EQ(changes(with(wide(), ",100.00,,-0.50,\n", ",120.5,0,,-1\n")),
            "A1 1 100.00>120.5; A1 2 ->0; A1 3 -0.50>-; A1 4 ->-1; ");
  EXPECT_EQ(changes(with(wide(), ",100.00,,-0.50,\n", ",100,,-0.5, \n")), "") << "written another way";
  EXPECT_EQ(changes(with(wide(1), ";100,00;;-0,50;\n", ";1.100,00;;-0,50;\n")), "A1 1 100.00>1100; ");
}

TEST_F(Sheets, DoNotWriteOverWhatChangedSince) {
  const auto text = wide();
  db->Execute("UPDATE BU66_DETBUDGET SET BU66_IMPORTO = 101 WHERE BU66_TIPO = 0 AND BU66_PERIODO = 1");
  EXPECT_EQ(changes(text), "") << "the file did not touch it";
  EXPECT_EQ(changes(with(text, ",100.00,,-0.50,\n", ",101,,-0.50,\n")), "") << "both the same";
  const auto late = with(text, ",100.00,,-0.50,\n", ",120,,-0.50,7\n");
  EXPECT_EQ(changes(late), "2: column p1: was 100.00 at the export and is 101.00 now; ");
  db->Execute("UPDATE BU65_TESBUDGET SET BU65_DATAULTAGG = '20250402 09:00:00'");
  EXPECT_EQ(changes(late),
            "2: column p1: was 100.00 at the export and is 101.00 now; the card was last changed "
            "02/04/2025 09:00:00; ");
  db->Execute("DELETE FROM BU66_DETBUDGET WHERE BU66_PERIODO = 1");
  EXPECT_THAT(changes(late), testing::HasSubstr("was 100.00 at the export and is empty now"));
}

TEST_F(Sheets, AreRefusedLineByLine) {
  const auto text = wide(), id = std::to_string(a);
  const auto line = text.substr(text.find('\n') + 1, text.find('\n', text.find('\n') + 1) - text.find('\n'));
  const std::pair<std::string, std::string> rows[] = {
      {with(text, ",-0.50,\n", ",-0.505,\n"), "2: column p3: '-0.505' has more than 2 decimals; "},
      {with(text, ",-0.50,\n", ",-0.50\n"), "2: 15 fields where the header has 16; "},
      {with(text, "," + id + ",0,A1", ",99999,0,A1"), "2: the budget has no card '99999'; "},
      {with(text, "," + id + ",0,A1", ",x,0,A1"), "2: the budget has no card 'x'; "},
      {with(text, "," + id + ",0,A1", "," + id + ",1,A2"), "2: BU65_INDCOSRIC_BU07 of card " + id +
                                                               " is '0', not '1'; 2: BU65_SCHEDA_BU07 of card " + id +
                                                               " is 'A1', not 'A2'; "},
      {text + line, "4: card " + id + " stands twice; "},
      {with(text, "|100.00||-0.50||", "|100.00||"), "2: what was exported cannot be read: it was changed; "},
      {text + ",,,,,,,,,,,,,,,\n", ""},
      {text + ",,,,0,NEW,,,,,,,5,,,\n", "4: the line is of no card: cards are not added here; "},
      {text + "bukorval|1|1|4|2025|1|0|amount|02" + line.substr(line.find(',')), "4: the line is of another sheet; "},
      {with(text, ",p1,p2,", ",p2,p2,"), "1: column 'p2' stands twice; "},
      {with(text, ",p1,p2,", ",q1,p2,"), "1: column 'p1' is missing; 1: unknown column 'q1'; "},
      {with(text, ",BU65_SCHEDA_BU07_DESCR,", ",x,"), "1: unknown column 'x'; "},
      {with(text, "sheet,", "Sheet,"),
       "1 {} is no sheet that `bukorval export` wrote: its first column is not 'sheet'"},
      {text.substr(0, text.find('\n') + 1), "1 {} has no cards that `bukorval export` wrote"},
      {with(text, "bukorval|1|", "bukorval|2|"),
       "1 {} is no sheet that this program wrote: it names "
       "'bukorval|2|1|4|2025|1|0|amount|01'"}};
  for (auto [content, outcome] : rows) {
    if (const auto at = outcome.find("{}"); at != std::string::npos)
      outcome.replace(at, 2, (folder / "file.csv").string());
    EXPECT_EQ(changes(content), outcome) << content;
  }
}

TEST_F(Sheets, ShowTheSumOfSeveralOrdersAndDoNotWriteIt) {
  detail(a, "2 1 150");
  detail(a, "2 1 75.5");
  detail(a, "2 2 NULL");
  detail(a, "2 5 4");  // no period of the budget
  selection.kind = 2;
  EXPECT_NE(wide().find(",225.50,,,\n"), std::string::npos) << wide();
  EXPECT_EQ(changes(with(wide(), ",225.50,,,\n", ",225.50,8,,\n")), "A1 2 ->8; ");
  EXPECT_EQ(changes(with(wide(), ",225.50,,,\n", ",226,8,,\n")),
            "2: column p1: the value is the sum of several details; ");
}

TEST_F(Sheets, ComeBackFromASpreadsheetAsTheyWere) {
  insert(*db, "BU07_SCHEDECOSGEN", "BU07_DITTA_CG18=1, BU07_INDCOSRIC=0, BU07_SCHEDA='A1', BU07_DESCR='Più <altro>'");
  const auto file = (folder / "budget.xlsx").string();
  writeXlsx(read(), file);
  EXPECT_EQ(changes("", "budget.xlsx"), "");
  dati::Problems problems;
  const auto sheet = readSheetFile(file, std::string(dati::encodings().front()), problems);
  EXPECT_EQ(sheet.selection.identity(), selection.identity());
  EXPECT_TRUE(sheet.table.lettered);
  EXPECT_EQ(sheet.table.cellName(3, 0), "A3");
  EXPECT_EQ(sheet.table.cellName(12, 27), "AB12");
  db->Execute("UPDATE BU66_DETBUDGET SET BU66_IMPORTO = 100.01 WHERE BU66_PERIODO = 1");
  EXPECT_EQ(changes("", "budget.xlsx"), "") << "what only the database changed stays";
  std::ofstream(folder / "cut.xlsx", std::ios::binary) << "PK\x03\x04 and nothing more";
  EXPECT_EQ(changes("", "cut.xlsx").substr(0, 2), "1 ");
  EXPECT_EQ(changes("", "none.xlsx").substr(0, 2), "1 ");
}

TEST_F(Sheets, TellEachDetailForProgramsThatPivot) {
  detail(a, "2 1 1.5 2");
  detail(a, "2 1 2.5");
  std::ostringstream out;
  writeTidy(out, bo, *db, {selection.cards, 2, nullptr}, kCsvStyles[0]);
  const auto start = "1,4,01,2025,1," + std::to_string(a) + ",0,A1,1,50010001,,,orders,1,";
  EXPECT_EQ(out.str().substr(out.str().find('\n') + 1),
            start + "amount,1.50\n" + start + "qty1,2.000\n" + start + "amount,2.50\n");
  out.str("");
  writeTidy(out, bo, *db, {selection.cards, {}, &kMeasures[0]}, kCsvStyles[0]);
  const auto all = out.str();
  EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 7);
}

TEST_F(Sheets, TakeTheOldOnesPlaceWholeOrNotAtAll) {
  const auto file = (folder / "out.txt").string();
  const auto content = [&] {
    std::ifstream in(file);
    return std::string(std::istreambuf_iterator<char>(in), {});
  };
  const auto files = [&] { return std::distance(std::filesystem::directory_iterator(folder), {}); };
  replaceFile(file, [](const std::string& name) { std::ofstream(name) << "first"; });
  EXPECT_EQ(content(), "first");
  EXPECT_EQ(failureOf([&] {
              replaceFile(file, [](const std::string& name) {
                std::ofstream(name) << "half";
                throw dati::Refused("the disk is full");
              });
            }),
            "1 the disk is full");
  EXPECT_EQ(content(), "first");
  EXPECT_EQ(files(), 1) << "no part of it is left";
  EXPECT_EQ(failureOf([&] { replaceFile(folder.string(), [](const std::string&) {}); }),
            "1 Cannot write " + folder.string());
  EXPECT_EQ(failureOf([&] { replaceFile((folder / "no" / "out.txt").string(), [](const std::string&) {}); }),
            "1 Cannot write " + (folder / "no" / "out.txt").string());
}

}  // namespace
