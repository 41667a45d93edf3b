#include "host/environment/BudgetName.h"

#include <regex>

#include "dati/Years.h"
#include "host/environment/Errors.h"
#include "host/environment/Selection.h"
#include "language/Language.h"

namespace bukorval::host {

BudgetAnno parseBudgetName(Environment& environment, const std::string& text) {
  static const std::regex kForm(R"((\d)/([^@/]{1,2})@(\d{4})(?:/(\d{1,2}))?)");
  std::smatch parts;
  if (!std::regex_match(text, parts, kForm))
    throw UsageError(tr("A budget is given as TYPE/SUBTYPE@YEAR, for example 4/01@2025, not {}", text));
  auto& connection = *environment.connection();
  const auto company = environment.session().CodiceDitta();
  const int type = std::stoi(parts[1]);
  const int number = std::stoi(parts[3]);
  const std::string subtype = parts[2];
  requireDefined(environment, type, subtype);
  const auto progressive = parts[4].matched ? values::Variant(std::stoi(parts[4])) : values::Variant();
  dati::requireYear(connection, company, number, progressive);
  const auto year = *dati::findYear(connection, company, number, progressive);
  return {company, type, subtype, year.year, year.progressive};
}

}  // namespace bukorval::host
