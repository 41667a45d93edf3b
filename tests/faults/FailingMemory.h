#pragma once

/// The allocations of a program that links this, and of the engine in it.
namespace faults {

/// Counts them while it is armed, and refuses some.
struct Memory {
  bool armed = false;
  bool forGood = false;  ///< those after the one that fails, too
  long allocations = 0, failAt = 0;

  bool refuses() {
    if (!armed) return false;
    ++allocations;
    return forGood ? allocations >= failAt : allocations == failAt;
  }
};
extern Memory memory;

}  // namespace faults
