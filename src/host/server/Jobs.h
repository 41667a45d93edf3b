#pragma once

#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "host/server/Operations.h"

namespace bukorval::host::server {

/// Commands that run on while nobody waits, and what has become of them.
class Jobs {
 public:
  Jobs(Operations& operations, std::size_t atOnce) : operations_(operations), atOnce_(atOnce) {}
  /// Ends those that run; what they would have written is not written.
  ~Jobs();
  Jobs(const Jobs&) = delete;
  Jobs& operator=(const Jobs&) = delete;

  Reply start(std::string_view command, const std::string& body, const std::string& user);
  Reply look(const std::string& id);
  /// A job that still runs is ended first; it leaves nothing behind, unless it was done already: the reply tells.
  Reply forget(const std::string& id);
  /// Tells those that run to end.
  void stop();
  /// Waits until they have.
  void wait();

 private:
  class Job;
  std::shared_ptr<Job> find(const std::string& id);
  void forgetOldest();

  Operations& operations_;
  std::size_t atOnce_;
  std::mutex mutex_;
  std::map<std::string, std::shared_ptr<Job>> jobs_;
  std::deque<std::string> order_;  ///< the oldest first
};

}  // namespace bukorval::host::server
