#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "values/Conversion.h"
#include "values/Errore.h"

/// What tests of every folder use.
using values::Date, values::Decimal, values::Variant;

namespace testing_support {

/// The text of the error that an action raises; "" when it raises none.
inline std::string errorOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const values::Errore& error) {
    return error.what();
  }
  return "";
}

}  // namespace testing_support

using testing_support::errorOf;
