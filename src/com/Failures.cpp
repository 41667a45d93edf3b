#include "com/Failures.h"

#include <array>
#include <new>
#include <optional>

#include "ado/Messages.h"

namespace com {
namespace {

struct Number {
  std::string_view start;
  HRESULT code;
};

wchar_t kSource[] = L"BUKORVAL";

constexpr HRESULT number(unsigned low) { return static_cast<HRESULT>(0x800A0000U | low); }

constexpr std::array kNumbers{
    Number{ado::kNoCurrentRow, number(3021)},
    Number{ado::kObjectClosed, number(3704)},
    Number{ado::kObjectOpen, number(3705)},
    Number{"Item cannot be found in the collection", number(3265)},
    Number{"Object is already in collection", number(3367)},
    Number{"Type mismatch", number(3421)},
    Number{"Field ", number(3421)},
    Number{"Filter does not parse", number(3001)},
    Number{"Filter takes", number(3001)},
    Number{"GetRows takes", number(3001)},
    Number{"LIKE takes", number(3001)},
    Number{"Only = and <> can be used with NULL", number(3001)},
    Number{"Type ", number(3001)},
    Number{"A record set without a source", number(3001)},
    Number{"Provider ", number(3706)},
    Number{"The connection string names no Provider", number(3706)},
    Number{"This key is already associated", number(457)},
    Number{"Element not found", number(32811)},
    Number{kNoObject, number(91)},
};

/// For callers that look there: the thread's error object.
void leaveErrorObject(BSTR description) {
  Ref<ICreateErrorInfo> made;
  if (FAILED(::CreateErrorInfo(made.out()))) return;
  made->SetSource(kSource);
  made->SetDescription(description);
  if (const auto error = Ref<IErrorInfo>::from(made.get(), IID_IErrorInfo)) ::SetErrorInfo(0, error.get());
}

/// Where the system has an argument: those with names lie first, the others after them, from the last one to the first.
std::optional<UINT> indexOf(const DISPPARAMS& parameters, int argument) {
  for (UINT i = 0; i < parameters.cNamedArgs && i < parameters.cArgs; ++i)
    if (parameters.rgdispidNamedArgs[i] == argument) return i;
  const auto place = static_cast<UINT>(argument);
  return argument >= 0 && place < parameters.cArgs ? std::optional(parameters.cArgs - 1 - place) : std::nullopt;
}

HRESULT describe(EXCEPINFO* information, HRESULT code, const char* description) {
  BSTR text = nullptr;
  try {
    text = newText(description);
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
  leaveErrorObject(text);
  if (!information) {
    ::SysFreeString(text);
    return code;
  }
  *information = {};
  information->scode = code;
  information->bstrSource = ::SysAllocString(kSource);
  information->bstrDescription = text;
  return DISP_E_EXCEPTION;
}

}  // namespace

HRESULT numberOf(std::string_view description) {
  for (const auto& each : kNumbers)
    if (description.starts_with(each.start)) return each.code;
  return E_FAIL;
}

HRESULT reportFailure(EXCEPINFO* information, UINT* argument, const DISPPARAMS& parameters) noexcept {
  try {
    throw;
  } catch (const CallFailure& failure) {
    // Whoever looks for the thread's error object would find that of an earlier failure.
    ::SetErrorInfo(0, nullptr);
    if (const auto index = indexOf(parameters, failure.argument); argument && index) *argument = *index;
    return failure.code;
  } catch (const ClientFailure& failure) {
    return describe(information, failure.code(), failure.what());
  } catch (const values::Errore& error) {
    return describe(information, numberOf(error.what()), error.what());
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (const std::exception& error) {
    return describe(information, E_FAIL, error.what());
  } catch (...) {
    return E_UNEXPECTED;
  }
}

}  // namespace com
