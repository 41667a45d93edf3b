#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "values/Decimal.h"
#include "values/Errore.h"

namespace values {

inline Decimal dec(std::string_view text) { return Decimal::TryParse(text).value(); }

/// The text of the error that the action throws.
inline std::string failure(const std::function<void()>& action) {
  try {
    action();
  } catch (const Errore& e) {
    return e.what();
  }
  return "no failure";
}

}  // namespace values
