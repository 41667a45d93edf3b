#include "host/server/Crowd.h"

#include <utility>

namespace bukorval::host::server {
namespace {

bool isThisMachine(const std::string& address) {
  return address == "127.0.0.1" || address == "::1" || address == "::ffff:127.0.0.1";
}

}  // namespace

Crowd::Guest::Guest(Crowd& crowd, std::string address) : crowd_(crowd), address_(std::move(address)) {
  const std::lock_guard lock(crowd_.mutex_);
  tooMany_ = ++crowd_.guests_[address_] > crowd_.places_ / 2 && !isThisMachine(address_);
}

Crowd::Guest::~Guest() {
  const std::lock_guard lock(crowd_.mutex_);
  const auto own = crowd_.guests_.find(address_);
  if (--own->second == 0) crowd_.guests_.erase(own);
}

}  // namespace bukorval::host::server
