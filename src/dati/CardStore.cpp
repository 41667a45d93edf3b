#include "dati/CardStore.h"

#include <cstdint>
#include <memory>

#include "ado/Dictionary.h"
#include "frame/BudgetAnno.h"
#include "frame/TestoSql.h"
#include "host/Errors.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

std::string condizione(const values::Variant& valore) {
  if (valore.isNothing()) return " IS NULL";
  return " = " + (valore.isNumber() ? numero(valore) : testoDati(valore));
}

std::string descrizione(const ChiaveScheda& chiave) {
  std::string testo;
  for (const auto& [colonna, valore] : chiave) {
    testo += (testo.empty() ? "" : ", ") + colonna + " = " + values::toPlainText(valore);
  }
  return testo;
}

}  // namespace

std::optional<values::Variant> SchedeBudget::trova(const ChiaveScheda& chiave) {
  const auto& oggetto = ambiente_.oggetto();
  TestoSql sql;
  sql.riga(" SELECT BU65_ID ")
      .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .testo(condizioniSchede(budgetScelto(oggetto)));
  for (const auto& [colonna, valore] : chiave) sql.riga(" AND    ", colonna, condizione(valore));
  const auto rs = ambiente_.connessione()->Execute(sql);
  if (rs->RecordCount() > 1) throw Rifiuto("Several cards have " + descrizione(chiave));
  if (rs->RecordCount() == 0) return std::nullopt;
  return rs->Fields().Item("BU65_ID").Value();
}

values::Variant SchedeBudget::trovaOCrea(const ChiaveScheda& chiave) {
  const auto& oggetto = ambiente_.oggetto();
  const auto nome = values::toPlainText(oggetto.AnnoEsercizio) + "\n" + descrizione(chiave);
  if (const auto nota = trovate_.find(nome); nota != trovate_.end()) return nota->second;
  auto scheda = trova(chiave);
  if (!scheda) {
    auto dizionario = std::make_shared<ado::Dictionary>();
    for (const auto& [colonna, valore] : chiave) {
      if (!valore.isNothing()) dizionario->Add(colonna, valore);
    }
    ambiente_.oggetto().InserimentoNuovaSchedaBudget(dizionario);
    ambiente_.controlla();
    ++create_;
    scheda = trova(chiave);
    if (!scheda) throw Rifiuto("No card was made for " + descrizione(chiave));
  }
  return trovate_.emplace(nome, *scheda).first->second;
}

void SchedeBudget::scrivi(const values::Variant& scheda, BdgTipoDettaglio tipo, int periodo, BdgTipoValore misura,
                          const values::Variant& valore) {
  auto& oggetto = ambiente_.oggetto();
  values::Variant dettaglio, vuoto, nuovo;
  oggetto.GetBdgDettaglioEsiste(scheda, tipo, periodo, dettaglio, vuoto);
  ambiente_.controlla();
  oggetto.AggiornaSingoloValoreBU66(dettaglio, scheda, tipo, misura, static_cast<std::int16_t>(periodo), valore, nuovo);
  ambiente_.controlla();
}

}  // namespace bukorval::host
