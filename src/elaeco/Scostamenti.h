#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "ado/recordset/KeyedRows.h"
#include "frame/Contesto.h"

namespace bukorval {

/// Searches in one of the client's sets of percentages. Rows are found through keys; when the searches end, the set is
/// left as if each had been a filter: with the filter of the last one, on the first row that it shows.
class RicercaScostamenti {
 public:
  RicercaScostamenti() = default;
  ~RicercaScostamenti() { chiudi(); }
  RicercaScostamenti(const RicercaScostamenti&) = delete;
  RicercaScostamenti& operator=(const RicercaScostamenti&) = delete;

  /// Starts searching in a set, or goes on when it is the one of the last time. False for a set without rows.
  bool apri(const ado::RecordsetPtr& rst, const char* nome);
  /// Make the first matching row of the set current; false when there is none.
  bool trova(const values::Variant& conto);
  bool trova(const values::Variant& conto, const values::Variant& periodo);
  bool trovaPeriodo(const values::Variant& periodo);
  /// The value of a field in the row found.
  const values::Variant& valore(std::string_view campo) const { return (*rst_)[campo].Value(); }

 private:
  using Chiavi = std::optional<ado::KeyedRows>;
  bool cerca(Chiavi& chiavi, std::initializer_list<std::string_view> campi,
             std::initializer_list<values::Variant> cercati, std::string filtro);
  void chiudi();

  ado::RecordsetPtr rst_;
  bool conRighe_ = false;
  std::optional<std::string> filtro_;  ///< to be left on the set; nothing before the first search
  Chiavi perConto_, perContoEPeriodo_, perPeriodo_;
};

/// The deviation percentages of the balances. The rows of the client's sets count as they are when the first search
/// reaches them.
class Scostamenti {
 public:
  explicit Scostamenti(Contesto& ctx) : ctx_(ctx) {}

  /// The deviation percentage of an account and period from the source that TipoScostamento names: fixed, per account
  /// (the nearest account up the tree with a percentage other than zero), or per period. 10 means plus ten per cent.
  /// Any other source gives Empty. Outcome: 99 with " in GetPercentualeScostamento".
  values::Variant GetPercentualeScostamento(const values::Variant& conto, const values::Variant& periodo);

  /// From RstScostPerConto, walking up the account tree. The set's filter stays as the search left it.
  /// Outcome: 99 with " in GetPercentualeDaRstScostPerConto ".
  values::Variant GetPercentualeDaRstScostPerConto(values::Variant conto, const values::Variant& periodo);

  /// From RstScostPerPeriodo; an empty account looks the period up whatever its account. The set's filter stays as the
  /// search left it. Outcome: 99 with " in GetPercentualeDaRstScostPerPeriodo".
  values::Variant GetPercentualeDaRstScostPerPeriodo(const values::Variant& conto, const values::Variant& periodo);

 private:
  values::Variant percentualeDellaRiga(const values::Variant& conto, const values::Variant& periodo);

  Contesto& ctx_;
  RicercaScostamenti conti_, periodi_;
};

/// The account one level up: the last level that is not zero becomes zero; "" for an account of the first level.
values::Variant GetContoPadre(Contesto& ctx, const values::Variant& pianoConti, const values::Variant& conto);

}  // namespace bukorval
