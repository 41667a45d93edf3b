#pragma once

#include <vector>

#include "ado/connection/Connection.h"
#include "values/Variant.h"

/// What hangs on a card beside its values.
namespace bukorval::dati {

/// When it was written, and how its amounts become due dates (BU65_TESBUDGET, BU67_BDGCASHFLOW).
struct CardTerms {
  values::Variant written;
  values::Variant byHand;            ///< 1: its due dates are kept by hand
  values::Variant partyKind, party;  ///< customer or supplier
  values::Variant validFrom;
  values::Variant instalments, monthsBetween, daysToFirst;
};
/// Null values for what the card does not have.
CardTerms termsOf(ado::Connection& connection, const values::Variant& card);

/// Per cent of its movements (BU90_TABPERCBUD).
struct CardPercentage {
  values::Variant number, share, deviation;
};
std::vector<CardPercentage> percentagesOf(ado::Connection& connection, const values::Variant& card);

/// BU14_SCADCFLOW.
struct DueDate {
  values::Variant id, period, date, amount, byHand;
};
/// By day.
std::vector<DueDate> dueDatesOf(ado::Connection& connection, const values::Variant& card);

}  // namespace bukorval::dati
