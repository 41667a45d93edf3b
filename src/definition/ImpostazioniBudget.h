#pragma once

#include <cstdint>
#include <string_view>

#include "frame/Contesto.h"

namespace bukorval {

/// Forecasts of a budget whose definition does not say.
inline constexpr std::int16_t kForecastPredefiniti = 1;
/// The periodicity of a budget that does not exist.
inline constexpr std::int16_t kPeriodicitaSenzaBudget = 99;

/// The questions about one budget (type and subtype): its settings, one row of BU01_ANABUDGET, whether it holds data,
/// and the elements of its structure. The contracts of public members stand in object/CLSKORVAL.h.
class ImpostazioniBudget {
 public:
  explicit ImpostazioniBudget(Contesto& ctx) : ctx_(ctx) {}

  void GetGestioneSede(BdgTipo tipo, const values::Variant& sottoTipo, bool& flag) const;
  void GetGestioneQta(BdgTipo tipo, const values::Variant& sottoTipo, bool& qta1, bool& qta2) const;
  bool GetIsGestioneMastri(BdgTipo tipo, const values::Variant& sottoTipo) const;
  BdgPeriodoFiscaleSolare GetAnnoBudgetFiscaleSolare(BdgTipo tipo, const values::Variant& sottoTipo) const;
  std::int16_t GetPeriodicitaBudget(BdgTipo tipo, const values::Variant& sottoTipo) const;
  std::int16_t GetNumeroForecast(BdgTipo tipo, const values::Variant& sottoTipo) const;
  std::int16_t GetTipoGestioneMultiAttivita(BdgTipo tipo, const values::Variant& sottoTipo) const;
  BdgTipoPdc GetTipoPdC(BdgTipo tipo, const values::Variant& sottoTipo) const;
  /// The chart kind in `ctx.dati` decides, whatever the arguments: load it first.
  values::Variant GetCodicePdC(BdgTipo tipo, const values::Variant& sottoTipo) const;
  BdgNatura GetNaturaBudget(BdgTipo tipo) const;

  bool GetIsBudgetConTestata(const values::Variant& ditta, BdgTipo tipo, const values::Variant& sottoTipo) const;
  bool GetIsBudgetConSolaTestata(const values::Variant& ditta, BdgTipo tipo, const values::Variant& sottoTipo) const;
  bool GetIsBudgetValorizzatoDitta(const values::Variant& ditta, BdgTipo tipo, const values::Variant& sottoTipo) const;
  bool GetIsBudgetValorizzato(BdgTipo tipo, const values::Variant& sottoTipo) const;

  bool GetIsStrutturaConVariante(BdgTipo tipo, const values::Variant& sottoTipo) const;
  bool GetIsElementoInStruttura(BdgTipo tipo, const values::Variant& sottoTipo, std::string_view elemento) const;
  /// Slots of a structure string that are not blank.
  std::int16_t GetBdgNrElementiInStruttura(const values::Variant& struttura) const;

 private:
  Contesto& ctx_;
};

}  // namespace bukorval
