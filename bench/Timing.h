#pragma once

#include <chrono>
#include <cmath>
#include <ctime>
#include <map>

namespace bench {

/// How long some work takes.
double seconds(const auto& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Two ways that do the same work, timed in turn so that a machine that slows down slows them alike.
class Race {
 public:
  /// Gives the first way's time on the clock.
  double run(const auto& first, const auto& second) {
    const double once = add(first, 0);
    add(second, 1);
    return once;
  }
  double ratio() const { return clock_[0] / clock_[1]; }
  /// Of this process's CPU alone: what a server does is not in it.
  double ratioOfClient() const { return cpu_[0] / cpu_[1]; }

 private:
  double add(const auto& work, int way) {
    const auto before = std::clock();
    const double once = seconds(work);
    cpu_[way] += static_cast<double>(std::clock() - before);
    clock_[way] += once;
    return once;
  }
  double clock_[2] = {}, cpu_[2] = {};
};

/// The power of the size by which a time grows from the smallest size measured: 1 is linear.
inline double growthExponent(const std::map<long, double>& times, long size) {
  const auto [smallest, base] = *times.begin();
  return std::log(times.at(size) / base) / std::log(static_cast<double>(size) / static_cast<double>(smallest));
}

}  // namespace bench
