#include "sqlite/StatementCache.h"

#include <utility>

namespace sqlite {

Plan* StatementCache::find(std::string_view key) {
  // Loops send one shape over and over: look at the last plan before hashing.
  if (!entries_.empty() && entries_.front().key == key) return entries_.front().plan.get();
  const auto position = positions_.find(key);
  if (position == positions_.end()) return nullptr;
  entries_.splice(entries_.begin(), entries_, position->second);
  return entries_.front().plan.get();
}

Plan& StatementCache::insert(std::string key, std::unique_ptr<Plan> plan) {
  if (entries_.size() >= capacity_) drop(std::prev(entries_.end()));
  entries_.push_front({std::move(key), std::move(plan)});
  positions_.emplace(entries_.front().key, entries_.begin());
  return *entries_.front().plan;
}

StatementCache::Entries::iterator StatementCache::drop(Entries::iterator entry) {
  positions_.erase(entry->key);
  return entries_.erase(entry);
}

void StatementCache::remove(std::string_view key) {
  const auto position = positions_.find(key);
  if (position != positions_.end()) drop(position->second);
}

void StatementCache::removeStaged() {
  for (auto entry = entries_.begin(); entry != entries_.end();) {
    entry = entry->plan->hasStages() ? drop(entry) : std::next(entry);
  }
}

void StatementCache::clear() {
  positions_.clear();
  entries_.clear();
}

}  // namespace sqlite
