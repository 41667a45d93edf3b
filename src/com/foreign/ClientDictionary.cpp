#include "com/foreign/ClientDictionary.h"

#include "com/Failures.h"
#include "com/VariantValue.h"
#include "com/foreign/ArrayReader.h"

namespace com {

void ClientDictionary::read() {
  const auto keys = listOf(caller_.call(L"Keys").get());
  const auto items = listOf(caller_.call(L"Items").get());
  RemoveAll();
  for (std::size_t i = 0; i < keys.size() && i < items.size(); ++i) Add(keys[i], items[i]);
  keys_ = Keys();
  items_ = Items();
}

void ClientDictionary::writeBack() {
  if (keys_ == Keys() && items_ == Items()) return;
  caller_.call(L"RemoveAll");
  for (std::size_t i = 0; i < Count(); ++i) {
    std::vector<OleVariant> entry;
    entry.push_back(fromValue(Keys()[i]));
    entry.push_back(fromValue(Items()[i]));
    caller_.call(L"Add", std::move(entry));
  }
  keys_ = Keys();
  items_ = Items();
}

}  // namespace com
