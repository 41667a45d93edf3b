#include <fstream>
#include <regex>

#include "definition/Colonne.h"
#include "support/Test.h"

namespace {

/// The columns of the tables as the statement files declare them: declared["CG31_SEDI"]["CG31_CODICE"] is
/// "DECIMAL(2,0)".
const auto& declared() {
  static const auto columns = [] {
    const std::regex table(R"(CREATE TABLE (\w+) \()"), column(R"(\s+(\w+)\s+([A-Z]+(\([0-9,]+\))?).*NULL.*)");
    std::map<std::string, std::map<std::string, std::string>, std::less<>> found;
    for (const char* name : {"10_suite", "20_accounts", "30_movements", "40_codes", "50_budget"}) {
      std::ifstream file(std::string(BUKORVAL_SOURCE_DIR) + "/schema/" + name + ".sql");
      std::smatch match;
      for (std::string line, current; std::getline(file, line);) {
        if (std::regex_search(line, match, table)) current = match[1];
        if (std::regex_match(line, match, column)) found[current][match[1]] = match[2];
      }
    }
    return found;
  }();
  return columns;
}

std::string typeOf(std::string_view table, std::string_view column) {
  const auto found = declared().find(table);
  if (found == declared().end()) return "no " + std::string(table);
  const auto cell = found->second.find(std::string(column));
  return cell == found->second.end() ? "no " + std::string(column) : cell->second;
}

std::string typeOf(const bukorval::Colonna& column) {
  const auto length = std::to_string(column.lunghezza);
  switch (column.tipo) {
    case ado::adChar: return "CHAR(" + length + ")";
    case ado::adVarWChar: return "NVARCHAR(" + length + ")";
    case ado::adDecimal: return "DECIMAL(" + length + ",0)";
    case ado::adSmallInt: return "SMALLINT";
    case ado::adDBTimeStamp: return "DATETIME";
    default: return "?";
  }
}

/// A description's table has the columns that the join names, with the types of what they are joined to.
template <class Description>
void expectKeysOfTheirType(const Description& description, const bukorval::Colonna& column) {
  EXPECT_TRUE(typeOf(description.tabella, description.campo).starts_with("NVARCHAR")) << column.nome;
  EXPECT_EQ(typeOf(description.tabella, description.codice), typeOf(column)) << column.nome;
  for (const auto& [field, value] : description.altre)
    if (value.starts_with("BU65_")) {
      EXPECT_EQ(typeOf(description.tabella, field), typeOf(bukorval::colonnaBU65(value))) << column.nome;
    }
}

TEST(Colonne, AgreeWithTheTables) {
  EXPECT_EQ(declared().find("BU65_TESBUDGET")->second.size(), bukorval::colonneBU65().size());
  for (const auto& column : bukorval::colonneBU65()) {
    EXPECT_EQ(typeOf("BU65_TESBUDGET", column.nome), typeOf(column)) << column.nome;
    if (!column.haDescrizione()) continue;
    expectKeysOfTheirType(column.descrizione, column);
    if (!column.descrizione.diDitta.tabella.empty()) expectKeysOfTheirType(column.descrizione.diDitta, column);
  }
  EXPECT_EQ(bukorval::colonnaBU65(" bu65_area_mg08 ").nome, "BU65_AREA_MG08");
  EXPECT_THROW(bukorval::colonnaBU65("BU65_AREA"), values::Errore);
}

TEST(Colonne, EveryAnalysisColumnBelongsToAnElement) {
  std::set<std::string_view> codes, columns;
  for (const auto& element : bukorval::elementiStruttura()) {
    EXPECT_EQ(element.codice.size(), 3u) << element.codice;
    EXPECT_TRUE(codes.insert(element.codice).second) << element.codice;
    for (const auto column : element.colonne)
      if (!column.empty()) columns.insert(bukorval::colonnaBU65(column).nome);
  }
  for (const auto& column : bukorval::colonneBU65())
    EXPECT_TRUE(columns.contains(column.nome) || !column.haDescrizione()) << column.nome;
}

}  // namespace
