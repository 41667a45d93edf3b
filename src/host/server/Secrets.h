#pragma once

#include <string>
#include <string_view>

namespace bukorval::host::server {

/// 192 bits from the system's generator, as 48 hexadecimal digits.
std::string secret();
/// Whether two texts are the same, in a time that does not tell how much of them is.
bool sameSecret(std::string_view given, std::string_view kept);

}  // namespace bukorval::host::server
