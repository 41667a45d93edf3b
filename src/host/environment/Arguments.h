#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ado/Dictionary.h"
#include "object/Interfaccia.h"
#include "values/Decimal.h"
#include "values/Variant.h"

/// Values as people type them on a command line.
namespace bukorval::host {

/// A whole number without leading zeros is a number ("01" is a code), "12.50" or "12,50" a decimal,
/// #2011-01-31# or #31/01/2011# a date, NULL and EMPTY (capitals) themselves, 'text' that text, anything else
/// text. Throws UsageError for a date that does not exist and for a number that could be read two ways (1.000).
values::Variant parseArgument(std::string_view text);
/// A number by the given decimal sign. Throws UsageError for what is none or could be read two ways.
values::Decimal typedDecimal(std::string_view text, char separator);
/// A deviation by the given decimal sign, 5 or -2,5. Throws UsageError below -100, which would turn the signs, and
/// above 1000, a slip of the keyboard.
values::Decimal parsePercentage(std::string_view text, char separator);
/// The parts of a list with commas, without the blanks around them.
std::vector<std::string> split(std::string_view list);
/// "1,2,3" as keys, "NAME=VALUE,NAME=VALUE" as keys with items.
ado::DictionaryPtr parseDictionary(std::string_view text);
/// By the type of a parameter or property; what is neither value nor dictionary throws UsageError.
values::Variant parseAs(std::string_view text, TipoDato type, std::string_view name);
/// Types that can be given as text.
bool canBeText(TipoDato type);

}  // namespace bukorval::host
