#pragma once

#include <span>

namespace capi {

/// The first sentence of a member's contract.
struct Description {
  const char* name;
  const char* sentence;
};

/// Those of all members, made from the type library's text by Descriptions.cmake.
std::span<const Description> descriptions();

}  // namespace capi
