#pragma once

#include <windows.h>
// After the system's own types.
#include <oaidl.h>
#include <ocidl.h>
#include <ole2.h>
#include <oleauto.h>
#include <olectl.h>

#include <string>
#include <string_view>
#include <utility>

namespace com {

/// A counted reference to an interface.
template <class T>
class Ref {
 public:
  Ref() = default;
  Ref(std::nullptr_t) {}
  /// Shares the object.
  explicit Ref(T* object) : object_(object) {
    if (object_) object_->AddRef();
  }
  Ref(const Ref& other) : Ref(other.object_) {}
  Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Ref& operator=(Ref other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Ref() {
    if (object_) object_->Release();
  }

  /// Takes over a reference that somebody else counted.
  static Ref adopt(T* object) {
    Ref ref;
    ref.object_ = object;
    return ref;
  }
  /// The object's other interface; null when it has none.
  template <class Other>
  static Ref from(Other* object, REFIID id) {
    Ref ref;
    if (object && FAILED(object->QueryInterface(id, reinterpret_cast<void**>(&ref.object_)))) ref.object_ = nullptr;
    return ref;
  }

  T* get() const { return object_; }
  T* operator->() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }
  T* release() { return std::exchange(object_, nullptr); }
  /// Where a call puts a reference.
  T** out() {
    *this = Ref();
    return &object_;
  }

 private:
  T* object_ = nullptr;
};

/// A VARIANT that is cleared.
class OleVariant {
 public:
  OleVariant() { ::VariantInit(&value_); }
  OleVariant(OleVariant&& other) noexcept : value_(other.value_) { ::VariantInit(&other.value_); }
  OleVariant& operator=(OleVariant&& other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }
  ~OleVariant() { ::VariantClear(&value_); }

  VARIANT& get() { return value_; }
  const VARIANT& get() const { return value_; }
  VARIANT* operator&() { return &value_; }
  VARIANT release() {
    const VARIANT value = value_;
    ::VariantInit(&value_);
    return value;
  }

 private:
  VARIANT value_;
};

/// A text of the system's; throws std::bad_alloc.
BSTR newText(std::string_view utf8);

}  // namespace com
