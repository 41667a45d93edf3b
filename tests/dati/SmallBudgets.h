#pragma once

#include "dati/Failure.h"
#include "object/SmallBudgets.h"

namespace dati_tests {

namespace dati = bukorval::dati;
using object_tests::SmallBudgets, object_tests::shown, testing_support::insert;

/// "1 text" of what an action is refused with, "99 text" of what fails; "" when it does neither.
inline std::string failureOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const dati::Failure& failure) {
    return std::to_string(failure.state()) + " " + failure.what();
  }
  return "";
}

}  // namespace dati_tests
