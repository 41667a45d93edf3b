#pragma once

#include "com/Com.h"
#include "values/Errore.h"

namespace com {

/// A failure of the call itself, which its caller sees as the HRESULT: a wrong type, a wrong count.
struct CallFailure {
  HRESULT code;
  int argument = -1;  ///< which one, in the order of the declaration
};

/// What a client's own object answered to us, with its description.
class ClientFailure : public values::Errore {
 public:
  ClientFailure(HRESULT code, const std::string& description) : Errore(description), code_(code) {}
  HRESULT code() const { return code_; }

 private:
  HRESULT code_;
};

/// What using Nothing is called.
inline constexpr const char* kNoObject = "Object variable or With block variable not set";

/// The number that a data-access client knows an error text by.
HRESULT numberOf(std::string_view description);

/// Puts the exception that is being handled into the form a late-bound caller is given. To be called in a handler.
HRESULT reportFailure(EXCEPINFO* information, UINT* argument, const DISPPARAMS& parameters) noexcept;

}  // namespace com
