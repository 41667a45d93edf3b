#pragma once

#include <string>

#include "values/Variant.h"

namespace bukorval {

/// An identifier as a statement carries it: a whole number in digits. Throws for Null and for anything that is no
/// whole number, so that no other text gets between a key and its value.
std::string identificativo(const values::Variant& valore);

}  // namespace bukorval
