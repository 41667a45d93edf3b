#pragma once

#include <span>
#include <string_view>

#include "com/DispatchObject.h"

namespace com {

/// A member of a class written as a row: what reading (or calling) and what setting it does.
template <class T>
struct Entry {
  std::string_view name;
  std::string_view parameters = {};  ///< names with blanks between, "?" after one that may be left out
  OleVariant (*read)(T&, Arguments&) = nullptr;
  void (*write)(T&, Arguments&) = nullptr;
  DISPID id = DISPID_UNKNOWN;  ///< only where the system has a fixed one
};

/// Adds a row's parameters to what is told of a member.
void readParameters(MemberInfo& info, std::string_view parameters);

/// An object whose members are the rows of T::entries().
template <class T>
class TableObject : public DispatchObject {
 protected:
  const MemberTable& members() const override {
    static const MemberTable table = [] {
      std::vector<MemberInfo> infos;
      for (const auto& entry : T::entries()) {
        MemberInfo info{std::wstring(entry.name.begin(), entry.name.end()),
                        entry.id == DISPID_UNKNOWN ? static_cast<DISPID>(infos.size() + 1) : entry.id,
                        entry.read != nullptr,
                        entry.write != nullptr,
                        0,
                        {}};
        readParameters(info, entry.parameters);
        infos.push_back(std::move(info));
      }
      return MemberTable(std::move(infos));
    }();
    return table;
  }

  OleVariant invoke(std::size_t member, WORD flags, Arguments& arguments) override {
    const auto& entry = T::entries()[member];
    auto& self = static_cast<T&>(*this);
    if ((flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) == 0) return entry.read(self, arguments);
    entry.write(self, arguments);
    return {};
  }
};

}  // namespace com
