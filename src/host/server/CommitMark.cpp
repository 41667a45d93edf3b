#include "host/server/CommitMark.h"

#include <exception>

#include "host/server/Secrets.h"

namespace bukorval::host::server {

std::string CommitMark::now() {
  const std::lock_guard lock(mutex_);
  if (run_.empty()) run_ = secret().substr(0, 8);
  std::string mark;
  try {
    if (!connection_) {
      Environment environment;
      environment.options = shared_;
      connection_ = environment.connection();
    }
    mark = connection_->commitMark();
  } catch (const std::exception&) {
    connection_ = nullptr;  // what is asked next tells what is wrong
  }
  if (mark.empty() || mark != last_) ++count_;
  last_ = mark;
  return run_ + "." + std::to_string(count_);
}

void CommitMark::renew() {
  const std::lock_guard lock(mutex_);
  connection_ = nullptr;
  last_.clear();
}

}  // namespace bukorval::host::server
