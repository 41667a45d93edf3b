#pragma once

#include <chrono>
#include <cmath>
#include <map>

namespace bench {

/// How long some work takes.
double seconds(const auto& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// The power of the size by which a time grows from the smallest size measured: 1 is linear.
inline double growthExponent(const std::map<long, double>& times, long size) {
  const auto [smallest, base] = *times.begin();
  return std::log(times.at(size) / base) / std::log(static_cast<double>(size) / static_cast<double>(smallest));
}

}  // namespace bench
