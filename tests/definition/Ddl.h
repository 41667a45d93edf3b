#pragma once

#include <fstream>
#include <map>
#include <regex>
#include <string>

namespace definition_tests {

/// The columns of the tables as the statement files declare them: DDL["CG31_SEDI"]["CG31_CODICE"] is "DECIMAL(2,0)".
using Ddl = std::map<std::string, std::map<std::string, std::string>>;

inline Ddl leggiDdl() {
  static const std::regex tabella(R"(CREATE TABLE (\w+) \()"), colonna(R"(\s+(\w+)\s+([A-Z]+(\([0-9,]+\))?).*NULL.*)");
  Ddl ddl;
  for (const char* nome : {"10_suite", "20_accounts", "30_movements", "40_codes", "50_budget"}) {
    std::ifstream file(std::string(BUKORVAL_SOURCE_DIR) + "/schema/" + nome + ".sql");
    std::string riga, corrente;
    std::smatch trovato;
    while (std::getline(file, riga)) {
      if (std::regex_search(riga, trovato, tabella)) corrente = trovato[1];
      if (std::regex_match(riga, trovato, colonna)) ddl[corrente][trovato[1]] = trovato[2];
    }
  }
  return ddl;
}

}  // namespace definition_tests
