#pragma once

#include "ado/Dictionary.h"
#include "com/TableObject.h"

namespace com {

/// A dictionary under the names that script clients know; "For Each" gives its keys.
class DictionaryObject : public TableObject<DictionaryObject> {
 public:
  explicit DictionaryObject(ado::DictionaryPtr dictionary) : dictionary_(std::move(dictionary)) {}
  ~DictionaryObject() override = default;
  static std::span<const Entry<DictionaryObject>> entries();
  std::shared_ptr<values::Object> STDMETHODCALLTYPE inside() override { return dictionary_; }

 private:
  ado::DictionaryPtr dictionary_;
};

}  // namespace com
