#include "maintenance/SchedePresenti.h"

#include <utility>

#include "frame/Schede.h"
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
  const auto& prop = ctx.prop;
  TestoSql sql;
  sql.testo(" SELECT BU65_ID");
  for (const auto* colonna : colonne) sql.testo(", ", colonna->nome);
  sql.riga(" ")
      .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .riga(" WHERE  BU65_DITTA_CG18 = ", numero(ctx.sessione().CodiceDitta()))
      .riga(" AND    BU65_INDTIPO_BU01 = ", numero(prop.TipoBudget))
      .riga(" AND    BU65_SOTTOTIPO_BU01 = ", apiciRiempiti(prop.SottoTipoBudget, kLarghezzaSottoTipo))
      .riga(" AND    BU65_ANNO = ", numero(prop.AnnoEsercizio))
      .riga(" AND    BU65_PROGESER = ", numero(prop.ProgressivoEsercizio));
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
