#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

#include "object/CLSKORVAL.h"

namespace bukorval::host {

/// Shows the object's long steps on standard error while this lives: a bar with times on a terminal, plain lines at
/// every tenth elsewhere. It follows BeginProcess, StepProcess and EndProcess.
class Progress {
 public:
  explicit Progress(CLSKORVAL& budget);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

 private:
  using Clock = std::chrono::steady_clock;
  void begin(std::string_view description, std::int64_t steps);
  void step(std::int64_t done);
  void end();
  void drawBar(std::int64_t done);

  CLSKORVAL& budget_;
  bool terminal_;
  std::string description_;
  std::int64_t steps_ = 0;
  std::int64_t tenths_ = 0;  ///< tenths already told
  Clock::time_point begun_, drawn_;
};

}  // namespace bukorval::host
