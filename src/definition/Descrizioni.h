#pragma once

#include <string>

#include "frame/Contesto.h"

/// Codes in words. A code that does not exist gives ""; nothing is read.
/// @param tipoDes  1 asks for the short form.
namespace bukorval {

std::string GetDescrizioneTipoBudget(Contesto& ctx, BdgTipo tipo);
std::string GetDescrizioneTipoBudgetShort(Contesto& ctx, BdgTipo tipo);
std::string GetDes_BdgTipoGestioneMultiAttivita(Contesto& ctx, BdgTipoGestioneMultiAttivita codice,
                                                const values::Variant& tipoDes = {});
std::string GetDes_BdgPeriodoFiscaleSolare(Contesto& ctx, BdgPeriodoFiscaleSolare codice,
                                           const values::Variant& tipoDes = {});
std::string GetDes_BdgPeriodicita(Contesto& ctx, BdgPeriodicita codice, const values::Variant& tipoDes = {});
std::string GetDes_BdgTipoPdc(Contesto& ctx, BdgTipoPdc codice, const values::Variant& tipoDes = {});
/// 0 or False is "No", any other number or True "Sì"; "" for a blank.
std::string GetDes_BdgSiNo(Contesto& ctx, const values::Variant& noSi, const values::Variant& tipoDes = {});

}  // namespace bukorval
