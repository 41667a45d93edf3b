#pragma once

#include <vector>

#include "com/Com.h"

namespace com {

/// An enumerator of values, for "For Each".
Ref<IUnknown> enumerationOf(std::vector<OleVariant> values);
/// The same as the value of a member.
OleVariant enumerationValue(std::vector<OleVariant> values);

/// An array of values that is one for scripts: from 0, each a VARIANT.
OleVariant arrayOf(std::vector<OleVariant> values);
/// The cells of rows as [field][row], as GetRows gives them.
OleVariant tableOf(std::vector<std::vector<OleVariant>> columns);

}  // namespace com
