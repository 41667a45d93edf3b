#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/environment/Environment.h"
#include "host/environment/ProgressBar.h"

namespace bukorval::host {

/// Shows the object's long steps on standard error while this lives: a bar with times on a terminal, plain lines at
/// every tenth elsewhere; or hands them to the environment's sink. It follows BeginProcess, StepProcess and EndProcess.
class Progress {
 public:
  explicit Progress(Environment& environment);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

 private:
  void begin(std::string_view description, std::int64_t steps);
  void step(std::int64_t done);
  void end();

  CLSKORVAL& budget_;
  Sink* sink_;
  bool terminal_;
  ProgressBar bar_;
  std::string description_;
  std::int64_t steps_ = 0;
  std::int64_t tenths_ = 0;  ///< tenths already told
};

}  // namespace bukorval::host
