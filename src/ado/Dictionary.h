#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "values/Export.h"
#include "values/Variant.h"

namespace ado {

/// A keyed collection that keeps the order of insertion. Keys are text (case counts) or numbers (by value: 1 and
/// 1.0 are one key; the number 1 and the text "1" are two).
class BUKORVAL_API Dictionary : public values::Object {
 public:
  /// Throws "This key is already associated with an element of this collection" for a key it has.
  void Add(const values::Variant& key, const values::Variant& item);
  bool Exists(const values::Variant& key) const;
  /// Empty for a key it does not have; nothing is added.
  const values::Variant& Item(const values::Variant& key) const;
  /// Replaces, or adds at the end.
  void Item(const values::Variant& key, const values::Variant& item);
  /// Throws "Element not found" for a key it does not have.
  void Remove(const values::Variant& key);
  void RemoveAll();
  std::size_t Count() const { return keys_.size(); }
  const std::vector<values::Variant>& Keys() const { return keys_; }
  const std::vector<values::Variant>& Items() const { return items_; }

 private:
  std::vector<values::Variant> keys_;
  std::vector<values::Variant> items_;
  std::unordered_map<std::string, std::size_t> positions_;
};

using DictionaryPtr = std::shared_ptr<Dictionary>;

}  // namespace ado
