#pragma once

#include <string>
#include <string_view>

#include "ado/Dictionary.h"
#include "object/Interfaccia.h"
#include "values/Variant.h"

/// Values as people type them on a command line.
namespace bukorval::host {

/// A whole number without leading zeros is a number ("01" is a code), "12.50" or "12,50" a decimal,
/// #2011-01-31# or #31/01/2011# a date, NULL and EMPTY (capitals) themselves, 'text' that text, anything else
/// text. Throws ErroreUso for a date that does not exist.
values::Variant leggiArgomento(std::string_view testo);
/// "1,2,3" as keys, "NAME=VALUE,NAME=VALUE" as keys with items.
ado::DictionaryPtr leggiDizionario(std::string_view testo);
/// By the type of a parameter or property; what is neither value nor dictionary throws ErroreUso.
values::Variant leggiPerTipo(std::string_view testo, TipoDato tipo, std::string_view nome);
/// Types that can be given as text.
bool siScrive(TipoDato tipo);

}  // namespace bukorval::host
