#include "dati/Codes.h"

#include <algorithm>
#include <span>
#include <utility>

#include "dati/Failure.h"
#include "dati/RowInsert.h"
#include "frame/ContiPiano.h"
#include "frame/TestoSql.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval::dati {
namespace {

using values::Variant;

constexpr std::string_view kCompany = "BU65_DITTA_CG18";
constexpr std::string_view kArticle = "BU65_CODART_MG66";
/// Instead of the column of the description, in a table that has none.
constexpr std::string_view kNoDescription = "''";

std::vector<Code> read(ado::Connection& connection, std::string_view statement) {
  std::vector<Code> codes;
  const auto rs = connection.Execute(std::string(statement));
  const auto value = [&](std::size_t position) { return rs->Fields().Item(position).Value(); };
  for (; !rs->Eof(); rs->MoveNext())
    codes.push_back({value(0), value(1), rs->Fields().Count() > 2 ? value(2) : Variant()});
  return codes;
}

/// What a key of a code's table is equal to; "" for one that tells codes of the same name apart.
std::string keyValue(const Chiave& key, const Variant& company, const Variant& chart, std::string_view chartColumn) {
  if (key.valore == kCompany) return numero(company);
  if (!key.valore.starts_with("BU65_")) return std::string(key.valore);
  const bool isChart = key.valore == chartColumn && !values::isBlank(chart);
  return isChart ? numero(chart) : "";
}

/// The company's own descriptions beside those of everybody.
std::string ownDescriptions(const Descrizione& table, const Variant& company) {
  const auto& own = table.diDitta;
  TestoSql sql;
  sql.riga("        LEFT OUTER JOIN ", own.tabella, " WITH (NOLOCK) ")
      .riga("        ON ", own.codice, " = ", table.codice);
  for (const auto& [field, value] : own.altre) {
    if (field.empty()) continue;
    const auto same = std::ranges::find(table.altre, value, &Chiave::valore);
    sql.riga("        AND ", field, " = ", same == std::end(table.altre) ? numero(company) : std::string(same->campo));
  }
  return sql.str();
}

std::string statementOf(const Descrizione& table, const Variant& company, const Variant& chart,
                        std::string_view chartColumn) {
  const bool own = !table.diDitta.tabella.empty();
  const auto description = own ? "ISNULL(" + std::string(table.diDitta.campo) + ", " + std::string(table.campo) + ")"
                               : std::string(table.campo);
  std::string parent, conditions;
  for (const auto& key : table.altre) {
    if (key.campo.empty()) continue;
    const auto value = keyValue(key, company, chart, chartColumn);
    if (value.empty())
      parent = key.campo;
    else
      conditions.append(conditions.empty() ? " WHERE  " : " AND    ")
          .append(key.campo)
          .append(" = ")
          .append(value)
          .append(" \r\n");
  }
  TestoSql sql;
  sql.riga(" SELECT ", table.codice, " AS CODICE, ", description, " AS DESCRIZIONE",
           parent.empty() ? "" : ", " + parent + " AS PADRE")
      .riga(" FROM   ", table.tabella, " WITH (NOLOCK) ");
  if (own) sql.testo(ownDescriptions(table, company));
  sql.testo(conditions).riga(" ORDER  BY ", parent.empty() ? "" : parent + ", ", table.codice);
  return sql.str();
}

using Row = std::vector<std::pair<std::string_view, Variant>>;

/// What identifies the row of a code in a table.
Row rowOf(std::string_view codeColumn, std::span<const Chiave> others, const Variant& company, const Code& code) {
  Row row{{codeColumn, code.code}};
  for (const auto& [field, value] : others) {
    if (field.empty()) continue;
    const bool literal = !value.starts_with("BU65_");
    row.emplace_back(field, value == kCompany ? company : literal ? Variant("") : code.parent);
  }
  return row;
}

std::string sqlValue(const Variant& value) { return value.isNumber() ? numero(value) : testoDati(value); }

/// @param field  of the description, "" for a table that has none.
void putRow(ado::Connection& connection, std::string_view table, const Row& key, std::string_view field,
            const Variant& description) {
  std::string condition;
  for (const auto& [name, value] : key)
    condition.append(condition.empty() ? " WHERE  " : " AND    ")
        .append(name)
        .append(" = ")
        .append(sqlValue(value))
        .append(" \r\n");
  TestoSql sql;
  sql.riga(" SELECT TOP 1 1 AS ESISTE ").riga(" FROM   ", table, " WITH (NOLOCK) ").testo(condition);
  if (connection.Execute(sql)->RecordCount() == 0) {
    RowInsert row(table);
    for (const auto& [name, value] : key) row.set(name, value);
    if (!field.empty()) row.set(field, description);
    return row.run(connection);
  }
  if (field.empty()) return;
  TestoSql update;
  update.riga(" UPDATE ", table).riga("    SET ", field, " = N", testoDati(description)).testo(condition);
  connection.Execute(update);
}

}  // namespace

std::string_view parentColumn(const Colonna& column) {
  for (const auto& key : codeTable(column).altre)
    if (key.valore.starts_with("BU65_") && key.valore != kCompany) return key.valore;
  return {};
}

void putCode(ado::Connection& connection, const Variant& company, const Colonna& column, const Code& code) {
  const auto table = codeTable(column);
  const auto& own = table.diDitta;
  const bool described = table.campo != kNoDescription;
  putRow(connection, table.tabella, rowOf(table.codice, table.altre, company, code), described ? table.campo : "",
         code.description);
  if (!described)
    putRow(connection, own.tabella, rowOf(own.codice, own.altre, company, code), own.campo, code.description);
}

std::vector<std::string> textsOf(const std::vector<Code>& codes) {
  std::vector<std::string> texts;
  for (const auto& code : codes) texts.emplace_back(values::rtrim(values::toPlainText(code.code)));
  return texts;
}

std::vector<std::string> elementCodes() {
  std::vector<std::string> codes;
  for (const auto& one : elementiStruttura()) codes.emplace_back(one.codice);
  return codes;
}

Descrizione codeTable(const Colonna& column) {
  if (column.nome != kArticle) return column.descrizione;
  Descrizione table{"MG66_ANAGART", kNoDescription, "MG66_CODART", {{"MG66_DITTA_CG18", kCompany}}};
  table.diDitta = {"MG87_DESCRARTICOLI", "MG87_DESCART", "MG87_CODART_MG66", {{"MG87_DITTA_CG18", kCompany}, {}}};
  return table;
}

Chart chartOf(CLSKORVAL& budget, const Variant& companyChart) {
  Chart chart{budget.GetTipoPdC(budget.TipoBudget, budget.SottoTipoBudget),
              budget.GetCodicePdC(budget.TipoBudget, budget.SottoTipoBudget)};
  requireSuccess(budget);
  if (values::isBlank(chart.code)) chart = {bdgPdcCoGe, companyChart};
  return chart;
}

std::vector<Code> codesOf(ado::Connection& connection, const Variant& company, const Colonna& column,
                          const Chart& chart) {
  const auto table = codeTable(column);
  if (table.tabella.empty()) return {};
  const auto* const account = std::ranges::find(kContiPiano, column.nome, &ContoPiano::conto);
  const bool ofChart = account != std::end(kContiPiano) && account->tipoPdc == chart.kind;
  return read(connection, statementOf(table, company, ofChart ? chart.code : Variant(), ofChart ? account->piano : ""));
}

std::vector<Code> accountsOf(ado::Connection& connection, const Variant& company, const Chart& chart) {
  return codesOf(connection, company, colonnaBU65(contoDelPiano(chart.kind).conto), chart);
}

std::vector<Code> structures(ado::Connection& connection) {
  TestoSql sql;
  sql.riga(" SELECT BU60_CODICE, BU60_DESCR ")
      .riga(" FROM   BU60_STRUTTANAG WITH (NOLOCK) ")
      .riga(" ORDER  BY BU60_CODICE");
  return read(connection, sql.str());
}

std::vector<Code> companies(ado::Connection& connection) {
  TestoSql sql;
  sql.riga(" SELECT CG18_CODICE, CG18_RAGSOC ")
      .riga(" FROM   CG18_ANADITTE WITH (NOLOCK) ")
      .riga(" ORDER  BY CG18_CODICE");
  return read(connection, sql.str());
}

std::vector<Code> cardCodes(ado::Connection& connection, const BudgetAnno& budget) {
  TestoSql sql;
  sql.riga(" SELECT DISTINCT BU65_SCHEDA_BU07, BU07_DESCR ")
      .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .riga("        LEFT OUTER JOIN BU07_SCHEDECOSGEN WITH (NOLOCK) ")
      .riga("        ON BU07_DITTA_CG18 = BU65_DITTA_CG18 ")
      .riga("        AND BU07_INDCOSRIC = BU65_INDCOSRIC_BU07 ")
      .riga("        AND BU07_SCHEDA = BU65_SCHEDA_BU07 ")
      .testo(condizioniSchede(budget))
      .riga(" AND    BU65_SCHEDA_BU07 IS NOT NULL ")
      .riga(" ORDER  BY BU65_SCHEDA_BU07");
  return read(connection, sql.str());
}

std::vector<Code> cards(ado::Connection& connection, const Variant& company) {
  TestoSql sql;
  sql.riga(" SELECT TOP 5000 BU65_ID, ISNULL(BU65_SCHEDA_BU07, BU65_CONTO_CG24) AS DESCRIZIONE ")
      .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .riga(" WHERE  BU65_DITTA_CG18 = ", numero(company))
      .riga(" ORDER  BY BU65_ID");
  return read(connection, sql.str());
}

}  // namespace bukorval::dati
