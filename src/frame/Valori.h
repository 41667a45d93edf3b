#pragma once

#include <string>

#include "frame/Contesto.h"
#include "values/Conversion.h"

/// Value helpers of the statement builders and writers. Those with a Contesto record their failures in it
/// under their own name; the others leave it alone.
namespace bukorval {

/// `ifNull` for Null, Empty and text of blanks, otherwise the value unchanged. Never fails.
values::Variant NVL(const values::Variant& valore, const values::Variant& ifNull);
/// The value as text without blanks around it, padded on the right or cut to exactly `larghezza` characters.
/// Null for Null and Empty. Never fails: a value that has no text, or a width below 0, gives Empty.
values::Variant BFill(const values::Variant& valore, int larghezza, char separatore = values::kDefaultSeparator);
/// The value as text without trailing blanks, "" for Null and Empty. Throws what has no text.
values::Variant RTrimN(const values::Variant& valore, char separatore = values::kDefaultSeparator);
/// The value as an exact decimal; the 16-bit integer 0 for Null, Empty and "". Throws for what is no number.
values::Variant CDecN(const values::Variant& valore, char separatore = values::kDefaultSeparator);

/// The date as a literal in quotes that reads the same under any language of the server, "Null" when the text
/// is no date. "" after a failure of the date service.
std::string DataDB(Contesto& ctx, const values::Variant& data);
/// Rounded half away from zero to `decimali` decimals, 18 digits at most; the 16-bit integer 0 for a blank.
values::Variant RoundZQ(Contesto& ctx, const values::Variant& valore, int decimali);
/// valore2 - valore1, Null when either is Null.
values::Variant CalcolaDelta(Contesto& ctx, const values::Variant& valore2, const values::Variant& valore1);
/// (valore2 - valore1) / valore1 as a ratio (0.25 for 25 per cent), Null when either is Null or valore1 is
/// zero or blank.
values::Variant CalcolaDeltaPercentuale(Contesto& ctx, const values::Variant& valore2, const values::Variant& valore1);
/// A new identifier of the database, 36 characters with hyphens. Never fails: Empty without one.
values::Variant GetNuovoGuidDB(Contesto& ctx);

}  // namespace bukorval
