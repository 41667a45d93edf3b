#include <string>
#include <vector>

#include "definition/Colonne.h"
#include "definition/ImpostazioniBudget.h"
#include "definition/Slot.h"
#include "definition/Strutture.h"
#include "frame/Connessione.h"
#include "frame/Trappola.h"
#include "values/Conversion.h"
#include "values/Text.h"

/// Structure strings in columns and in words.
namespace bukorval {
namespace {

using values::Variant;

constexpr std::string_view kSede = "SED", kScheda = "SCH";

/// The element that holds the account of a budget kept on a chart of the kind.
std::string_view elementoConto(BdgTipoPdc tipo) {
  switch (tipo) {
    case bdgPdcRiclassificato: return "RIC";
    case bdgPdcAnalitico: return "PDC";
    default: return "CON";
  }
}

/// A list of columns in which none stands twice.
class Elenco {
 public:
  void aggiungi(std::string_view colonna) {
    if (colonna.empty()) return;
    for (const auto presente : presenti_)
      if (presente == colonna) return;
    presenti_.push_back(colonna);
    testo_.append(testo_.empty() ? "" : ",").append(colonna);
  }
  void aggiungiElemento(std::string_view codice) {
    for (const auto colonna : elementoStruttura(codice).colonne) aggiungi(colonna);
  }
  const std::string& testo() const { return testo_; }

 private:
  std::vector<std::string_view> presenti_;
  std::string testo_;
};

/// What the definition says; as it stands, as little as a budget can have.
struct Definizione {
  bool perSede = false;
  BdgTipoPdc tipoPdc = bdgPdcCoGe;
  std::string struttura;
};

Definizione leggiDefinizione(Contesto& ctx, const Strutture& strutture, BdgTipo tipo, const Variant& sottoTipo) {
  Definizione definizione;
  const ImpostazioniBudget impostazioni(ctx);
  definizione.struttura = strutture.GetStruttura(tipo, sottoTipo);
  impostazioni.GetGestioneSede(tipo, sottoTipo, definizione.perSede);
  definizione.tipoPdc = impostazioni.GetTipoPdC(tipo, sottoTipo);
  return definizione;
}

std::string componi(const Definizione& definizione, BdgTipo tipo) {
  Elenco elenco;
  if (definizione.perSede) elenco.aggiungiElemento(kSede);
  if (tipo == bdgTipoSpeseGenerali) elenco.aggiungiElemento(kScheda);
  if (tipo == bdgTipoMastri) elenco.aggiungiElemento(elementoConto(definizione.tipoPdc));
  perOgniElemento(definizione.struttura, [&](std::string_view codice) { elenco.aggiungiElemento(codice); });
  if (tipo == bdgTipoSpeseGenerali)
    for (const auto flag : {"BU65_FLGBUDGET", "BU65_FLGCFLOW"}) elenco.aggiungi(flag);
  if (elenco.testo().empty()) elenco.aggiungiElemento(kScheda);
  return elenco.testo();
}

}  // namespace

std::string Strutture::GetDescrizioneStruttura(const Variant& struttura) const {
  return esegui(ctx_, "GetDescrizioneStruttura", std::string(), [&] {
    std::string testo;
    perOgniElemento(values::toText(values::nvl(struttura, "")), [&](std::string_view codice) {
      testo.append(testo.empty() ? "" : ", ").append(elementoStruttura(codice).descrizione);
    });
    return testo;
  });
}

std::string Strutture::elencoSenzaConnessione(BdgTipo tipo) { return componi(Definizione{}, tipo); }

std::string Strutture::GetElencoCampi(BdgTipo tipo, const Variant& sottoTipo) const {
  std::string elenco = elencoSenzaConnessione(tipo);
  esegui(ctx_, "GetElencoCampi", [&] {
    creaConnessioneDB(ctx_);
    elenco.clear();
    elenco = componi(leggiDefinizione(ctx_, *this, tipo, sottoTipo), tipo);
  });
  return elenco;
}

}  // namespace bukorval
