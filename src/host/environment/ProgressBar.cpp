#include "host/environment/ProgressBar.h"

#include <algorithm>
#include <iostream>

#include "language/Language.h"

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

void ProgressBar::begin(std::string_view description, std::int64_t steps) {
  description_ = description;
  steps_ = std::max<std::int64_t>(steps, 0);
  shown_ = false;
  begun_ = drawn_ = Clock::now();
  if (patience_.count() == 0) draw(0);
}

void ProgressBar::step(std::int64_t done) {
  const auto now = Clock::now();
  const bool due = shown_ ? now - drawn_ >= kPause || done == steps_ : now - begun_ >= patience_;
  if (!due) return;
  drawn_ = now;
  draw(done);
}

void ProgressBar::end() {
  if (!shown_) return;
  draw(steps_);
  std::cerr << '\n';
}

void ProgressBar::draw(std::int64_t done) {
  shown_ = true;
  const auto filled = steps_ > 0 ? std::min(kWidth, done * kWidth / steps_) : kWidth;
  const std::chrono::duration<double> elapsed = Clock::now() - begun_;
  std::cerr << "\r\033[K" << description_ << " [" << std::string(static_cast<std::size_t>(filled), '#')
            << std::string(static_cast<std::size_t>(kWidth - filled), '.') << "] " << done << "/" << steps_ << "  "
            << tr("{} elapsed", duration(elapsed));
  if (done > 0 && done < steps_) {
    std::cerr << tr(", {} left", duration(elapsed * static_cast<double>(steps_ - done) / static_cast<double>(done)));
  }
  std::cerr << std::flush;
}

}  // namespace bukorval::host
