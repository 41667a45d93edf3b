#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ado/connection/Connection.h"
#include "definition/Colonne.h"
#include "frame/BudgetAnno.h"
#include "object/CLSKORVAL.h"
#include "values/Variant.h"

/// The codes that a company's data may name, and what they are called.
namespace bukorval::dati {

struct Code {
  values::Variant code, description;
  values::Variant parent;  ///< the code that it belongs to: the article of a variant; blank where there is none
};

/// Without the blanks that fill them up.
std::vector<std::string> textsOf(const std::vector<Code>& codes);

/// Of the elements that a structure may have.
std::vector<std::string> elementCodes();

/// Where the codes of a column of BU65_TESBUDGET stand: where they are described, but for articles, which need no
/// description. Its `tabella` is "" for a column whose codes stand in no table.
Descrizione codeTable(const Colonna& column);

/// A kind of chart and the code of one.
struct Chart {
  BdgTipoPdc kind = bdgPdcCoGe;
  values::Variant code;
};
/// The chart whose accounts a budget has.
/// @param companyChart  the company's general-ledger chart, for a budget that names none.
Chart chartOf(CLSKORVAL& budget, const values::Variant& companyChart);

/// The codes that a column may have, in their order; none for a column whose codes stand in no table.
/// @param chart  for the columns of accounts of its kind; those of other kinds show the codes of every chart.
std::vector<Code> codesOf(ado::Connection& connection, const values::Variant& company, const Colonna& column,
                          const Chart& chart);
/// The column of a card whose code a column's codes belong to: of a variant the article; "" where there is none.
std::string_view parentColumn(const Colonna& column);
/// Writes a code of a column into its table, or gives the one that is there a new description.
void putCode(ado::Connection& connection, const values::Variant& company, const Colonna& column, const Code& code);
/// The accounts of a chart.
std::vector<Code> accountsOf(ado::Connection& connection, const values::Variant& company, const Chart& chart);
/// The structures that cards are aligned to (BU60_STRUTTANAG).
std::vector<Code> structures(ado::Connection& connection);
/// The companies (CG18_ANADITTE).
std::vector<Code> companies(ado::Connection& connection);
/// The codes of a budget's cards (BU65_SCHEDA_BU07), each once.
std::vector<Code> cardCodes(ado::Connection& connection, const BudgetAnno& budget);
/// The first thousands of a company's cards (BU65_ID), described by their code or else by their account.
std::vector<Code> cards(ado::Connection& connection, const values::Variant& company);

}  // namespace bukorval::dati
