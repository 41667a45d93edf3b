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
  return esegui(ctx_, "RecordSetBudget", ado::RecordsetPtr{}, [&]() -> ado::RecordsetPtr {
    const auto& prop = ctx_.prop;
    const bool connesso = creaConnessioneDB(ctx_);
    const std::string elenco = Strutture(ctx_).GetElencoCampi(prop.TipoBudget, prop.SottoTipoBudget);
    if (connesso) ctx_.verifica();
    const int numeroForecast = ImpostazioniBudget(ctx_).GetNumeroForecast(prop.TipoBudget, prop.SottoTipoBudget);
    if (connesso) ctx_.verifica();
    auto griglia = CreaRecordSetBudget(elenco, numeroForecast);
    if (!griglia || !connesso) return griglia;
    const auto testo = chiedi(ctx_, GetStringaBudget(elenco, numeroForecast));
    copiaRighe(*ctx_.connessione().Execute(testo), *griglia);
    return griglia;
  });
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
    parametri.codiciDescrizioni = chiedi(ctx_, strutture.GetStringaCodiciDescrizioni(elencoCampi, "       "));
    parametri.joinDescrizioni = chiedi(ctx_, strutture.GetStringaJoinCodiciDescrizioni(elencoCampi, ""));
    ImpostazioniBudget(ctx_).GetGestioneSede(prop.TipoBudget, prop.SottoTipoBudget, parametri.gestioneSede);
    ctx_.verifica();
    return testoGrigliaBudget(ctx_, parametri);
  });
}

std::string GrigliaBudget::GetStringaDaContoAConto() {
  return esegui(ctx_, "GetStringaDaContoAConto", std::string{}, [&] {
    const auto& prop = ctx_.prop;
    const auto colonne = contoDelPiano(ctx_.dati.tipoPdc);
    TestoSql sql;
    sql.riga(" AND    ", colonne.piano, " = ", numero(ctx_.dati.codicePdc));
    if (!values::isBlank(prop.DaConto)) sql.riga(" AND    ", colonne.conto, " >= ", apici(prop.DaConto));
    if (!values::isBlank(prop.AConto)) sql.riga(" AND    ", colonne.conto, " <= ", apici(prop.AConto));
    return sql.str();
  });
}

}  // namespace bukorval
