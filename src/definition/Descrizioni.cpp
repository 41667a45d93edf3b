#include "definition/Descrizioni.h"

#include <span>
#include <string_view>

#include "frame/Trappola.h"
#include "values/Conversion.h"

namespace bukorval {
namespace {

using values::Variant;

struct Voce {
  std::int32_t codice;
  std::string_view estesa, breve;
};

constexpr Voce kTipiBudget[] = {
    {0, "Budget delle vendite", "Vendite"},
    {1, "Budget degli acquisti", "Acquisti"},
    {bdgTipoInvestimenti, "Budget degli investimenti", "Investimenti"},
    {3, "Budget della produzione", "Produzione"},
    {bdgTipoSpeseGenerali, "Budget delle spese generali", "Spese generali"},
    {bdgTipoMastri, "Budget economico", "Economico"},
    {6, "Budget degli agenti", "Agenti"},
    {7, "Budget delle lavorazioni esterne", "Lavorazioni esterne"},
    {8, "Budget delle commesse", "Commesse"},
    {9, "Budget delle risorse produttive", "Risorse"},
};
constexpr Voce kMultiAttivita[] = {
    {0, "Non gestita", "No"},
    {1, "Attività unica", "Unica"},
    {2, "Più attività", "Multipla"},
};
constexpr Voce kFiscaleSolare[] = {
    {bdgAnnoFiscale, "Anno fiscale", "Fiscale"},
    {bdgAnnoSolare, "Anno solare", "Solare"},
};
constexpr Voce kPeriodicita[] = {
    {0, "Mensile", "Mens."},         {1, "Bimestrale", "Bim."}, {2, "Trimestrale", "Trim."},
    {3, "Quadrimestrale", "Quadr."}, {4, "Semestrale", "Sem."}, {5, "Annuale", "Ann."},
};
constexpr Voce kTipiPdc[] = {
    {bdgPdcCoGe, "Piano dei conti di contabilità generale", "Co.Ge."},
    {bdgPdcRiclassificato, "Schema di riclassificazione", "Riclassificato"},
    {bdgPdcAnalitico, "Piano dei conti analitico", "Analitico"},
};
constexpr Voce kSiNo[] = {{0, "No", "N"}, {1, "Sì", "S"}};

constexpr std::int32_t kEstesa = 0, kBreve = 1;

std::string descrivi(Contesto& ctx, std::string_view procedura, std::span<const Voce> voci, std::int32_t codice,
                     const Variant& tipoDes) {
  return esegui(ctx, procedura, std::string(), [&] {
    const bool breve = values::toInt32(values::nvl(tipoDes, kEstesa)) == kBreve;
    for (const auto& voce : voci)
      if (voce.codice == codice) return std::string(breve ? voce.breve : voce.estesa);
    return std::string();
  });
}

}  // namespace

std::string GetDescrizioneTipoBudget(Contesto& ctx, BdgTipo tipo) {
  return descrivi(ctx, "GetDescrizioneTipoBudget", kTipiBudget, tipo, kEstesa);
}

std::string GetDescrizioneTipoBudgetShort(Contesto& ctx, BdgTipo tipo) {
  return descrivi(ctx, "GetDescrizioneTipoBudgetShort", kTipiBudget, tipo, kBreve);
}

std::string GetDes_BdgTipoGestioneMultiAttivita(Contesto& ctx, BdgTipoGestioneMultiAttivita codice,
                                                const Variant& tipoDes) {
  return descrivi(ctx, "GetDes_BdgTipoGestioneMultiAttivita", kMultiAttivita, codice, tipoDes);
}

std::string GetDes_BdgPeriodoFiscaleSolare(Contesto& ctx, BdgPeriodoFiscaleSolare codice, const Variant& tipoDes) {
  return descrivi(ctx, "GetDes_BdgPeriodoFiscaleSolare", kFiscaleSolare, codice, tipoDes);
}

std::string GetDes_BdgPeriodicita(Contesto& ctx, BdgPeriodicita codice, const Variant& tipoDes) {
  return descrivi(ctx, "GetDes_BdgPeriodicita", kPeriodicita, codice, tipoDes);
}

std::string GetDes_BdgTipoPdc(Contesto& ctx, BdgTipoPdc codice, const Variant& tipoDes) {
  return descrivi(ctx, "GetDes_BdgTipoPdc", kTipiPdc, codice, tipoDes);
}

std::string GetDes_BdgSiNo(Contesto& ctx, const Variant& noSi, const Variant& tipoDes) {
  constexpr std::string_view kNome = "GetDes_BdgSiNo";
  return esegui(ctx, kNome, std::string(), [&] {
    if (values::isBlank(noSi)) return std::string();
    return descrivi(ctx, kNome, kSiNo, values::toBool(noSi) ? 1 : 0, tipoDes);
  });
}

}  // namespace bukorval
