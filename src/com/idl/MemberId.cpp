#include "com/idl/MemberId.h"

#include <algorithm>

namespace com {

std::int32_t memberId(const bukorval::Membro& member) {
  constexpr std::ptrdiff_t kFirstProperty = 1, kFirstMethod = 1001;
  const auto& all = bukorval::interfaccia();
  const auto firstMethod = std::ranges::find(all, bukorval::Genere::Metodo, &bukorval::Membro::genere) - all.begin();
  const auto place = &member - all.data();
  return static_cast<std::int32_t>(place < firstMethod ? kFirstProperty + place : kFirstMethod + place - firstMethod);
}

}  // namespace com
