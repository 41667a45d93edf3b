#include "com/VariantValue.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <new>

#include "com/Failures.h"
#include "com/Objects.h"
#include "com/foreign/Caller.h"
#include "values/Conversion.h"
#include "values/WideText.h"

namespace com {
namespace {

using values::Date, values::Decimal, values::Variant;

[[noreturn]] void mismatch() { throw CallFailure{DISP_E_TYPEMISMATCH}; }

constexpr double kSecondsOfDay = 86400.0;

/// A day number with its time of day as the fraction, which is never negative.
Date toDate(DATE moment) {
  if (!(moment > -700000 && moment < 3000000)) mismatch();
  auto day = std::trunc(moment);
  auto seconds = std::llround(std::fabs(moment - day) * kSecondsOfDay);
  if (seconds == 86400) {
    seconds = 0;
    day += 1;
  }
  const auto date = Date().addDays(static_cast<int>(day));
  const auto whole = static_cast<int>(seconds);
  return whole == 0 ? date
                    : Date::FromYmd(date.year(), date.month(), date.day(), whole / 3600, whole / 60 % 60, whole % 60);
}

DATE fromDate(const Date& date) {
  const double time = (date.hour() * 3600 + date.minute() * 60 + date.second()) / kSecondsOfDay;
  return date.dayNumber() < 0 ? date.dayNumber() - time : date.dayNumber() + time;
}

Decimal toDecimal(const DECIMAL& value) {
  Decimal magnitude;
  if (value.Hi32 == 0 && value.Lo64 <= static_cast<ULONGLONG>(INT64_MAX)) {
    magnitude = Decimal::FromScaled(static_cast<std::int64_t>(value.Lo64), value.scale);
  } else {
    const auto limb = Decimal::FromScaled(std::int64_t{1} << 32);
    magnitude = (Decimal::FromScaled(value.Hi32) * limb + Decimal::FromScaled(value.Mid32)) * limb +
                Decimal::FromScaled(value.Lo32);
    magnitude = magnitude * Decimal::FromScaled(1, value.scale);
  }
  return value.sign == DECIMAL_NEG ? -magnitude : magnitude;
}

/// Digit by digit into three limbs.
DECIMAL wideDecimal(const Decimal& value) {
  std::array<ULONGLONG, 3> limbs{};
  for (const char c : value.toString()) {
    if (c < '0' || c > '9') continue;
    ULONGLONG carry = static_cast<ULONGLONG>(c - '0');
    for (auto& limb : limbs) {
      carry += limb * 10;
      limb = carry & 0xFFFFFFFF;
      carry >>= 32;
    }
  }
  DECIMAL decimal{};
  decimal.Lo64 = limbs[1] << 32 | limbs[0];
  decimal.Hi32 = static_cast<ULONG>(limbs[2]);
  return decimal;
}

DECIMAL fromDecimal(const Decimal& value) {
  DECIMAL decimal{};
  if (const auto units = value.toScaled(value.scale()); units && *units > INT64_MIN)
    decimal.Lo64 = static_cast<ULONGLONG>(std::abs(*units));
  else
    decimal = wideDecimal(value);
  decimal.scale = static_cast<BYTE>(value.scale());
  decimal.sign = value.isNegative() ? DECIMAL_NEG : 0;
  return decimal;
}

std::wstring_view textOf(BSTR text) { return {text ? text : L"", ::SysStringLen(text)}; }

Variant wholeNumber(ULONGLONG value) {
  if (value <= static_cast<ULONGLONG>(INT64_MAX)) return static_cast<std::int64_t>(value);
  return Decimal::FromScaled(static_cast<std::int64_t>(value / 10)) * Decimal::FromScaled(10) +
         Decimal::FromScaled(static_cast<std::int64_t>(value % 10));
}

Variant plainValue(const VARIANT& value) {
  switch (V_VT(&value)) {
    case VT_EMPTY: return {};
    case VT_NULL: return Variant::Null();
    case VT_I1: return static_cast<std::int16_t>(V_I1(&value));
    case VT_UI1: return static_cast<std::int16_t>(V_UI1(&value));
    case VT_I2: return static_cast<std::int16_t>(V_I2(&value));
    case VT_UI2: return std::int32_t{V_UI2(&value)};
    case VT_I4: return static_cast<std::int32_t>(V_I4(&value));
    case VT_INT: return std::int32_t{V_INT(&value)};
    case VT_UI4: return wholeNumber(V_UI4(&value));
    case VT_UINT: return wholeNumber(V_UINT(&value));
    case VT_I8: return static_cast<std::int64_t>(V_I8(&value));
    case VT_UI8: return wholeNumber(V_UI8(&value));
    case VT_R4: return double{V_R4(&value)};
    case VT_R8: return V_R8(&value);
    case VT_CY: return Decimal::FromScaled(V_CY(&value).int64, 4).normalized();
    case VT_DECIMAL: return toDecimal(V_DECIMAL(&value));
    case VT_DATE: return toDate(V_DATE(&value));
    case VT_BSTR: return values::fromWide(textOf(V_BSTR(&value)));
    case VT_BOOL: return V_BOOL(&value) != VARIANT_FALSE;
    default: break;
  }
  if (isMissing(value)) return {};
  mismatch();
}

/// The type that a reference points to: what it is given has to fit there.
void assignTo(VARIANT& argument, VARIANT& converted) {
  const auto type = static_cast<VARTYPE>(V_VT(&argument) & ~VT_BYREF);
  void* place = V_BYREF(&argument);
  switch (type) {
    case VT_BSTR:
      ::SysFreeString(*V_BSTRREF(&argument));
      *V_BSTRREF(&argument) = V_BSTR(&converted);
      break;
    case VT_DISPATCH:
    case VT_UNKNOWN:
      if (*V_UNKNOWNREF(&argument)) (*V_UNKNOWNREF(&argument))->Release();
      *V_UNKNOWNREF(&argument) = V_UNKNOWN(&converted);
      break;
    case VT_DECIMAL: *V_DECIMALREF(&argument) = V_DECIMAL(&converted); break;
    case VT_I1:
    case VT_UI1: *static_cast<BYTE*>(place) = V_UI1(&converted); break;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL: *static_cast<SHORT*>(place) = V_I2(&converted); break;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE: *static_cast<LONGLONG*>(place) = V_I8(&converted); break;
    default: *static_cast<LONG*>(place) = V_I4(&converted); break;
  }
}

}  // namespace

BSTR newText(std::string_view utf8) {
  const auto wide = values::toWide(utf8);
  BSTR text = ::SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
  if (!text) throw std::bad_alloc();
  return text;
}

const VARIANT& dereferenced(const VARIANT& value) {
  const auto* inner = &value;
  while (V_VT(inner) == (VT_BYREF | VT_VARIANT) && V_VARIANTREF(inner)) inner = V_VARIANTREF(inner);
  return *inner;
}

bool isMissing(const VARIANT& value) {
  const auto& inner = dereferenced(value);
  return V_VT(&inner) == VT_ERROR && V_ERROR(&inner) == DISP_E_PARAMNOTFOUND;
}

values::Variant toValue(const VARIANT& value) {
  const auto& inner = dereferenced(value);
  const auto type = V_VT(&inner);
  if (type == VT_DISPATCH || type == VT_UNKNOWN || type == (VT_BYREF | VT_DISPATCH) ||
      type == (VT_BYREF | VT_UNKNOWN)) {
    const auto object = dispatchOf(inner);
    if (!object) mismatch();
    return defaultValue(object.get());
  }
  if ((type & VT_ARRAY) != 0) mismatch();
  if ((type & VT_BYREF) == 0) return plainValue(inner);
  OleVariant copy;
  if (FAILED(::VariantCopyInd(&copy, const_cast<VARIANT*>(&inner)))) mismatch();
  return plainValue(copy.get());
}

OleVariant fromValue(const Variant& value) {
  OleVariant result;
  VARIANT& out = result.get();
  const auto put = [&](VARTYPE type) { V_VT(&out) = type; };
  using values::Kind;
  switch (value.kind()) {
    case Kind::Empty: break;
    case Kind::Null: put(VT_NULL); break;
    case Kind::Int16: put(VT_I2), V_I2(&out) = value.as<std::int16_t>(); break;
    case Kind::Int32: put(VT_I4), V_I4(&out) = value.as<std::int32_t>(); break;
    case Kind::Double: put(VT_R8), V_R8(&out) = value.as<double>(); break;
    // The type lies inside the decimal, so that it goes last.
    case Kind::Decimal: V_DECIMAL(&out) = fromDecimal(value.as<Decimal>()), put(VT_DECIMAL); break;
    case Kind::Date: put(VT_DATE), V_DATE(&out) = fromDate(value.as<Date>()); break;
    case Kind::String: V_BSTR(&out) = newText(value.as<std::string>()), put(VT_BSTR); break;
    case Kind::Boolean: put(VT_BOOL), V_BOOL(&out) = value.as<bool>() ? VARIANT_TRUE : VARIANT_FALSE; break;
    case Kind::Object:
      V_DISPATCH(&out) = objectOf(value.as<std::shared_ptr<values::Object>>()).release();
      put(VT_DISPATCH);
      break;
  }
  return result;
}

HRESULT writeBack(VARIANT& argument, OleVariant value) {
  if (V_VT(&argument) == (VT_BYREF | VT_VARIANT)) {
    VARIANT* place = V_VARIANTREF(&argument);
    if ((V_VT(place) & VT_BYREF) != 0) return writeBack(*place, std::move(value));
    ::VariantClear(place);
    *place = value.release();
    return S_OK;
  }
  if ((V_VT(&argument) & VT_BYREF) == 0) return S_OK;
  const auto type = static_cast<VARTYPE>(V_VT(&argument) & ~VT_BYREF);
  if ((type & VT_ARRAY) != 0) return DISP_E_TYPEMISMATCH;
  // Null has no place in a typed variable, which then stays.
  if (V_VT(&value.get()) == VT_NULL) return S_OK;
  OleVariant converted;
  if (const auto outcome = ::VariantChangeType(&converted, &value.get(), 0, type); FAILED(outcome)) return outcome;
  VARIANT taken = converted.release();
  assignTo(argument, taken);
  return S_OK;
}

}  // namespace com
