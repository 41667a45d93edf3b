#include "host/output/Table.h"

#include "host/output/Titles.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval::host {
namespace {

Colonna daCampo(const ado::Field& campo) {
  Colonna colonna{campo.Name(), titolo(campo.Name())};
  switch (campo.Type()) {
    case ado::adDecimal:
    case ado::adNumeric:
      colonna.numero = true;
      colonna.decimali = campo.NumericScale();
      break;
    case ado::adSmallInt:
    case ado::adInteger:
    case ado::adBigInt:
    case ado::adDouble: colonna.numero = true; break;
    default: break;
  }
  return colonna;
}

/// Fixed-length text comes padded; nobody reads the blanks.
values::Variant senzaSpaziFinali(const values::Variant& valore) {
  const auto* testo = valore.get_if<std::string>();
  return testo && testo->ends_with(' ') ? values::Variant(values::rtrim(*testo)) : valore;
}

}  // namespace

std::optional<std::size_t> Tabella::posizione(std::string_view nome) const {
  for (std::size_t i = 0; i < colonne.size(); ++i) {
    if (values::compareText(colonne[i].nome, nome) == 0) return i;
  }
  return std::nullopt;
}

void Tabella::nascondi(std::initializer_list<std::string_view> nomi) {
  for (const auto nome : nomi) {
    if (const auto i = posizione(nome)) colonne[*i].secondaria = true;
  }
}

void Tabella::somma() {
  totali.assign(colonne.size(), values::Variant::Null());
  for (std::size_t i = 0; i < colonne.size(); ++i) {
    if (!colonne[i].totale) continue;
    for (const auto& riga : righe) {
      if (riga[i].isNothing()) continue;
      totali[i] = totali[i].isNull() ? riga[i] : values::add(totali[i], riga[i]);
    }
  }
}

Tabella daRecordset(ado::Recordset& rs) {
  Tabella tabella;
  std::vector<const ado::Field*> campi;
  for (std::size_t i = 0; i < rs.Fields().Count(); ++i) {
    campi.push_back(&rs.Fields().Item(i));
    tabella.colonne.push_back(daCampo(*campi.back()));
  }
  if (rs.RecordCount() == 0) return tabella;
  for (rs.MoveFirst(); !rs.Eof(); rs.MoveNext()) {
    auto& riga = tabella.righe.emplace_back();
    riga.reserve(campi.size());
    for (const auto* campo : campi) riga.push_back(senzaSpaziFinali(campo->Value()));
  }
  rs.MoveFirst();
  return tabella;
}

}  // namespace bukorval::host
