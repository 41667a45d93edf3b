#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <utility>

#include "host/environment/Environment.h"

namespace bukorval::host::server {

/// Whether anybody, here or elsewhere, has committed anything to the database.
class CommitMark {
 public:
  explicit CommitMark(SharedOptions shared) : shared_(std::move(shared)) {}

  /// The same text as before only when nothing was committed in between; of this run of the server alone.
  std::string now();
  /// The database is another one from now on.
  void renew();

 private:
  SharedOptions shared_;
  std::string run_;  ///< tells this run from others
  std::mutex mutex_;
  ado::ConnectionPtr connection_;  ///< that nothing is written with
  std::string last_;
  std::int64_t count_ = 0;
};

}  // namespace bukorval::host::server
