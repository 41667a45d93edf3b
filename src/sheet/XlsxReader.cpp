#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <pugixml.hpp>

#include "dati/Failure.h"
#include "language/Language.h"
#include "sheet/RawTable.h"
#include "sheet/ZipArchive.h"

namespace bukorval::sheet {
namespace {

constexpr std::size_t kMostLines = 1'048'576, kMostNames = 256;  ///< of a sheet; of columns with a name

/// Names without the prefixes that some writers give them.
std::string_view localName(const pugi::xml_node& node) {
  const std::string_view name = node.name();
  return name.substr(name.find(':') == std::string_view::npos ? 0 : name.find(':') + 1);
}

pugi::xml_node child(const pugi::xml_node& parent, std::string_view name) {
  return parent.find_child([&](const auto& node) { return localName(node) == name; });
}

/// All the text of a string: of its pieces, where it is formatted, without the readings of Asian scripts.
std::string textOf(const pugi::xml_node& node) {
  std::string text;
  for (const auto& part : node.children()) {
    if (localName(part) == "t") text += part.text().get();
    if (localName(part) == "r") text += textOf(part);
  }
  return text;
}

/// "D7": the column from 0 and the line from 1; false for what is no such place.
bool parsePlace(std::string_view place, std::size_t& column, std::size_t& line) {
  std::size_t letters = 0, number = 0;
  for (; letters < place.size() && place[letters] >= 'A' && place[letters] <= 'Z' && letters < 3; ++letters)
    number = number * 26 + static_cast<std::size_t>(place[letters] - 'A') + 1;
  const auto* end = place.data() + place.size();
  const auto [stopped, error] = std::from_chars(place.data() + letters, end, line);
  column = number - 1;
  return letters > 0 && error == std::errc{} && stopped == end && line > 0 && line <= kMostLines;
}

class Workbook {
 public:
  explicit Workbook(const std::string& file) : file_(file), zip_(file) {
    parse("xl/workbook.xml", workbook_);
    parse("xl/_rels/workbook.xml.rels", relations_);
    for (const auto& relation : child(relations_, "Relationships").children())
      if (ends(relation, "/sharedStrings")) readStrings(target(relation));
  }

  /// The first sheet whose first cell has this text.
  RawTable find(std::string_view firstName) {
    for (const auto& sheet : child(child(workbook_, "workbook"), "sheets").children()) {
      const auto part = partOf(sheet);
      if (!part) continue;
      auto table = readSheet(*part);
      if (!table.header.empty() && table.header.front() == firstName) return table;
    }
    refuse(tr("has no sheet that `bukorval export` wrote"));
  }

 private:
  static bool ends(const pugi::xml_node& relation, std::string_view type) {
    return std::string_view(relation.attribute("Type").value()).ends_with(type);
  }
  static std::string target(const pugi::xml_node& relation) {
    const std::string target = relation.attribute("Target").value();
    return target.starts_with('/') ? target.substr(1) : "xl/" + target;
  }

  std::optional<std::string> partOf(const pugi::xml_node& sheet) const {
    const auto id =
        sheet.find_attribute([](const auto& attribute) { return std::string_view(attribute.name()).ends_with(":id"); });
    for (const auto& relation : child(relations_, "Relationships").children())
      if (relation.attribute("Id").value() == std::string_view(id.value()) && ends(relation, "/worksheet"))
        return target(relation);
    return {};
  }

  /// Entities of a document's own are not expanded, so that none can grow.
  void parse(const std::string& part, pugi::xml_document& document) const {
    const auto text = zip_.read(part);
    if (const auto outcome = document.load_buffer(text.data(), text.size()); !outcome)
      refuse(tr("is damaged: the part {} is no XML ({})", part, outcome.description()));
  }

  void readStrings(const std::string& part) {
    pugi::xml_document document;
    parse(part, document);
    for (const auto& text : child(document, "sst").children()) strings_.push_back(textOf(text));
  }

  RawTable readSheet(const std::string& part) const {
    RawTable table;
    table.file = file_;
    table.lettered = true;
    pugi::xml_document document;
    parse(part, document);
    std::size_t line = 0;
    for (const auto& node : child(child(document, "worksheet"), "sheetData").children()) {
      RawRow row{node.attribute("r").as_uint(static_cast<unsigned>(line) + 1), {}};
      line = row.line;
      readCells(node, row);
      if (line == 1)
        takeNames(row, table);
      else if (!row.cells.empty())
        table.rows.push_back(std::move(row));
    }
    return table;
  }

  void readCells(const pugi::xml_node& node, RawRow& row) const {
    std::size_t next = 0;
    for (const auto& cell : node.children()) {
      std::size_t line = row.line;
      const auto place = cell.attribute("r");
      if (place && (!parsePlace(place.value(), next, line) || line != row.line))
        refuse(tr("is damaged: it has a cell {} in line {}", place.value(), row.line));
      addCell(cell, next++, row);
    }
  }

  void addCell(const pugi::xml_node& cell, std::size_t column, RawRow& row) const {
    const std::string_view type = cell.attribute("t").as_string("n");
    RawCell read{column, kindOf(type), type == "inlineStr" ? textOf(child(cell, "is")) : child(cell, "v").text().get()};
    if (type == "s") read.text = sharedString(read.text);
    if (read.text.empty() && child(cell, "f")) read.kind = RawKind::Unknown;
    if (!read.text.empty() || read.kind == RawKind::Unknown) row.cells.push_back(std::move(read));
  }

  static RawKind kindOf(std::string_view type) {
    if (type == "n") return RawKind::Number;
    if (type == "b") return RawKind::Boolean;
    return type == "e" ? RawKind::Error : RawKind::Text;
  }

  const std::string& sharedString(std::string_view number) const {
    std::size_t position = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), position);
    if (error != std::errc{} || end != number.data() + number.size() || position >= strings_.size())
      refuse(tr("is damaged: it has no text {}", number));
    return strings_[position];
  }

  void takeNames(const RawRow& row, RawTable& table) const {
    for (const auto& cell : row.cells) {
      if (cell.column >= kMostNames) refuse(tr("has no sheet that `bukorval export` wrote"));
      if (cell.column >= table.header.size()) table.header.resize(cell.column + 1);
      table.header[cell.column] = cell.text;
    }
  }

  [[noreturn]] void refuse(const std::string& why) const { throw dati::Refused(file_ + " " + why); }

  std::string file_;
  ZipArchive zip_;
  pugi::xml_document workbook_, relations_;
  std::vector<std::string> strings_;
};

}  // namespace

std::string RawTable::cellName(std::size_t line, std::size_t column) const {
  if (!lettered) return "";
  std::string name = std::to_string(line);
  for (auto rest = column + 1; rest > 0; rest = (rest - 1) / 26)
    name.insert(0, 1, static_cast<char>('A' + (rest - 1) % 26));
  return name;
}

RawTable readXlsx(const std::string& file, std::string_view firstName) { return Workbook(file).find(firstName); }

}  // namespace bukorval::sheet
