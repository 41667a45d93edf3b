#include "host/environment/Progress.h"

#include <algorithm>
#include <cstdio>
#include <iostream>

#include "host/environment/Terminal.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

constexpr std::int64_t kWidth = 30;
constexpr auto kPause = std::chrono::milliseconds(100);

/// 75 seconds as 1:15.
std::string duration(std::chrono::duration<double> time) {
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time).count();
  const auto rest = std::to_string(seconds % 60);
  return std::to_string(seconds / 60) + ":" + (rest.size() < 2 ? "0" : "") + rest;
}

}  // namespace

Progress::Progress(CLSKORVAL& budget) : budget_(budget), terminal_(isTerminal(stderr)) {
  budget_.eventi.BeginProcess = [this](values::Variant& description, values::Variant& steps) {
    begin(values::toText(description), values::toInt64(steps));
  };
  budget_.eventi.StepProcess = [this](values::Variant& done) { step(values::toInt64(done)); };
  budget_.eventi.EndProcess = [this] { end(); };
}

Progress::~Progress() { budget_.eventi = {}; }

void Progress::begin(std::string_view description, std::int64_t steps) {
  description_ = description;
  steps_ = std::max<std::int64_t>(steps, 0);
  tenths_ = 0;
  begun_ = drawn_ = Clock::now();
  if (terminal_) {
    drawBar(0);
  } else {
    std::cerr << description_ << ": " << steps_ << " steps\n";
  }
}

void Progress::step(std::int64_t done) {
  if (terminal_) {
    if (const auto now = Clock::now(); now - drawn_ >= kPause || done == steps_) {
      drawn_ = now;
      drawBar(done);
    }
    return;
  }
  const auto tenths = steps_ > 0 ? done * 10 / steps_ : 0;
  if (tenths > tenths_ && tenths < 10) std::cerr << description_ << ": " << tenths * 10 << "% (" << done << ")\n";
  tenths_ = std::max(tenths, tenths_);
}

void Progress::end() {
  if (terminal_) {
    drawBar(steps_);
    std::cerr << '\n';
  } else {
    std::cerr << description_ << ": done\n";
  }
}

void Progress::drawBar(std::int64_t done) {
  const auto filled = steps_ > 0 ? std::min(kWidth, done * kWidth / steps_) : kWidth;
  const std::chrono::duration<double> elapsed = Clock::now() - begun_;
  std::cerr << "\r\033[K" << description_ << " [" << std::string(static_cast<std::size_t>(filled), '#')
            << std::string(static_cast<std::size_t>(kWidth - filled), '.') << "] " << done << "/" << steps_ << "  "
            << duration(elapsed) << " elapsed";
  if (done > 0 && done < steps_) {
    std::cerr << ", " << duration(elapsed * static_cast<double>(steps_ - done) / static_cast<double>(done)) << " left";
  }
  std::cerr << std::flush;
}

}  // namespace bukorval::host
