#pragma once

#include <atomic>
#include <new>
#include <utility>
#include <vector>

#include "com/Com.h"
#include "com/Module.h"

namespace com {

/// The counting of a small object with one interface.
template <class Interface>
class Counted : public Interface {
 public:
  explicit Counted(REFIID id) : id_(id) { addLiving(); }
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;

  STDMETHODIMP QueryInterface(REFIID id, void** object) override {
    if (!object) return E_POINTER;
    *object = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, id_) ? static_cast<Interface*>(this) : nullptr;
    if (!*object) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const auto left = --references_;
    if (left == 0) delete this;
    return left;
  }

 protected:
  virtual ~Counted() { dropLiving(); }

 private:
  IID id_;
  std::atomic<ULONG> references_{1};
};

/// An enumerator over a list that is known beforehand. `Give` makes what goes out of an element.
template <class Interface, class Item, class Out, void (*give)(const Item&, Out*)>
class ListEnumerator : public Counted<Interface> {
 public:
  ListEnumerator(REFIID id, std::vector<Item> items, std::size_t at = 0)
      : Counted<Interface>(id), id_(id), items_(std::move(items)), at_(at) {}

  STDMETHODIMP Next(ULONG wanted, Out* out, ULONG* fetched) override {
    ULONG given = 0;
    for (; given < wanted && at_ < items_.size(); ++given, ++at_) give(items_[at_], out + given);
    if (fetched) *fetched = given;
    return given == wanted ? S_OK : S_FALSE;
  }
  STDMETHODIMP Skip(ULONG count) override {
    const bool enough = count <= items_.size() - at_;
    at_ = enough ? at_ + count : items_.size();
    return enough ? S_OK : S_FALSE;
  }
  STDMETHODIMP Reset() override {
    at_ = 0;
    return S_OK;
  }
  STDMETHODIMP Clone(Interface** clone) override try {
    if (!clone) return E_POINTER;
    *clone = new ListEnumerator(id_, items_, at_);
    return S_OK;
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }

 private:
  IID id_;
  std::vector<Item> items_;
  std::size_t at_;
};

}  // namespace com
