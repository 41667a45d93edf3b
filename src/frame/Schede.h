#pragma once

#include "frame/Proprieta.h"
#include "values/Conversion.h"

namespace bukorval {

/// Characters of a budget subtype and of a card code, as the columns hold them.
inline constexpr int kLarghezzaSottoTipo = 2;
inline constexpr int kLarghezzaScheda = 10;

/// Gives an open card range its bounds: from one blank to "Z".
inline void completaIntervalloSchede(Proprieta& prop) {
  if (values::isBlank(prop.DaScheda)) prop.DaScheda = " ";
  if (values::isBlank(prop.AScheda)) prop.AScheda = "Z";
}

}  // namespace bukorval
