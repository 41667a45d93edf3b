#include "ado/Dictionary.h"

#include "capi/Guard.h"
#include "capi/Handles.h"

using namespace capi;

extern "C" {

bukorval_code bukorval_dictionary_new(bukorval_dictionary** dictionary) {
  return guarded([&] {
    auto made = std::make_unique<bukorval_dictionary>();
    made->dictionary = std::make_shared<ado::Dictionary>();
    handOut(std::move(made), dictionary, "dictionary");
  });
}

void bukorval_dictionary_free(bukorval_dictionary* dictionary) { delete dictionary; }

size_t bukorval_dictionary_count(const bukorval_dictionary* dictionary) {
  return dictionary ? dictionary->dictionary->Count() : 0;
}

bukorval_code bukorval_dictionary_put(bukorval_dictionary* dictionary, const bukorval_variant* key,
                                      const bukorval_variant* item) {
  return guarded(
      [&] { given(dictionary, "dictionary").dictionary->Item(given(key, "key").value, given(item, "item").value); });
}

bukorval_code bukorval_dictionary_at(const bukorval_dictionary* dictionary, size_t place, bukorval_variant* key,
                                     bukorval_variant* item) {
  return guarded([&] {
    const auto& from = *given(dictionary, "dictionary").dictionary;
    if (place >= from.Count()) throw Misuse("There is no such entry");
    if (key) key->value = from.Keys()[place];
    if (item) item->value = from.Items()[place];
  });
}

}  // extern "C"
