#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace bukorval::host {

/// A bar with times on standard error, drawn in one line again and again; for terminals.
class ProgressBar {
 public:
  /// @param patience  how long a step lasts before it is worth a bar.
  explicit ProgressBar(std::chrono::milliseconds patience = {}) : patience_(patience) {}

  void begin(std::string_view description, std::int64_t steps);
  void step(std::int64_t done);
  void end();

 private:
  using Clock = std::chrono::steady_clock;
  void draw(std::int64_t done);

  std::chrono::milliseconds patience_;
  std::string description_;
  std::int64_t steps_ = 0;
  bool shown_ = false;
  Clock::time_point begun_, drawn_;
};

}  // namespace bukorval::host
