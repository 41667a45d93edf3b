#pragma once

#include <cstdint>

#include "object/Interfaccia.h"

namespace com {

/// The identifier of a member in the dispatch interface: properties count from 1, methods from 1001, each in the order
/// of the interface. Clients keep these numbers, so that new members only ever come at the end of their kind.
std::int32_t memberId(const bukorval::Membro& member);

}  // namespace com
