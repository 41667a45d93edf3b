#pragma once

#include <string>

namespace bukorval {

/// A new globally unique identifier as 32 upper-case hexadecimal digits without separators; "" when the
/// system has none to give.
std::string CreaGuidEsadecimale();

/// The identifier of one instance: made on first use, then kept.
class Identita {
 public:
  const std::string& GetIdIstanza();

 private:
  std::string id_;
};

}  // namespace bukorval
