#include "com/Enumeration.h"

#include <array>
#include <memory>
#include <new>

#include "com/Counted.h"

namespace com {
namespace {

using Shared = std::shared_ptr<OleVariant>;

void copyValue(const Shared& item, VARIANT* out) {
  ::VariantInit(out);
  ::VariantCopy(out, &item->get());
}

using ValueEnumerator = ListEnumerator<IEnumVARIANT, Shared, VARIANT, copyValue>;

/// Moves the values into an array of the given bounds, the first dimension running fastest.
template <std::size_t dimensions>
OleVariant filledArray(std::array<SAFEARRAYBOUND, dimensions> bounds, const auto& valueAt) {
  SAFEARRAY* array = ::SafeArrayCreate(VT_VARIANT, dimensions, bounds.data());
  if (!array) throw std::bad_alloc();
  OleVariant result;
  V_VT(&result.get()) = VT_ARRAY | VT_VARIANT;
  V_ARRAY(&result.get()) = array;
  void* data = nullptr;
  if (FAILED(::SafeArrayAccessData(array, &data))) throw std::bad_alloc();
  std::size_t count = 1;
  for (const auto& bound : bounds) count *= bound.cElements;
  for (std::size_t i = 0; i < count; ++i) static_cast<VARIANT*>(data)[i] = valueAt(i).release();
  ::SafeArrayUnaccessData(array);
  return result;
}

}  // namespace

Ref<IUnknown> enumerationOf(std::vector<OleVariant> values) {
  std::vector<Shared> items;
  for (auto& value : values) items.push_back(std::make_shared<OleVariant>(std::move(value)));
  return Ref<IUnknown>::adopt(new ValueEnumerator(IID_IEnumVARIANT, std::move(items)));
}

OleVariant enumerationValue(std::vector<OleVariant> values) {
  OleVariant result;
  V_UNKNOWN(&result.get()) = enumerationOf(std::move(values)).release();
  V_VT(&result.get()) = VT_UNKNOWN;
  return result;
}

OleVariant arrayOf(std::vector<OleVariant> values) {
  return filledArray<1>({{{static_cast<ULONG>(values.size()), 0}}},
                        [&](std::size_t i) -> OleVariant& { return values[i]; });
}

OleVariant tableOf(std::vector<std::vector<OleVariant>> columns) {
  const auto rows = columns.empty() ? 0 : columns.front().size();
  return filledArray<2>({{{static_cast<ULONG>(columns.size()), 0}, {static_cast<ULONG>(rows), 0}}},
                        [&](std::size_t i) -> OleVariant& { return columns[i % columns.size()][i / columns.size()]; });
}

}  // namespace com
