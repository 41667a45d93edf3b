#pragma once

#include <cstddef>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "sqlite/Plan.h"

namespace sqlite {

/// The plans of the texts used last, by the key that texts with equal shape share.
class StatementCache {
 public:
  explicit StatementCache(std::size_t capacity) : capacity_(capacity) {}

  /// Null when the text has no plan yet.
  Plan* find(std::string_view key);
  /// Keeps a plan; the one unused for the longest time goes when there are too many.
  Plan& insert(std::string key, std::unique_ptr<Plan> plan);
  /// Forgets one plan.
  void remove(std::string_view key);
  /// Forgets the plans with temporary stages: a rollback takes the stages away.
  void removeStaged();
  void clear();
  std::size_t size() const { return entries_.size(); }

 private:
  struct Entry {
    std::string key;
    std::unique_ptr<Plan> plan;
  };
  using Entries = std::list<Entry>;
  Entries::iterator drop(Entries::iterator entry);

  std::size_t capacity_;
  Entries entries_;  ///< the plan used last comes first
  std::unordered_map<std::string_view, Entries::iterator> positions_;
};

}  // namespace sqlite
