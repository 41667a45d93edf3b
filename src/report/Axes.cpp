#include "report/Axes.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <numeric>

#include "dati/Failure.h"
#include "dati/Nearest.h"
#include "definition/Colonne.h"
#include "frame/ContiPiano.h"
#include "frame/TestoSql.h"
#include "language/Language.h"
#include "values/Arithmetic.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval::report {
namespace {

using values::Variant;

constexpr std::string_view kLevel = "level:";
constexpr std::string_view kKind = "BU65_INDCOSRIC_BU07";
constexpr std::string_view kLedgerAccount = "BU65_CONTO_CG24";

/// Columns that people know by a word.
struct Word {
  std::string_view column, name;
};
constexpr Word kWords[] = {
    {"BU65_ID", "id"}, {"BU65_CODICE_CG31", "site"}, {kKind, "kind"}, {"BU65_SCHEDA_BU07", "card"}};

constexpr std::string_view kKinds[] = {"Costi", "Ricavi"};

/// BU65_AREA_MG08 is known as area.
std::string shortName(std::string_view column) {
  column.remove_prefix(std::string_view("BU65_").size());
  const auto table = column.rfind('_');
  if (table != std::string_view::npos && column.size() - table == 5) column = column.substr(0, table);
  std::string name;
  for (const char c : column) name += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return name;
}

bool isAccount(std::string_view column) {
  return std::ranges::any_of(kContiPiano, [&](const auto& account) { return account.conto == column; });
}

/// A chart of accounts, or a flag: nothing that a budget is analysed by.
bool isNoAxis(std::string_view column) {
  return column.starts_with("BU65_FLG") ||
         std::ranges::any_of(kContiPiano, [&](const auto& account) { return account.piano == column; });
}

/// The number after "level:"; 0 for anything else.
int levelNumber(std::string_view name) {
  if (!name.starts_with(kLevel)) return 0;
  name.remove_prefix(kLevel.size());
  int number = 0;
  const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
  return error == std::errc() && end == name.data() + name.size() ? number : 0;
}

std::string sqlCode(const CardAxis& axis, const std::string& code) {
  if (!axis.number) return testoDati(code);
  const bool digits = code.size() <= 10 && std::ranges::all_of(code, [](char c) { return c >= '0' && c <= '9'; });
  if (!digits) throw dati::Refused(tr("'{}' is no code of {}, which are whole numbers", code, axis.name));
  return code;
}

std::string codeCondition(const CardAxis& axis, const std::string& code) {
  if (code.empty()) return axis.column + " IS NULL";
  if (!code.ends_with('*')) return axis.expression + " = " + sqlCode(axis, code);
  if (axis.number) throw dati::Refused(tr("Codes of {} are numbers, which have no beginning: {}", axis.name, code));
  return axis.expression + " LIKE " + modelloPrefisso(std::string_view(code).substr(0, code.size() - 1));
}

/// The columns that a code's description needs beside it, before it.
std::string withParents(std::string_view column) {
  std::string list;
  for (const auto& [field, value] : colonnaBU65(column).descrizione.altre)
    if (value.starts_with("BU65_") && value != "BU65_DITTA_CG18" && value != "BU65_TIPOCF_CG44")
      list.append(value).append(",");
  return list.append(column);
}

/// "1 - Milano" without its code.
std::string withoutCode(const std::string& text) {
  const auto dash = text.find(" - ");
  return dash == std::string::npos ? text : std::string(values::trim(std::string_view(text).substr(dash + 3)));
}

}  // namespace

bool ByCode::operator()(const Variant& a, const Variant& b) const {
  if (a.isNothing() || b.isNothing()) return a.isNothing() && !b.isNothing();
  return values::compare(a, b) < 0;
}

Axes::Axes(CLSKORVAL& budget) : budget_(budget) {
  const auto list = budget.GetElencoCampi(budget.TipoBudget, budget.SottoTipoBudget);
  dati::requireSuccess(budget);
  bool account = false;
  for (const auto* column : colonneElenco(list)) {
    const std::string name(column->nome);
    if (isNoAxis(name)) continue;
    const auto* const word = std::ranges::find(kWords, column->nome, &Word::column);
    if (word != std::end(kWords)) known_.push_back({std::string(word->name), name});
    // Of several accounts the first is the account; the others keep their names.
    else if (isAccount(name) && !account)
      known_.push_back({"account", name});
    else
      known_.push_back({shortName(name), name});
    account = account || isAccount(name);
    if (name == kLedgerAccount) levels_ = budget.ActiveInterface->LunghezzeLivelli();
  }
  known_.push_back({"id", "BU65_ID"});
}

std::vector<std::string> Axes::allNames() const {
  std::vector<std::string> all;
  for (const auto& axis : known_) all.push_back(axis.name);
  return all;
}

std::string Axes::names() const {
  std::string text;
  for (const auto& axis : known_) text.append(text.empty() ? "" : ", ").append(axis.name);
  for (std::size_t i = 1; i <= levels_.size(); ++i) text.append(", ").append(kLevel).append(std::to_string(i));
  return text;
}

CardAxis Axes::find(const std::string& name) const {
  if (const auto number = levelNumber(name); number >= 1 && static_cast<std::size_t>(number) <= levels_.size())
    return level(name);
  const auto found = std::ranges::find_if(known_, [&](const auto& axis) {
    return values::compareText(axis.name, name) == 0 || values::compareText(axis.column, name) == 0;
  });
  if (found == known_.end())
    throw dati::Refused(
        tr("The budget has no axis '{}'; it has {}{}", name, names(), dati::didYouMean(name, allNames())));
  CardAxis axis{{name, found->column}, found->column, found->column, false};
  axis.number = colonnaBU65(found->column).isNumero();
  return axis;
}

/// A level is an account: its code filled up with zeros is that of the account above.
CardAxis Axes::level(const std::string& name) const {
  const auto number = levelNumber(name);
  const int kept = std::accumulate(levels_.begin(), levels_.begin() + number, 0);
  const int whole = std::accumulate(levels_.begin(), levels_.end(), 0);
  const std::string column(kLedgerAccount);
  CardAxis axis{{name, "LIVELLO" + std::to_string(number)}, column, column, false};
  if (kept < whole)
    axis.expression = "LEFT(" + column + ", " + std::to_string(kept) + ") + '" +
                      std::string(static_cast<std::size_t>(whole - kept), '0') + "'";
  return axis;
}

std::string Axes::condition(const Filter& filter) const {
  const auto axis = find(filter.axis);
  std::string text;
  for (const auto& code : filter.codes) text.append(text.empty() ? "" : " OR ").append(codeCondition(axis, code));
  return " AND    (" + text + ") \r\n";
}

Descriptions Axes::describe(ado::Connection& connection, const CardAxis& axis, std::string_view conditions) const {
  Descriptions descriptions;
  if (axis.column == kKind)
    for (int kind = 0; kind < 2; ++kind) descriptions[kind] = kKinds[kind];
  if (!colonnaBU65(axis.column).haDescrizione()) return descriptions;
  const auto columns = withParents(axis.column);
  const auto texts = budget_.GetStringaCodiciDescrizioni(columns, "       ");
  const auto joins = budget_.GetStringaJoinCodiciDescrizioni(columns);
  const auto parents = columns.substr(0, columns.size() - axis.column.size());
  TestoSql sql;
  sql.riga(";WITH CTE_CODICI AS ")
      .riga("( ")
      .riga(" SELECT DISTINCT BU65_DITTA_CG18, BU65_TIPOCF_CG44, ", parents, axis.expression, " AS ", axis.column)
      .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .testo(conditions)
      .riga(") ")
      .riga(" SELECT ", axis.column, " AS CODICE ")
      .riga(texts)
      .riga(" FROM   CTE_CODICI ")
      .riga(joins);
  const auto rs = connection.Execute(sql);
  const auto& code = (*rs)["CODICE"];
  const auto& description = (*rs)[axis.column + "_DESCR"];
  for (; !rs->Eof(); rs->MoveNext()) {
    const auto text = withoutCode(values::toPlainText(description.Value()));
    const auto [entry, added] = descriptions.emplace(code.Value(), text);
    // A code that stands for several things, each below a code of its own, has no one name.
    if (!added && entry->second != text) entry->second.clear();
  }
  return descriptions;
}

}  // namespace bukorval::report
