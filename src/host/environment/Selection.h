#pragma once

#include <initializer_list>
#include <string_view>

#include "frame/BudgetAnno.h"
#include "host/environment/Environment.h"

/// Which budget or card a command works on.
namespace bukorval::host {

/// Throws UsageError that names the first of these properties that was not given.
void requireGiven(const Environment& environment, std::initializer_list<std::string_view> properties);
/// Throws dati::Refused, with those that are, when no such budget is defined.
void requireDefined(Environment& environment, const values::Variant& type, const values::Variant& subtype);
/// The same of the budget that is selected.
void requireDefined(Environment& environment);
/// Type, subtype and year of a budget. Throws UsageError for what is missing, dati::Refused when no such budget is
/// defined or the company has no such year. Codes of the selection that there are not are told on standard error.
void requireBudget(Environment& environment);
/// Throws dati::Refused when the cards of that budget are not to be written: its accounting year is not in the
/// calendar, or closed and --force was not given; or it is locked.
void requireWritable(Environment& environment, const BudgetAnno& budget);
/// The selection of one budget grid: type, subtype and year, and where the budget asks for them site and card
/// kind.
void requireGrid(Environment& environment);
/// An open card range reaches to the budget's last code; the object's own bound, "Z", leaves out those after it.
void completeCardRange(Environment& environment);
/// Sets the object's selection to the budget a card (BU65_ID) belongs to. Throws dati::Refused when there is no
/// such card.
void selectCard(Environment& environment, const values::Variant& card);
/// Also throws dati::Refused when the budget is not to be written. What a command depends on may change while it asks
/// or waits for another run: it looks again inside its transaction.
void selectWritableCard(Environment& environment, const values::Variant& card);

}  // namespace bukorval::host
