#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "values/Conversion.h"
#include "values/Text.h"
#include "values/Variant.h"

namespace bukorval::dati {

/// Codes, told apart as the database compares them: without regard to case and to blanks behind them.
class CodeSet {
 public:
  CodeSet() = default;
  explicit CodeSet(const std::vector<values::Variant>& codes) {
    for (const auto& code : codes) insert(code);
  }

  /// False when it is there already.
  bool insert(const values::Variant& code) { return codes_.insert(key(code)).second; }
  bool contains(const values::Variant& code) const { return codes_.contains(key(code)); }
  bool empty() const { return codes_.empty(); }

 private:
  static std::string key(const values::Variant& code) { return values::foldText(values::toPlainText(code)); }

  std::unordered_set<std::string> codes_;
};

}  // namespace bukorval::dati
