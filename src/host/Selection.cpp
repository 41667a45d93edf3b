#include "host/Selection.h"

#include "frame/TestoSql.h"
#include "host/Errors.h"
#include "values/Conversion.h"

namespace bukorval::host {

void richiedi(const Ambiente& ambiente, std::initializer_list<std::string_view> proprieta) {
  for (const auto nome : proprieta) {
    if (ambiente.scelte.proprieta.contains(std::string(nome))) continue;
    throw ErroreUso("--" + std::string(nome) + " is needed; `bukorval budgets` lists what is defined");
  }
}

void richiediDefinizione(Ambiente& ambiente) {
  richiedi(ambiente, {"TipoBudget", "SottoTipoBudget", "AnnoEsercizio"});
  const auto& oggetto = ambiente.oggetto();
  if (!ambiente.haDatabase()) return;
  TestoSql sql;
  sql.riga(" SELECT BU01_INDTIPO ")
      .riga(" FROM   BU01_ANABUDGET WITH (NOLOCK) ")
      .riga(" WHERE  BU01_INDTIPO = ", numero(oggetto.TipoBudget))
      .riga(" AND    BU01_SOTTOTIPO = ", testoDati(oggetto.SottoTipoBudget));
  if (ambiente.connessione()->Execute(sql)->RecordCount() > 0) return;
  throw Rifiuto("There is no budget of type " + numero(oggetto.TipoBudget) + ", subtype " +
                values::toPlainText(oggetto.SottoTipoBudget) + "; `bukorval budgets` lists what is defined");
}

void richiediBudget(Ambiente& ambiente) {
  richiediDefinizione(ambiente);
  auto& oggetto = ambiente.oggetto();
  if (oggetto.TipoBudget == bdgTipoSpeseGenerali) richiedi(ambiente, {"BdgTipoScheda"});
  bool perSede = false;
  oggetto.GetGestioneSede(oggetto.TipoBudget, oggetto.SottoTipoBudget, perSede);
  ambiente.controlla();
  if (perSede) richiedi(ambiente, {"CodiceSede"});
}

void selezionaDaScheda(Ambiente& ambiente, const values::Variant& scheda) {
  if (!scheda.isNumber()) throw ErroreUso("A card is given by its identifier, a whole number (BU65_ID in the grid)");
  TestoSql sql;
  sql.riga(" SELECT BU65_DITTA_CG18, BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01, ")
      .riga("        BU65_ANNO, BU65_PROGESER, BU65_CODICE_CG31, BU65_INDCOSRIC_BU07 ")
      .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .riga(" WHERE  BU65_ID = ", numero(scheda));
  const auto rs = ambiente.connessione()->Execute(sql);
  if (rs->Eof()) throw Rifiuto("There is no card " + values::toPlainText(scheda));
  const auto valore = [&](const char* campo) { return rs->Fields().Item(campo).Value(); };
  auto& oggetto = ambiente.oggetto();
  oggetto.CodiceDitta = valore("BU65_DITTA_CG18");
  oggetto.TipoBudget = values::toInt32(valore("BU65_INDTIPO_BU01"));
  oggetto.SottoTipoBudget = valore("BU65_SOTTOTIPO_BU01");
  oggetto.AnnoEsercizio = valore("BU65_ANNO");
  oggetto.ProgressivoEsercizio = valore("BU65_PROGESER");
  oggetto.CodiceSede = valore("BU65_CODICE_CG31");
  oggetto.BdgTipoScheda = valore("BU65_INDCOSRIC_BU07");
}

}  // namespace bukorval::host
