#include "elaschede/ElaborazioneSchede.h"

#include <functional>
#include <vector>

#include "definition/CaricaDatiBudget.h"
#include "elaschede/AggiornaDettagli.h"
#include "elaschede/MovimentiConto.h"
#include "elaschede/PeriodiElaborazione.h"
#include "elaschede/SelezioneSchede.h"
#include "elaschede/TotaliMovimenti.h"
#include "frame/Connessione.h"
#include "frame/Processo.h"
#include "frame/TestoSql.h"
#include "frame/Transazione.h"
#include "frame/Trappola.h"
#include "frame/Validazione.h"
#include "values/Conversion.h"
#include "values/Errore.h"

namespace bukorval {
namespace {

constexpr const char* kProcedura = "BdgElaSchede_Elaborazione";
constexpr int kStileAvviso = 48;

/// One run over the sites and their cards.
class Elaborazione {
 public:
  explicit Elaborazione(Contesto& ctx) : ctx_(ctx) { periodi_.daElaborare = std::make_shared<ado::Dictionary>(); }

  void avvia() {
    prepara();
    Transazione transazione(ctx_.connessione());
    if (!ctx_.dati.gestioneSede) elaboraSede();
    for (const auto& sede : sedi_) {
      ctx_.prop.CodiceSede = sede;
      elaboraSede();
    }
    transazione.conferma();
  }

 private:
  void prepara() {
    auto& prop = ctx_.prop;
    creaConnessioneDB(ctx_);
    if (values::isBlank(prop.TipoElaborazioneBO)) prop.TipoElaborazioneBO = bdgElaborazioneSchede;
    IsDatiInputValidi(ctx_);
    GetDatiBudget(ctx_);
    if (values::isBlank(ctx_.dati.periodoIniziale) || values::isBlank(ctx_.dati.periodoFinale))
      throw values::Errore(" ");
    if (ctx_.dati.gestioneSede) leggiSedi();
    GetDictPeriodiDaElaborare(ctx_, periodi_);
  }

  /// A copy: a handler of the events may change the client's dictionary.
  void leggiSedi() {
    if (!ctx_.prop.ElencoSedi) throw values::Errore("Object variable or With block variable not set: ElencoSedi");
    sedi_ = ctx_.prop.ElencoSedi->Keys();
  }

  void elaboraSede() {
    BdgElaSchede_GetRstBdgSchedeDaElaborare(ctx_);
    // Kept alive here: a handler of the events may replace the property.
    const auto schede = ctx_.prop.RstBdgSchedeDaElaborare;
    if (!schede) return avvisaNessunaScheda();

    const auto& id = (*schede)["BU65_ID"];
    const auto& conto = (*schede)["BU65_CONTO_CG24"];
    const auto& clifor = (*schede)["BU67_CLIFOR_CG44"];
    Processo processo(ctx_, descrizione(), schede->RecordCount());
    for (schede->MoveFirst(); !schede->Eof(); schede->MoveNext()) {
      elaboraScheda({conto.Value(), clifor.Value()}, values::nvl(id.Value(), ""));
      processo.passo();
    }
    processo.fine();
  }

  void elaboraScheda(const ContoScheda& scheda, const values::Variant& id) {
    TotaliMovimenti movimenti;
    BdgElaSchede_GetRstMovimentiConto(ctx_, scheda, [&](const ado::Recordset& movimento) -> std::function<void()> {
      switch (ctx_.prop.TipoDataMovimenti) {
        case 0: return BdgElaSchede_GetTotaliMovimentiPerPeriodo(ctx_, periodi_, movimenti, movimento);
        case 1: return BdgElaSchede_GetTotaliMovimentiPerPeriodoDiCompetenza(ctx_, periodi_, movimenti, movimento);
        default: return [&] { movimenti.conta(); };
      }
    });
    if (!movimenti.trovati()) return;
    const auto totali = BdgElaSchede_GetRstBdgSchedeConsuntiviDaElaborare(ctx_);
    movimenti.scrivi(*totali);
    BdgElaSchede_UpdateBU66(ctx_, *periodi_.daElaborare, *totali, id);
  }

  std::string descrizione() const {
    std::string testo = "Elaborazione schede spese generali";
    if (ctx_.dati.gestioneSede) testo += " - sede " + values::toPlainText(ctx_.prop.CodiceSede);
    return testo;
  }

  void avvisaNessunaScheda() {
    std::string testo = "In base ai parametri impostati \r\n";
    testo += ctx_.dati.gestioneSede
                 ? "non sono presenti schede da elaborare per la sede " + values::toPlainText(ctx_.prop.CodiceSede)
                 : std::string("non sono presenti schede da elaborare!");
    ctx_.sessione().MostraMessaggio(testo, kStileAvviso, "Elaborazione schede spese generali");
  }

  Contesto& ctx_;
  PeriodiElaborazione periodi_;
  std::vector<values::Variant> sedi_;  ///< empty for a budget that is not kept by site
};

}  // namespace

void BdgElaSchede_Elaborazione(Contesto& ctx) {
  esegui(ctx, kProcedura, [&] { Elaborazione(ctx).avvia(); });
}

}  // namespace bukorval
