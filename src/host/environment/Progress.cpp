#include "host/environment/Progress.h"

#include <algorithm>
#include <cstdio>
#include <iostream>

#include "host/environment/Terminal.h"
#include "language/Language.h"
#include "values/Conversion.h"

namespace bukorval::host {

Progress::Progress(Environment& environment)
    : budget_(environment.budget()), sink_(environment.sink()), terminal_(isTerminal(stderr)) {
  budget_.eventi.BeginProcess = [this](values::Variant& description, values::Variant& steps) {
    begin(values::toText(description), values::toInt64(steps));
  };
  budget_.eventi.StepProcess = [this](values::Variant& done) { step(values::toInt64(done)); };
  budget_.eventi.EndProcess = [this] { end(); };
}

Progress::~Progress() { budget_.eventi = {}; }

void Progress::begin(std::string_view description, std::int64_t steps) {
  if (sink_) return sink_->begin(description, steps);
  if (terminal_) return bar_.begin(description, steps);
  description_ = description;
  steps_ = std::max<std::int64_t>(steps, 0);
  tenths_ = 0;
  std::cerr << tr("{}: {} steps", description_, steps_) << '\n';
}

void Progress::step(std::int64_t done) {
  if (sink_) return sink_->step(done);
  if (terminal_) return bar_.step(done);
  const auto tenths = steps_ > 0 ? done * 10 / steps_ : 0;
  if (tenths > tenths_ && tenths < 10) std::cerr << description_ << ": " << tenths * 10 << "% (" << done << ")\n";
  tenths_ = std::max(tenths, tenths_);
}

void Progress::end() {
  if (sink_) return sink_->end();
  if (terminal_) return bar_.end();
  std::cerr << tr("{}: done", description_) << '\n';
}

}  // namespace bukorval::host
