#pragma once

#include <functional>

#include "values/Variant.h"

namespace bukorval {

/// The outgoing events, raised synchronously on the caller's thread.
struct Eventi {
  std::function<void(values::Variant& Description, values::Variant& NumSteps)> BeginProcess;
  std::function<void(values::Variant& StepNumber)> StepProcess;
  std::function<void()> EndProcess;
};

}  // namespace bukorval
