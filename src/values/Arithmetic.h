#pragma once

#include "values/Variant.h"

/// Arithmetic and order of dynamic values. Failures throw Errore: "Overflow", "Division by zero", "Type mismatch: …".
namespace values {

/// Arithmetic with Null propagation and Empty as 0. Whole numbers widen as needed; a Decimal on either side
/// makes the result Decimal; otherwise a double makes it double. Division of whole numbers gives a double.
Variant add(const Variant& a, const Variant& b);
Variant subtract(const Variant& a, const Variant& b);
Variant multiply(const Variant& a, const Variant& b);
Variant divide(const Variant& a, const Variant& b);

/// Orders numbers by value, dates by time, text by its characters; a number against text compares the text as a
/// number. Null throws "Invalid use of Null".
int compare(const Variant& a, const Variant& b);

}  // namespace values
