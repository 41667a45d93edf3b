#include "sheet/SheetCards.h"

#include "dati/Cards.h"
#include "dati/Failure.h"
#include "frame/TestoSql.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval::sheet {
namespace {

std::string conditions(const CardSelection& selection) {
  TestoSql sql;
  sql.testo(condizioniSchede(selection.budget));
  if (!values::isBlank(selection.site)) sql.riga(" AND    BU65_CODICE_CG31 = ", numero(selection.site));
  if (!values::isBlank(selection.cardKind)) sql.riga(" AND    BU65_INDCOSRIC_BU07 = ", numero(selection.cardKind));
  return sql.str();
}

values::Variant trimmed(const values::Variant& value) {
  const auto* text = value.get_if<std::string>();
  return text ? values::Variant(std::string(values::rtrim(*text))) : value;
}

}  // namespace

std::string keyText(const SheetCard& card, const std::vector<KeyColumn>& keys) {
  std::string text;
  for (std::size_t i = 0; i < keys.size(); ++i)
    if (!keys[i].hidden && !values::isBlank(card.codes[i]))
      text += (text.empty() ? "" : " / ") + values::toPlainText(card.codes[i]);
  return text;
}

std::vector<KeyColumn> readKeyColumns(CLSKORVAL& budget, ado::Connection& connection) {
  std::vector<KeyColumn> keys;
  const auto list = budget.GetElencoCampi(budget.TipoBudget, budget.SottoTipoBudget);
  const auto descriptions = budget.GetStringaCodiciDescrizioni(list);
  dati::requireSuccess(budget);
  for (const auto& column : dati::cardColumns(budget, connection))
    keys.push_back({column.name, column.name, descriptions.find(column.name + "_DESCR") != std::string::npos});
  return keys;
}

std::vector<SheetCard> readCards(CLSKORVAL& budget, ado::Connection& connection, const CardSelection& selection,
                                 const std::vector<KeyColumn>& keys) {
  const auto list = budget.GetElencoCampi(budget.TipoBudget, budget.SottoTipoBudget);
  TestoSql sql;
  sql.riga(" SELECT BU65_ID, BU65_DATAULTAGG, ", list, " ")
      .riga(budget.GetStringaCodiciDescrizioni(list, "       "))
      .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .riga(budget.GetStringaJoinCodiciDescrizioni(list))
      .testo(conditions(selection))
      .riga(" ORDER BY ", list, ", BU65_ID ");
  dati::requireSuccess(budget);
  const auto rs = connection.Execute(sql);
  std::vector<const ado::Field*> codes, descriptions;
  for (const auto& key : keys) {
    codes.push_back(&(*rs)[key.name]);
    descriptions.push_back(key.described ? &(*rs)[key.name + "_DESCR"] : nullptr);
  }
  const auto& id = (*rs)["BU65_ID"];
  const auto& stamp = (*rs)["BU65_DATAULTAGG"];
  std::vector<SheetCard> cards;
  for (; !rs->Eof(); rs->MoveNext()) {
    auto& card = cards.emplace_back(SheetCard{values::toInt64(id.Value()), stamp.Value(), {}, {}});
    for (const auto* code : codes) card.codes.push_back(trimmed(code->Value()));
    for (const auto* text : descriptions)
      card.descriptions.push_back(text ? trimmed(text->Value()) : values::Variant());
  }
  return cards;
}

ado::RecordsetPtr readDetails(ado::Connection& connection, const CardSelection& selection,
                              std::optional<BdgTipoDettaglio> kind) {
  TestoSql sql;
  sql.riga(" SELECT BU66_ID_BU65, BU66_TIPO, BU66_PERIODO, BU66_IMPORTO, BU66_QTA1, BU66_QTA2 ")
      .riga(" FROM   BU66_DETBUDGET WITH (NOLOCK) ")
      .riga(" INNER JOIN BU65_TESBUDGET WITH (NOLOCK) ON BU65_ID = BU66_ID_BU65 ")
      .testo(conditions(selection));
  if (kind) sql.riga(" AND    BU66_TIPO = ", numero(*kind));
  sql.riga(" ORDER BY BU66_ID_BU65, BU66_TIPO, BU66_PERIODO, BU66_ID ");
  return connection.Execute(sql);
}

}  // namespace bukorval::sheet
