#include "com/MemberTable.h"

namespace com {

std::wstring foldName(std::wstring_view name) {
  std::wstring folded(name);
  for (auto& c : folded)
    if (c >= L'A' && c <= L'Z') c = static_cast<wchar_t>(c + (L'a' - L'A'));
  return folded;
}

MemberTable::MemberTable(std::vector<MemberInfo> members) : members_(std::move(members)) {
  for (std::size_t i = 0; i < members_.size(); ++i) {
    names_.emplace(foldName(members_[i].name), i);
    ids_.emplace(members_[i].id, i);
  }
}

std::size_t MemberTable::byName(std::wstring_view name) const {
  const auto found = names_.find(foldName(name));
  return found == names_.end() ? kNone : found->second;
}

std::size_t MemberTable::byId(DISPID id) const {
  const auto found = ids_.find(id);
  return found == ids_.end() ? kNone : found->second;
}

}  // namespace com
