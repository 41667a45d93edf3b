#pragma once

#include <vector>

#include "ado/connection/Connection.h"
#include "dati/DetailNames.h"
#include "object/CLSKORVAL.h"
#include "values/Variant.h"

/// What hangs on a card beside its values.
namespace bukorval::dati {

/// What the budget's grid says of one card without its figures: the columns of analysis, and the descriptions of those
/// that have one in the grid's words. The object selects the card's budget. One row, none when the card is not there.
/// Reads BU65_TESBUDGET, BU02_TESTADEST and the tables of descriptions; throws Failure when the object does not say
/// which columns there are.
ado::RecordsetPtr codesOf(CLSKORVAL& budget, ado::Connection& connection, const values::Variant& card);
/// The same of the first cards of the grid that the object selects, in its order.
/// @param count  1 or more.
ado::RecordsetPtr firstCodes(CLSKORVAL& budget, ado::Connection& connection, int count);

/// The latest order of the card that has such a value (BU66_DETBUDGET), Null when none has.
values::Variant latestOrderOf(ado::Connection& connection, const values::Variant& card, const Measure& measure);

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
