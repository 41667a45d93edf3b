#pragma once

#include <string>

#include "frame/Contesto.h"
#include "values/Conversion.h"

/// Value helpers of the statement builders and writers. Those with a Contesto record their failures in it
/// under their own name; the others leave it alone. The contracts of the public ones stand in object/CLSKORVAL.h.
namespace bukorval {

values::Variant NVL(const values::Variant& valore, const values::Variant& ifNull);
values::Variant BFill(const values::Variant& valore, int larghezza, char separatore = values::kDefaultSeparator);
/// Throws for a value that has no text.
values::Variant RTrimN(const values::Variant& valore, char separatore = values::kDefaultSeparator);
/// Throws for what is no number. The 0 of a blank is a 16-bit integer.
values::Variant CDecN(const values::Variant& valore, char separatore = values::kDefaultSeparator);

/// The date as a literal in quotes that reads the same under any language of the server, "Null" when the text
/// is no date. "" after a failure of the date service.
std::string DataDB(Contesto& ctx, const values::Variant& data);
/// Rounded half away from zero to `decimali` decimals, 18 digits at most; the 16-bit integer 0 for a blank.
values::Variant RoundZQ(Contesto& ctx, const values::Variant& valore, int decimali);
values::Variant CalcolaDelta(Contesto& ctx, const values::Variant& valore2, const values::Variant& valore1);
values::Variant CalcolaDeltaPercentuale(Contesto& ctx, const values::Variant& valore2, const values::Variant& valore1);
/// A new identifier of the database, 36 characters with hyphens. Never fails: Empty without one.
values::Variant GetNuovoGuidDB(Contesto& ctx);

}  // namespace bukorval
