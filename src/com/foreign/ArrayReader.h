#pragma once

#include <vector>

#include "com/Com.h"
#include "values/Variant.h"

/// Arrays that a client's object gives.
namespace com {

/// The values of an array of one dimension, whatever its first index; objects by their default property.
std::vector<values::Variant> listOf(const VARIANT& value);
/// The cells of an array of two dimensions as [first][second].
std::vector<std::vector<values::Variant>> tableOf(const VARIANT& value);

}  // namespace com
