#include "maintenance/TestataScheda.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "definition/ImpostazioniBudget.h"
#include "definition/Strutture.h"
#include "frame/ContiPiano.h"
#include "frame/Inserimento.h"
#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "frame/Valori.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval {
namespace {

/// Customer or supplier, for the budget types that have one.
std::string_view tipoClienteFornitore(BdgTipo tipo) {
  switch (tipo) {
    case 0: return ", 0";
    case 1:
    case 7: return ", 1";
    default: return {};
  }
}

/// The two lists of an insert.
class ElencoColonne {
 public:
  ElencoColonne(Contesto& ctx, const ado::Dictionary& date) : ctx_(ctx), date_(date) {
    for (std::size_t i = 0; i < date.Count(); ++i) aggiungi(values::toText(date.Keys()[i]), date.Items()[i]);
  }

  const Inserimento& elenco() const { return elenco_; }

 private:
  void aggiungi(const std::string& colonna, const values::Variant& valore) {
    elenco_.colonna(colonna, testoValore(colonna, valore));
    for (const auto& coppia : kContiPiano)
      if (values::compareText(colonna, coppia.conto) == 0 && !presente(coppia.piano))
        elenco_.colonna(coppia.piano, codicePdc());
  }

  std::string testoValore(const std::string& colonna, const values::Variant& valore) {
    const auto tipo = Strutture(ctx_).GetTipoCampo(colonna);
    if (valore.isNothing()) return "NULL";
    if (valore.kind() == values::Kind::Date) return DataDB(ctx_, valore);
    switch (tipo) {
      case ado::adDecimal: return valoreDecimale(valore);
      case ado::adWChar:
      case ado::adVarWChar: return "N" + testoDati(valore);
      default: return testoDati(valore);
    }
  }

  /// The client gives the column itself, or another account has brought it.
  bool presente(std::string_view colonna) const {
    const auto& chiavi = date_.Keys();
    return elenco_.contiene(colonna) || std::any_of(chiavi.begin(), chiavi.end(), [&](const auto& chiave) {
             return values::compareText(values::toText(chiave), colonna) == 0;
           });
  }

  /// The chart of the budget's definition, read only for a card that needs it.
  const std::string& codicePdc() {
    if (!codicePdc_) {
      const auto& prop = ctx_.prop;
      const ImpostazioniBudget impostazioni(ctx_);
      ctx_.dati.tipoPdc = impostazioni.GetTipoPdC(prop.TipoBudget, prop.SottoTipoBudget);
      const auto codice = impostazioni.GetCodicePdC(prop.TipoBudget, prop.SottoTipoBudget);
      codicePdc_ = valoreDecimale(codice);
    }
    return *codicePdc_;
  }

  Contesto& ctx_;
  const ado::Dictionary& date_;
  Inserimento elenco_;
  std::optional<std::string> codicePdc_;
};

}  // namespace

std::string testoInserimentoTestata(Contesto& ctx, const ado::Dictionary& colonne, const values::Date& adesso) {
  const auto& prop = ctx.prop;
  const ElencoColonne colonneScheda(ctx, colonne);
  const Inserimento& elenco = colonneScheda.elenco();
  const auto tipoCliFor = tipoClienteFornitore(prop.TipoBudget);
  const std::string flgBudget = prop.TipoBudget == bdgTipoSpeseGenerali ? ", 1 " : ", 0 ";
  TestoSql sql;
  sql.riga(" INSERT INTO BU65_TESBUDGET ")
      .testo(" (BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01, BU65_DITTA_CG18, BU65_ANNO, BU65_PROGESER, ", elenco.colonne())
      .testo(tipoCliFor.empty() ? "" : ", BU65_TIPOCF_CG44")
      .riga(", BU65_FLGBUDGET , BU65_FLGCFLOW , BU65_DATAULTAGG )")
      .riga("VALUES")
      .testo(" (", numero(prop.TipoBudget), ", ", testoDati(prop.SottoTipoBudget), ", ")
      .testo(numero(ctx.sessione().CodiceDitta()), ", ", numero(prop.AnnoEsercizio), ", ")
      .testo(numero(prop.ProgressivoEsercizio), ", ", elenco.valori(), tipoCliFor, flgBudget, ", 0 ")
      .riga(", ", DataDB(ctx, adesso), ")");
  return sql.str();
}

}  // namespace bukorval
