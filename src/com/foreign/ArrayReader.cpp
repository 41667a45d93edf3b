#include "com/foreign/ArrayReader.h"

#include "com/Failures.h"
#include "com/VariantValue.h"

namespace com {
namespace {

/// An array of VARIANTs that is held while it is read.
class HeldArray {
 public:
  HeldArray(const VARIANT& value, UINT dimensions) {
    const auto& plain = dereferenced(value);
    if ((V_VT(&plain) & ~VT_BYREF) != (VT_ARRAY | VT_VARIANT)) throw CallFailure{DISP_E_TYPEMISMATCH};
    array_ = (V_VT(&plain) & VT_BYREF) != 0 ? *V_ARRAYREF(&plain) : V_ARRAY(&plain);
    if (!array_ || ::SafeArrayGetDim(array_) != dimensions) throw CallFailure{DISP_E_TYPEMISMATCH};
    if (FAILED(::SafeArrayAccessData(array_, reinterpret_cast<void**>(&data_)))) throw CallFailure{DISP_E_TYPEMISMATCH};
  }
  ~HeldArray() { ::SafeArrayUnaccessData(array_); }
  HeldArray(const HeldArray&) = delete;
  HeldArray& operator=(const HeldArray&) = delete;

  std::size_t size(UINT dimension) const {
    LONG first = 0, last = -1;
    ::SafeArrayGetLBound(array_, dimension, &first);
    ::SafeArrayGetUBound(array_, dimension, &last);
    return last < first ? 0 : static_cast<std::size_t>(last - first + 1);
  }
  values::Variant operator[](std::size_t place) const { return toValue(data_[place]); }

 private:
  SAFEARRAY* array_ = nullptr;
  VARIANT* data_ = nullptr;
};

}  // namespace

std::vector<values::Variant> listOf(const VARIANT& value) {
  const HeldArray array(value, 1);
  std::vector<values::Variant> list;
  for (std::size_t i = 0; i < array.size(1); ++i) list.push_back(array[i]);
  return list;
}

std::vector<std::vector<values::Variant>> tableOf(const VARIANT& value) {
  const HeldArray array(value, 2);
  const auto width = array.size(1), height = array.size(2);
  std::vector<std::vector<values::Variant>> table(width);
  for (std::size_t i = 0; i < width; ++i)
    for (std::size_t j = 0; j < height; ++j) table[i].push_back(array[j * width + i]);
  return table;
}

}  // namespace com
