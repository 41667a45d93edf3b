#pragma once

#include <cstdint>
#include <string_view>

#include "frame/Contesto.h"

namespace bukorval {

/// Forecasts of a budget whose definition does not say.
inline constexpr std::int16_t kForecastPredefiniti = 1;
/// The periodicity of a budget that does not exist.
inline constexpr std::int16_t kPeriodicitaSenzaBudget = 99;

/// The questions about one budget (type and subtype): its settings, one row of BU01_ANABUDGET, whether it
/// holds data, and the elements of its structure. Each answers its default after a failure (99) and without a
/// connection.
class ImpostazioniBudget {
 public:
  explicit ImpostazioniBudget(Contesto& ctx) : ctx_(ctx) {}

  /// Whether cards are kept per site; false for a budget that does not exist.
  void GetGestioneSede(BdgTipo tipo, const values::Variant& sottoTipo, bool& flag) const;
  /// Whether quantity 1 and quantity 2 are kept; both false for a budget that does not exist.
  void GetGestioneQta(BdgTipo tipo, const values::Variant& sottoTipo, bool& qta1, bool& qta2) const;
  bool GetIsGestioneMastri(BdgTipo tipo, const values::Variant& sottoTipo) const;
  /// 1 months counted from January (also the default), 0 from the start of the accounting year.
  BdgPeriodoFiscaleSolare GetAnnoBudgetFiscaleSolare(BdgTipo tipo, const values::Variant& sottoTipo) const;
  /// 0 to 5; 99 for a budget that does not exist. A Null column is an error.
  std::int16_t GetPeriodicitaBudget(BdgTipo tipo, const values::Variant& sottoTipo) const;
  /// 1 when unknown or not set.
  std::int16_t GetNumeroForecast(BdgTipo tipo, const values::Variant& sottoTipo) const;
  std::int16_t GetTipoGestioneMultiAttivita(BdgTipo tipo, const values::Variant& sottoTipo) const;
  /// Chart kind 1 to 3. Only type 5 chooses its chart; every other type is kept on the general ledger, 1.
  BdgTipoPdc GetTipoPdC(BdgTipo tipo, const values::Variant& sottoTipo) const;
  /// Chart code. On the general ledger (the loaded definition's chart kind) the property
  /// `CodicePdcCoGeDitta`, which takes the session's when it is not set; otherwise the definition's, 0 for a
  /// budget that does not exist.
  values::Variant GetCodicePdC(BdgTipo tipo, const values::Variant& sottoTipo) const;
  BdgNatura GetNaturaBudget(BdgTipo tipo) const;

  /// Whether the company has a card of the budget.
  bool GetIsBudgetConTestata(const values::Variant& ditta, BdgTipo tipo, const values::Variant& sottoTipo) const;
  /// Whether it has cards and none of them a detail.
  bool GetIsBudgetConSolaTestata(const values::Variant& ditta, BdgTipo tipo, const values::Variant& sottoTipo) const;
  /// Whether the company holds data of the budget, in the table that the property `TipoBudget` stands for.
  bool GetIsBudgetValorizzatoDitta(const values::Variant& ditta, BdgTipo tipo, const values::Variant& sottoTipo) const;
  /// The same for any company.
  bool GetIsBudgetValorizzato(BdgTipo tipo, const values::Variant& sottoTipo) const;

  bool GetIsStrutturaConVariante(BdgTipo tipo, const values::Variant& sottoTipo) const;
  bool GetIsElementoInStruttura(BdgTipo tipo, const values::Variant& sottoTipo, std::string_view elemento) const;
  /// Slots of a structure string that are not blank.
  std::int16_t GetBdgNrElementiInStruttura(const values::Variant& struttura) const;

 private:
  Contesto& ctx_;
};

}  // namespace bukorval
