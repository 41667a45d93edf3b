#include "host/server/Desks.h"

#include <chrono>
#include <utility>

#include "language/Language.h"

namespace bukorval::host::server {
namespace {

constexpr std::size_t kMostWaiting = 64;
constexpr auto kPatience = std::chrono::seconds(15);

}  // namespace

Desks::Lease Desks::take() {
  std::unique_lock lock(mutex_);
  const auto crowded = [] { return Crowded(tr("Too many are at work here: try again in a moment")); };
  if (waiting_ >= kMostWaiting) throw crowded();
  ++waiting_;
  const bool mine = given_.wait_for(lock, kPatience, [&] { return closed_ || !free_.empty(); });
  --waiting_;
  if (!mine || closed_) throw crowded();
  auto connection = std::move(free_.back());
  free_.pop_back();
  return {*this, std::move(connection), generation_};
}

void Desks::renew() {
  const std::lock_guard lock(mutex_);
  ++generation_;
  for (auto& connection : free_) connection = nullptr;
}

void Desks::close() {
  {
    const std::lock_guard lock(mutex_);
    closed_ = true;
  }
  given_.notify_all();
}

void Desks::giveBack(ado::ConnectionPtr connection, int generation) {
  {
    const std::lock_guard lock(mutex_);
    if (generation != generation_) connection = nullptr;
    free_.push_back(std::move(connection));
  }
  given_.notify_one();
}

}  // namespace bukorval::host::server
