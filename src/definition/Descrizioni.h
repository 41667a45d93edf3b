#pragma once

#include <string>

#include "frame/Contesto.h"

/// Codes in words. The contracts of public members stand in object/CLSKORVAL.h.
namespace bukorval {

std::string GetDescrizioneTipoBudget(Contesto& ctx, BdgTipo tipo);
std::string GetDescrizioneTipoBudgetShort(Contesto& ctx, BdgTipo tipo);
std::string GetDes_BdgTipoGestioneMultiAttivita(Contesto& ctx, BdgTipoGestioneMultiAttivita codice,
                                                const values::Variant& tipoDes = {});
std::string GetDes_BdgPeriodoFiscaleSolare(Contesto& ctx, BdgPeriodoFiscaleSolare codice,
                                           const values::Variant& tipoDes = {});
std::string GetDes_BdgPeriodicita(Contesto& ctx, BdgPeriodicita codice, const values::Variant& tipoDes = {});
std::string GetDes_BdgTipoPdc(Contesto& ctx, BdgTipoPdc codice, const values::Variant& tipoDes = {});
std::string GetDes_BdgSiNo(Contesto& ctx, const values::Variant& noSi, const values::Variant& tipoDes = {});

}  // namespace bukorval
