#include "grid/GrigliaBudget.h"

#include "definition/ImpostazioniBudget.h"
#include "definition/Strutture.h"
#include "frame/Connessione.h"
#include "frame/ContiPiano.h"
#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "grid/CampiGriglia.h"
#include "grid/CopiaRighe.h"
#include "grid/TestoGriglia.h"
#include "values/Conversion.h"

namespace bukorval {
ado::RecordsetPtr GrigliaBudget::RecordSetBudget() {
  ado::RecordsetPtr griglia;
  esegui(ctx_, "RecordSetBudget", [&] {
    const auto& prop = ctx_.prop;
    // Without a connection the client gets the grid empty.
    griglia = CreaRecordSetBudget(Strutture::elencoSenzaConnessione(prop.TipoBudget), kForecastPredefiniti);
    creaConnessioneDB(ctx_);
    griglia = nullptr;
    const std::string elenco = Strutture(ctx_).GetElencoCampi(prop.TipoBudget, prop.SottoTipoBudget);
    const int numeroForecast = ImpostazioniBudget(ctx_).GetNumeroForecast(prop.TipoBudget, prop.SottoTipoBudget);
    auto piena = CreaRecordSetBudget(elenco, numeroForecast);
    const auto testo = GetStringaBudget(elenco, numeroForecast);
    copiaRighe(*ctx_.connessione().Execute(testo), *piena);
    griglia = std::move(piena);
  });
  return griglia;
}

ado::RecordsetPtr GrigliaBudget::CreaRecordSetBudget(std::string_view elencoCampi, int numeroForecast) {
  return esegui(ctx_, "CreaRecordSetBudget", ado::RecordsetPtr{},
                [&] { return creaGrigliaBudget(elencoCampi, numeroForecast); });
}

std::string GrigliaBudget::GetStringaBudget(const std::string& elencoCampi, int numeroForecast) {
  return esegui(ctx_, "GetStringaBudget", std::string{}, [&] {
    const auto& prop = ctx_.prop;
    ParametriGriglia parametri;
    parametri.elencoCampi = elencoCampi;
    parametri.numeroForecast = numeroForecast;
    Strutture strutture(ctx_);
    parametri.codiciDescrizioni = strutture.GetStringaCodiciDescrizioni(elencoCampi, "       ");
    parametri.joinDescrizioni = strutture.GetStringaJoinCodiciDescrizioni(elencoCampi, "");
    ImpostazioniBudget(ctx_).GetGestioneSede(prop.TipoBudget, prop.SottoTipoBudget, parametri.gestioneSede);
    return testoGrigliaBudget(ctx_, parametri);
  });
}

std::string GrigliaBudget::GetStringaDaContoAConto() {
  return esegui(ctx_, "GetStringaDaContoAConto", std::string{}, [&] {
    const auto& prop = ctx_.prop;
    const auto colonne = contoDelPiano(ctx_.dati.tipoPdc);
    TestoSql sql;
    sql.riga(" AND    ", colonne.piano, " = ", numero(ctx_.dati.codicePdc));
    if (!values::isBlank(prop.DaConto)) sql.riga(" AND    ", colonne.conto, " >= ", testoDati(prop.DaConto));
    if (!values::isBlank(prop.AConto)) sql.riga(" AND    ", colonne.conto, " <= ", testoDati(prop.AConto));
    return sql.str();
  });
}

}  // namespace bukorval
