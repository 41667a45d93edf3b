#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "com/Com.h"

namespace com {

/// What a dispatch object tells of a member.
struct MemberInfo {
  std::wstring name;
  DISPID id = DISPID_UNKNOWN;
  bool reads = false;   ///< a property that can be read, or a method
  bool writes = false;  ///< a property that can be set
  std::size_t least = 0;
  std::vector<std::wstring> parameters;
  bool givesObject = false;  ///< a property whose value is an object
};

/// The members of a class, found by name without regard to case and by identifier.
class MemberTable {
 public:
  explicit MemberTable(std::vector<MemberInfo> members);

  static constexpr std::size_t kNone = ~std::size_t{0};
  const MemberInfo& operator[](std::size_t member) const { return members_[member]; }
  std::size_t byName(std::wstring_view name) const;
  std::size_t byId(DISPID id) const;

 private:
  std::vector<MemberInfo> members_;
  std::unordered_map<std::wstring, std::size_t> names_;
  std::unordered_map<DISPID, std::size_t> ids_;
};

/// Two names are one without regard to the case of their letters, which are ASCII.
std::wstring foldName(std::wstring_view name);

}  // namespace com
