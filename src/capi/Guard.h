#pragma once

#include <memory>
#include <new>
#include <string>

#include "capi/bukorval.h"
#include "object/Interfaccia.h"
#include "values/Errore.h"

namespace capi {

/// A call that is wrong in itself.
class Misuse : public values::Errore {
 public:
  using Errore::Errore;
};

/// Keeps the text for bukorval_error.
void remember(const char* why) noexcept;

/// What a function of the interface does: no exception leaves it.
template <class F>
bukorval_code guarded(F body) noexcept {
  try {
    body();
    return BUKORVAL_OK;
  } catch (const Misuse& error) {
    remember(error.what());
    return BUKORVAL_MISUSED;
  } catch (const bukorval::ErroreArgomento& error) {
    remember(error.what());
    return BUKORVAL_MISUSED;
  } catch (const std::bad_alloc&) {
    remember("Out of memory");
  } catch (const std::exception& error) {
    remember(error.what());
  } catch (...) {
    remember("Unknown error");
  }
  return BUKORVAL_FAILED;
}

/// What a pointer of the client's points to; a missing one is misuse.
template <class T>
T& given(T* pointer, const char* what) {
  if (!pointer) throw Misuse(std::string(what) + " is missing");
  return *pointer;
}
/// Hands a new handle out; without a place for it there is none.
template <class Handle>
void handOut(std::unique_ptr<Handle> made, Handle** place, const char* what) {
  auto& wanted = given(place, what);
  wanted = made.release();
}
inline std::string givenText(const char* text, const char* what) { return &given(text, what); }

}  // namespace capi
