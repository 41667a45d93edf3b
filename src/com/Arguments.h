#pragma once

#include <vector>

#include "com/Com.h"
#include "values/Variant.h"

namespace com {

struct MemberInfo;

/// The arguments of one call in the order of the declaration, by place and by name; the new value of a property is the
/// last one. Throws CallFailure for too many, too few, and names that the member does not have.
class Arguments {
 public:
  Arguments(const MemberInfo& member, WORD flags, DISPPARAMS& parameters);

  /// How many there are, up to the last one that was given.
  std::size_t count() const { return places_.size(); }
  bool has(std::size_t place) const;
  /// Null for one that was left out.
  VARIANT* at(std::size_t place) const { return place < places_.size() ? places_[place] : nullptr; }
  /// As a plain value; Empty for one that was left out. A failure names the argument.
  values::Variant value(std::size_t place) const;
  std::string text(std::size_t place) const;
  std::int32_t number(std::size_t place, std::int32_t otherwise) const;
  /// What is assigned to a property.
  const VARIANT& assigned() const { return *assigned_; }

 private:
  std::vector<VARIANT*> places_;
  VARIANT* assigned_ = nullptr;
};

}  // namespace com
