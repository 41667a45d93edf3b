#include "host/server/Secrets.h"

#include <unistd.h>

#include <array>
#include <cstddef>

#include "dati/Failure.h"
#include "language/Language.h"

namespace bukorval::host::server {

std::string secret() {
  std::array<unsigned char, 24> bytes{};
  if (getentropy(bytes.data(), bytes.size()) != 0) throw dati::Refused(tr("The system has no random numbers"));
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text;
  for (const auto byte : bytes) text.append(1, kDigits[byte >> 4U]).append(1, kDigits[byte & 15U]);
  return text;
}

bool sameSecret(std::string_view given, std::string_view kept) {
  if (kept.empty()) return false;
  unsigned difference = given.size() == kept.size() ? 0 : 1;
  for (std::size_t i = 0; i < given.size(); ++i)
    difference |=
        static_cast<unsigned>(static_cast<unsigned char>(given[i]) ^ static_cast<unsigned char>(kept[i % kept.size()]));
  return difference == 0;
}

}  // namespace bukorval::host::server
