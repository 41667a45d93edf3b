#include "com/Arguments.h"

#include "com/Failures.h"
#include "com/MemberTable.h"
#include "com/VariantValue.h"
#include "values/Conversion.h"
#include "values/Errore.h"

namespace com {
namespace {

/// Adds to a failure which argument it was.
template <class Action>
auto naming(std::size_t place, Action action) {
  try {
    return action();
  } catch (const CallFailure& failure) {
    throw CallFailure{failure.code, static_cast<int>(place)};
  } catch (const values::Errore&) {
    throw CallFailure{DISP_E_TYPEMISMATCH, static_cast<int>(place)};
  }
}

}  // namespace

Arguments::Arguments(const MemberInfo& member, WORD flags, DISPPARAMS& parameters) {
  const bool assigns = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  UINT named = parameters.cNamedArgs;
  if (assigns) {
    if (parameters.cArgs == 0) throw CallFailure{DISP_E_BADPARAMCOUNT};
    assigned_ = &parameters.rgvarg[0];
    if (named == 0) named = 1;  // some callers leave out that it is the new value
  }
  if (named > parameters.cArgs) throw CallFailure{DISP_E_BADPARAMCOUNT};
  // By place: the last of them lies right after the named ones.
  for (UINT i = parameters.cArgs; i > named; --i) places_.push_back(&parameters.rgvarg[i - 1]);
  for (UINT i = assigns ? 1 : 0; i < named; ++i) {
    const auto place = static_cast<std::size_t>(parameters.rgdispidNamedArgs[i]);
    if (place >= member.parameters.size()) throw CallFailure{DISP_E_PARAMNOTFOUND, parameters.rgdispidNamedArgs[i]};
    if (place >= places_.size()) places_.resize(place + 1);
    if (places_[place]) throw CallFailure{DISP_E_BADPARAMCOUNT};
    places_[place] = &parameters.rgvarg[i];
  }
  while (!places_.empty() && !has(places_.size() - 1)) places_.pop_back();
  if (places_.size() > member.parameters.size() || places_.size() < (assigns ? 0 : member.least))
    throw CallFailure{DISP_E_BADPARAMCOUNT};
  // Those with names may leave a gap before them.
  for (std::size_t i = 0; i < (assigns ? 0 : member.least); ++i)
    if (!has(i)) throw CallFailure{DISP_E_PARAMNOTOPTIONAL, static_cast<int>(i)};
}

bool Arguments::has(std::size_t place) const { return at(place) && !isMissing(*at(place)); }

values::Variant Arguments::value(std::size_t place) const {
  if (!has(place)) return {};
  return naming(place, [&] { return toValue(*at(place)); });
}

std::string Arguments::text(std::size_t place) const {
  return naming(place, [&] { return values::toText(value(place)); });
}

std::int32_t Arguments::number(std::size_t place, std::int32_t otherwise) const {
  if (!has(place)) return otherwise;
  return naming(place, [&] { return values::toInt32(value(place)); });
}

}  // namespace com
