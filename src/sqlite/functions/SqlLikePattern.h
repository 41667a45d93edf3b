#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace sqlite {

/// A pattern of SQL Server's LIKE: % any text, _ one character, [a-f1] one of a set, [^a-f] one outside it.
/// Letters match without regard to case; blanks at the end of a matched text do not count.
class SqlLikePattern {
 public:
  explicit SqlLikePattern(std::string_view pattern);
  bool matches(std::string_view text) const;

 private:
  struct Element {
    enum class Kind { AnyText, OneCharacter, Character, Set } kind;
    char32_t character = 0;
    bool negated = false;
    std::vector<std::pair<char32_t, char32_t>> ranges;
  };
  static bool accepts(const Element& element, char32_t character);
  std::size_t readSet(std::u32string_view pattern, std::size_t position);

  std::vector<Element> elements_;
};

}  // namespace sqlite
