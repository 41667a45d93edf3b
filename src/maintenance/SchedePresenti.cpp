#include "maintenance/SchedePresenti.h"

#include <utility>

#include "frame/BudgetAnno.h"
#include "frame/TestoSql.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval {
namespace {

/// Cannot stand in a code.
constexpr char kSeparatore = '\x1f';

void accoda(std::string& chiave, const Colonna& colonna, const values::Variant& valore) {
  if (!values::isBlank(valore))
    chiave += colonna.isNumero() ? values::toDecimal(valore).normalized().toString()
                                 : values::foldText(values::toPlainText(valore));
  chiave += kSeparatore;
}

std::string testoSchede(const Contesto& ctx, const std::vector<const Colonna*>& colonne) {
  auto budget = budgetScelto(ctx.prop);
  budget.ditta = ctx.sessione().CodiceDitta();
  TestoSql sql;
  sql.testo(" SELECT BU65_ID");
  for (const auto* colonna : colonne) sql.testo(", ", colonna->nome);
  sql.riga(" ").riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ").testo(condizioniSchede(budget));
  return sql.str();
}

}  // namespace

SchedePresenti::SchedePresenti(Contesto& ctx, std::vector<const Colonna*> colonne) : colonne_(std::move(colonne)) {
  const auto righe = ctx.connessione().Execute(testoSchede(ctx, colonne_));
  std::vector<const ado::Field*> campi;
  for (const auto* colonna : colonne_) campi.push_back(&righe->Fields().Item(colonna->nome));
  for (; !righe->Eof(); righe->MoveNext()) {
    std::string chiave;
    for (std::size_t i = 0; i < campi.size(); ++i) accoda(chiave, *colonne_[i], campi[i]->Value());
    chiavi_.insert(std::move(chiave));
  }
}

std::string SchedePresenti::chiave(const ElementoBU60& scheda) const {
  std::string chiave;
  for (const auto* colonna : colonne_) {
    const auto valore = scheda.find(std::string(colonna->nome));
    accoda(chiave, *colonna, valore == scheda.end() ? values::Variant::Null() : valore->second);
  }
  return chiave;
}

}  // namespace bukorval
