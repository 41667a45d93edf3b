#pragma once

#include <string>
#include <string_view>

namespace ado {

/// The text that a filter's LIKE looks for, with the ends that are open.
class FilterPattern {
 public:
  /// Throws Errore for a wildcard that stands inside.
  explicit FilterPattern(std::string_view pattern);

  bool matches(std::string_view text) const;

 private:
  std::string core_;  ///< case folded
  bool openStart_ = false;
  bool openEnd_ = false;
};

}  // namespace ado
