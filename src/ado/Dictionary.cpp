#include "ado/Dictionary.h"

#include <cstdio>

#include "values/Conversion.h"
#include "values/Errore.h"

namespace ado {
namespace {

using values::Kind;
using values::Variant;

/// A text that is equal for equal keys; its first letter keeps the kinds apart.
std::string identity(const Variant& key) {
  switch (key.kind()) {
    case Kind::Empty: return "e";
    case Kind::Null: return "0";
    case Kind::String: return "t" + key.as<std::string>();
    case Kind::Date: return "d" + key.as<values::Date>().toSql();
    case Kind::Boolean: return key.as<bool>() ? "b1" : "b0";
    case Kind::Object: {
      const void* const object = key.as<std::shared_ptr<values::Object>>().get();
      char text[32];
      std::snprintf(text, sizeof text, "o%p", object);
      return text;
    }
    default: break;
  }
  try {
    return "n" + values::toDecimal(key).normalized().toString();
  } catch (const values::Errore&) {
    return "x" + values::toPlainText(key);  // a double beyond every decimal
  }
}

}  // namespace

void Dictionary::Add(const Variant& key, const Variant& item) {
  if (!positions_.try_emplace(identity(key), keys_.size()).second)
    throw values::Errore("This key is already associated with an element of this collection");
  keys_.push_back(key);
  items_.push_back(item);
}

bool Dictionary::Exists(const Variant& key) const { return positions_.contains(identity(key)); }

const Variant& Dictionary::Item(const Variant& key) const {
  static const Variant kEmpty;
  const auto found = positions_.find(identity(key));
  return found == positions_.end() ? kEmpty : items_[found->second];
}

void Dictionary::Item(const Variant& key, const Variant& item) {
  const auto found = positions_.find(identity(key));
  if (found == positions_.end()) return Add(key, item);
  items_[found->second] = item;
}

void Dictionary::Remove(const Variant& key) {
  const auto found = positions_.find(identity(key));
  if (found == positions_.end()) throw values::Errore("Element not found");
  const std::size_t position = found->second;
  positions_.erase(found);
  keys_.erase(keys_.begin() + static_cast<std::ptrdiff_t>(position));
  items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(position));
  for (auto& [name, later] : positions_)
    if (later > position) --later;
}

void Dictionary::RemoveAll() {
  keys_.clear();
  items_.clear();
  positions_.clear();
}

}  // namespace ado
