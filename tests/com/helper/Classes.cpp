#include "com/Classes.h"

#include "com/Results.h"
#include "helper/Listener.h"
#include "helper/Proxy.h"

/// What the script host of the tests lacks: somebody who listens to events, and objects of somebody else's.
namespace com_helper {

class Stranger : public com::TableObject<Stranger> {
 public:
  ~Stranger() override = default;
  static std::span<const com::Entry<Stranger>> entries() {
    static constexpr com::Entry<Stranger> kEntries[] = {
        {"Of", "Object",
         [](Stranger&, com::Arguments& a) { return com::dispatchValue(proxyOf(com::dispatchOf(*a.at(0)))); }}};
    return kEntries;
  }
};

}  // namespace com_helper

namespace com {

std::span<const ClassEntry> classes() {
  static constexpr ClassEntry kClasses[] = {
      {{0x2f1d6c10, 0x7e61, 0x4a52, {0x93, 0x8d, 0x50, 0x1b, 0x64, 0xf0, 0x33, 0x01}},
       L"BUKORVALTest.Listener",
       L"Listener",
       [] { return Ref<IDispatch>::adopt(new com_helper::Listener); }},
      {{0x2f1d6c11, 0x7e61, 0x4a52, {0x93, 0x8d, 0x50, 0x1b, 0x64, 0xf0, 0x33, 0x01}},
       L"BUKORVALTest.Stranger",
       L"Maker of strange objects",
       [] { return Ref<IDispatch>::adopt(new com_helper::Stranger); }},
  };
  return kClasses;
}

}  // namespace com
