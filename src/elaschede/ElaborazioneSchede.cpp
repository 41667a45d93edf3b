#include "elaschede/ElaborazioneSchede.h"

#include <cstddef>

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

  void esegui() {
    if (!prepara()) return;
    Transazione transazione(ctx_.connessione());
    const std::size_t passi = ctx_.dati.gestioneSede ? sedi().Count() : 1;
    for (std::size_t i = 0; i < passi; ++i) {
      if (ctx_.dati.gestioneSede) ctx_.prop.CodiceSede = sedi().Keys()[i];
      elaboraSede();
    }
    transazione.conferma();
  }

 private:
  bool prepara() {
    auto& prop = ctx_.prop;
    if (!creaConnessioneDB(ctx_)) return false;
    if (values::isBlank(prop.TipoElaborazioneBO)) prop.TipoElaborazioneBO = bdgElaborazioneSchede;
    if (!IsDatiInputValidi(ctx_) || !GetDatiBudget(ctx_)) return false;
    ctx_.verifica();
    if (values::isBlank(ctx_.dati.periodoIniziale) || values::isBlank(ctx_.dati.periodoFinale)) {
      ctx_.segnala(" ", kProcedura);
      return false;
    }
    if (ctx_.dati.gestioneSede) sedi();
    GetDictPeriodiDaElaborare(ctx_, periodi_);
    ctx_.verifica();
    return true;
  }

  const ado::Dictionary& sedi() const {
    if (!ctx_.prop.ElencoSedi) throw values::Errore("Object variable or With block variable not set: ElencoSedi");
    return *ctx_.prop.ElencoSedi;
  }

  void elaboraSede() {
    BdgElaSchede_GetRstBdgSchedeDaElaborare(ctx_);
    ctx_.verifica();
    // Kept alive here: a handler of the events may replace the property.
    const auto schede = ctx_.prop.RstBdgSchedeDaElaborare;
    if (!schede) return avvisaNessunaScheda();

    const auto& id = (*schede)["BU65_ID"];
    const auto& conto = (*schede)["BU65_CONTO_CG24"];
    const auto& clifor = (*schede)["BU67_CLIFOR_CG44"];
    Processo processo(ctx_.eventi, descrizione(), schede->RecordCount());
    for (schede->MoveFirst(); !schede->Eof(); schede->MoveNext()) {
      elaboraScheda({conto.Value(), clifor.Value()}, values::nvl(id.Value(), ""));
      processo.passo();
    }
    processo.fine();
  }

  void elaboraScheda(const ContoScheda& scheda, const values::Variant& id) {
    const auto movimenti = chiedi(ctx_, BdgElaSchede_GetRstMovimentiConto(ctx_, scheda));
    if (!movimenti) return;
    const auto totali = chiedi(ctx_, BdgElaSchede_GetRstBdgSchedeConsuntiviDaElaborare(ctx_));
    switch (ctx_.prop.TipoDataMovimenti) {
      case 0: BdgElaSchede_GetTotaliMovimentiPerPeriodo(ctx_, periodi_, *totali, *movimenti); break;
      case 1: BdgElaSchede_GetTotaliMovimentiPerPeriodoDiCompetenza(ctx_, periodi_, *totali, *movimenti); break;
      default: break;
    }
    ctx_.verifica();
    BdgElaSchede_UpdateBU66(ctx_, *periodi_.daElaborare, *totali, id);
    ctx_.verifica();
  }

  std::string descrizione() const {
    std::string testo = "Elaborazione schede spese generali";
    if (ctx_.dati.gestioneSede) testo += " - sede " + numero(ctx_.prop.CodiceSede);
    return testo;
  }

  void avvisaNessunaScheda() {
    std::string testo = "In base ai parametri impostati \r\n";
    testo += ctx_.dati.gestioneSede
                 ? "non sono presenti schede da elaborare per la sede " + numero(ctx_.prop.CodiceSede)
                 : std::string("non sono presenti schede da elaborare!");
    ctx_.sessione().MostraMessaggio(testo, kStileAvviso, "Elaborazione schede spese generali");
  }

  Contesto& ctx_;
  PeriodiElaborazione periodi_;
};

}  // namespace

void BdgElaSchede_Elaborazione(Contesto& ctx) {
  esegui(ctx, kProcedura, [&] { Elaborazione(ctx).esegui(); });
}

}  // namespace bukorval
