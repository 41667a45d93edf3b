#pragma once

#include <functional>

#include "values/Variant.h"

namespace bukorval {

/// The outgoing events, raised synchronously on the caller's thread. Each step of a long operation raises BeginProcess,
/// StepProcess for each unit of work, and EndProcess, also after a failure. A handler may call the object; what its
/// arguments receive changes nothing. One that throws, or ends the operation's transaction, ends the operation with 99.
struct Eventi {
  /// A step begins: its description and how many units of work it has.
  std::function<void(values::Variant& Description, values::Variant& NumSteps)> BeginProcess;
  /// A unit of work: its number, from 1.
  std::function<void(values::Variant& StepNumber)> StepProcess;
  /// The step has ended.
  std::function<void()> EndProcess;
};

}  // namespace bukorval
