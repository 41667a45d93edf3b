#pragma once

#include <cstddef>
#include <iterator>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace engine {

/// The plans of the texts used last, by the key that texts with equal shape share.
template <class Plan>
class StatementCache {
 public:
  explicit StatementCache(std::size_t capacity) : capacity_(capacity) {}

  /// Null when the text has no plan yet.
  Plan* find(std::string_view key) {
    // Loops send one shape over and over: look at the last plan before hashing.
    if (!entries_.empty() && entries_.front().key == key) return entries_.front().plan.get();
    const auto position = positions_.find(key);
    if (position == positions_.end()) return nullptr;
    entries_.splice(entries_.begin(), entries_, position->second);
    return entries_.front().plan.get();
  }
  /// Keeps a plan; the one unused for the longest time goes when there are too many.
  Plan& insert(std::string key, std::unique_ptr<Plan> plan) {
    if (entries_.size() >= capacity_) drop(std::prev(entries_.end()));
    entries_.push_front({std::move(key), std::move(plan)});
    positions_.emplace(entries_.front().key, entries_.begin());
    return *entries_.front().plan;
  }
  /// Hands over a plan that is there.
  std::unique_ptr<Plan> take(std::string_view key) {
    auto plan = std::move(positions_.find(key)->second->plan);
    remove(key);
    return plan;
  }
  /// Forgets one plan.
  void remove(std::string_view key) {
    const auto position = positions_.find(key);
    if (position != positions_.end()) drop(position->second);
  }
  /// Forgets the plans that `unwanted` tells.
  template <class Unwanted>
  void removeIf(const Unwanted& unwanted) {
    for (auto entry = entries_.begin(); entry != entries_.end();)
      entry = unwanted(*entry->plan) ? drop(entry) : std::next(entry);
  }
  void clear() {
    positions_.clear();
    entries_.clear();
  }
  std::size_t size() const { return entries_.size(); }

 private:
  struct Entry {
    std::string key;
    std::unique_ptr<Plan> plan;
  };
  using Entries = std::list<Entry>;
  typename Entries::iterator drop(typename Entries::iterator entry) {
    positions_.erase(entry->key);
    return entries_.erase(entry);
  }

  std::size_t capacity_;
  Entries entries_;  ///< the plan used last comes first
  std::unordered_map<std::string_view, typename Entries::iterator> positions_;
};

}  // namespace engine
