#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace bukorval::dati {

/// Is told how the long steps of an import go on.
class ImportProgress {
 public:
  virtual ~ImportProgress() = default;
  virtual void begin(std::string_view description, std::int64_t steps) = 0;
  virtual void step(std::int64_t done) = 0;
  virtual void end() = 0;
};

/// One long step, which ends with its scope. Without anybody to tell it does nothing.
class Steps {
 public:
  Steps(ImportProgress* progress, const std::string& description, std::int64_t steps) : progress_(progress) {
    if (progress_) progress_->begin(description, steps);
  }
  ~Steps() {
    if (progress_) progress_->end();
  }
  Steps(const Steps&) = delete;
  Steps& operator=(const Steps&) = delete;

  void done(std::int64_t steps) {
    if (progress_) progress_->step(steps);
  }

 private:
  ImportProgress* progress_;
};

}  // namespace bukorval::dati
