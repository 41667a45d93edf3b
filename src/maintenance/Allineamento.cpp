#include "maintenance/Allineamento.h"

#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "definition/Calendario.h"
#include "definition/ImpostazioniBudget.h"
#include "definition/Strutture.h"
#include "frame/Connessione.h"
#include "frame/ContiPiano.h"
#include "frame/Processo.h"
#include "frame/TestoSql.h"
#include "frame/Transazione.h"
#include "frame/Trappola.h"
#include "maintenance/ElementiBU60.h"
#include "maintenance/NuovaScheda.h"
#include "maintenance/SchedePresenti.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval {
namespace {

using values::Variant;

constexpr const char* kSede = "BU65_CODICE_CG31";
constexpr const char* kTipoScheda = "BU65_INDCOSRIC_BU07";

/// What an element means for the selected budget: its cards, one for each site.
class SchedeDellaStruttura {
 public:
  /// Refused when the structure or the selection is missing.
  explicit SchedeDellaStruttura(Contesto& ctx) : ctx_(ctx) {
    verificaSelezione();
    trovaStruttura();
    const auto& prop = ctx_.prop;
    bool perSede = false;
    ImpostazioniBudget(ctx_).GetGestioneSede(prop.TipoBudget, prop.SottoTipoBudget, perSede);
    const auto sedi = perSede ? leggiSedi() : std::vector<Variant>{};
    if (perSede && sedi.empty()) rifiutaNonDefinito("CodiceSede ");
    for (const auto& elemento : leggiElementiBU60(ctx_, struttura_)) aggiungi(elemento, perSede, sedi);
  }

  const std::vector<ElementoBU60>& schede() const { return schede_; }

  /// What tells the cards apart: a card of the budget is an element's when it has the same values in the columns that
  /// any element fixes. A chart code goes with its account and tells nothing more.
  std::vector<const Colonna*> colonne() const {
    std::vector<const Colonna*> colonne;
    for (const auto& nome : nomi_)
      if (std::ranges::find(kContiPiano, nome, &ContoPiano::piano) == std::end(kContiPiano))
        colonne.push_back(&colonnaBU65(nome));
    return colonne;
  }

  /// The columns of a new card: the element's, with the structure's chart code beside its accounts.
  ado::DictionaryPtr testata(const ElementoBU60& scheda) const {
    auto testata = std::make_shared<ado::Dictionary>();
    for (const auto& [colonna, valore] : scheda) testata->Add(colonna, valore);
    if (values::isBlank(codicePdc_)) return testata;
    for (const auto& coppia : kContiPiano)
      if (coppia.tipoPdc == tipoPdc_ && testata->Exists(coppia.conto) && !testata->Exists(coppia.piano))
        testata->Add(coppia.piano, codicePdc_);
    return testata;
  }

 private:
  void verificaSelezione() const {
    const auto& prop = ctx_.prop;
    const struct {
      const char* etichetta;
      const Variant& valore;
    } necessari[] = {{"SottoTipoBudget ", prop.SottoTipoBudget},
                     {"AnnoEsercizio ", prop.AnnoEsercizio},
                     {"ProgressivoEsercizio ", prop.ProgressivoEsercizio}};
    for (const auto& [etichetta, valore] : necessari)
      if (values::isBlank(valore)) rifiutaNonDefinito(etichetta);
    if (!Calendario(ctx_).EsisteEsercizio(ctx_.sessione().CodiceDitta(), prop.AnnoEsercizio, prop.ProgressivoEsercizio))
      rifiutaEsercizio(prop.AnnoEsercizio, prop.ProgressivoEsercizio);
  }

  void trovaStruttura() {
    const auto& prop = ctx_.prop;
    const Strutture strutture(ctx_);
    struttura_ = values::rtrim(values::toPlainText(prop.CodiceStrutturaBU60));
    if (struttura_.empty()) struttura_ = strutture.GetStrutturaBU60(prop.TipoBudget, prop.SottoTipoBudget);
    if (struttura_.empty()) rifiutaNonDefinito("CodiceStrutturaBU60 ");
    strutture.GetStrutturaBU60TipoPdcCodicePdc(struttura_, tipoPdc_, codicePdc_);
    if (tipoPdc_ == 0) rifiuta("La struttura " + struttura_ + " non esiste ");
  }

  std::vector<Variant> leggiSedi() {
    const auto& prop = ctx_.prop;
    if (prop.ElencoSedi && prop.ElencoSedi->Count() > 0) return prop.ElencoSedi->Keys();
    if (!values::isBlank(prop.CodiceSede)) return {prop.CodiceSede};
    TestoSql sql;
    sql.riga(" SELECT CG31_CODICE ")
        .riga(" FROM   CG31_SEDI WITH (NOLOCK) ")
        .riga(" WHERE  CG31_DITTA_CG18 = ", numero(ctx_.sessione().CodiceDitta()))
        .riga(" ORDER BY CG31_CODICE ");
    const auto righe = ctx_.connessione().Execute(sql);
    std::vector<Variant> sedi;
    for (; !righe->Eof(); righe->MoveNext()) sedi.push_back((*righe)["CG31_CODICE"].Value());
    return sedi;
  }

  void aggiungi(ElementoBU60 scheda, bool perSede, const std::vector<Variant>& sedi) {
    if (ctx_.prop.TipoBudget == bdgTipoSpeseGenerali) completaTipoScheda(scheda);
    if (!perSede || ha(scheda, kSede)) return aggiungiScheda(scheda);
    for (const auto& sede : sedi) {
      scheda.insert_or_assign(kSede, sede);
      aggiungiScheda(scheda);
    }
  }

  static bool ha(const ElementoBU60& scheda, const char* colonna) {
    const auto trovata = scheda.find(colonna);
    return trovata != scheda.end() && !values::isBlank(trovata->second);
  }

  /// A card without its kind would be in no grid.
  void completaTipoScheda(ElementoBU60& scheda) const {
    if (ha(scheda, kTipoScheda)) return;
    if (values::isBlank(ctx_.prop.BdgTipoScheda)) rifiutaNonDefinito("BdgTipoScheda ");
    scheda.insert_or_assign(kTipoScheda, ctx_.prop.BdgTipoScheda);
  }

  void aggiungiScheda(const ElementoBU60& scheda) {
    for (const auto& [colonna, valore] : scheda) nomi_.insert(colonna);
    schede_.push_back(scheda);
  }

  Contesto& ctx_;
  std::string struttura_;
  BdgTipoPdc tipoPdc_ = 0;
  Variant codicePdc_;
  std::vector<ElementoBU60> schede_;
  std::set<std::string> nomi_;
};

}  // namespace

void AllineaBU65_A_StrutturaBU60(Contesto& ctx) {
  esegui(ctx, "AllineaBU65_A_StrutturaBU60", [&] {
    creaConnessioneDB(ctx);
    const SchedeDellaStruttura struttura(ctx);
    Transazione transazione(ctx.connessione());
    SchedePresenti presenti(ctx, struttura.colonne());
    Processo processo(ctx, "Allineamento delle schede alla struttura del budget", struttura.schede().size());
    for (const auto& scheda : struttura.schede()) {
      if (!presenti.contiene(scheda)) {
        NuovaScheda(ctx).InserimentoNuovaSchedaBudget(struttura.testata(scheda));
        presenti.aggiungi(scheda);
      }
      processo.passo();
    }
    processo.fine();
    transazione.conferma();
  });
}

}  // namespace bukorval
