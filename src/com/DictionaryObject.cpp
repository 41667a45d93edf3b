#include "com/DictionaryObject.h"

#include "com/Enumeration.h"
#include "com/Results.h"

namespace com {
namespace {

std::vector<OleVariant> valuesOf(const std::vector<values::Variant>& list) {
  std::vector<OleVariant> values;
  for (const auto& each : list) values.push_back(fromValue(each));
  return values;
}

}  // namespace

std::span<const Entry<DictionaryObject>> DictionaryObject::entries() {
  using D = DictionaryObject;
  static constexpr Entry<D> kEntries[] = {
      {"Item", "Key", [](D& d, Arguments& a) { return fromValue(d.dictionary_->Item(a.value(0))); },
       [](D& d, Arguments& a) { d.dictionary_->Item(a.value(0), toValue(a.assigned())); }, DISPID_VALUE},
      {"Add", "Key Item", [](D& d, Arguments& a) { return d.dictionary_->Add(a.value(0), a.value(1)), OleVariant(); }},
      {"Exists", "Key", [](D& d, Arguments& a) { return valueOf(d.dictionary_->Exists(a.value(0))); }},
      {"Remove", "Key", [](D& d, Arguments& a) { return d.dictionary_->Remove(a.value(0)), OleVariant(); }},
      {"RemoveAll", "", [](D& d, Arguments&) { return d.dictionary_->RemoveAll(), OleVariant(); }},
      {"Count", "", [](D& d, Arguments&) { return valueOf(static_cast<std::int32_t>(d.dictionary_->Count())); }},
      {"Keys", "", [](D& d, Arguments&) { return arrayOf(valuesOf(d.dictionary_->Keys())); }},
      {"Items", "", [](D& d, Arguments&) { return arrayOf(valuesOf(d.dictionary_->Items())); }},
      {"_NewEnum", "", [](D& d, Arguments&) { return enumerationValue(valuesOf(d.dictionary_->Keys())); }, nullptr,
       DISPID_NEWENUM},
  };
  return kEntries;
}

}  // namespace com
