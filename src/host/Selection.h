#pragma once

#include <initializer_list>
#include <string_view>

#include "host/Environment.h"

/// Which budget or card a command works on.
namespace bukorval::host {

/// Throws ErroreUso that names the first of these properties that was not given.
void richiedi(const Ambiente& ambiente, std::initializer_list<std::string_view> proprieta);
/// Type, subtype and year of a budget. Throws ErroreUso for what is missing, Rifiuto when no such budget is defined.
void richiediDefinizione(Ambiente& ambiente);
/// The selection of one budget grid: type, subtype and year, and where the budget asks for them site and card
/// kind.
void richiediBudget(Ambiente& ambiente);
/// Sets the object's selection to the budget a card (BU65_ID) belongs to. Throws Rifiuto when there is no
/// such card.
void selezionaDaScheda(Ambiente& ambiente, const values::Variant& scheda);

}  // namespace bukorval::host
