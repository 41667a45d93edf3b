#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace bukorval::picture {

/// A text that a page shows and does not obey: marks of the language are written out, characters that no page may have
/// become a sign that says so.
std::string escaped(std::string_view text);

/// A coordinate: two decimals at most.
std::string coordinate(double value);

struct Attribute {
  std::string_view name;
  std::string value;
};

/// Writes elements that are well-formed; every text and value goes through `escaped`.
class Markup {
 public:
  Markup& open(std::string_view element, std::initializer_list<Attribute> attributes = {});
  Markup& close(std::string_view element);
  /// An element that has nothing in it.
  Markup& empty(std::string_view element, std::initializer_list<Attribute> attributes = {});
  /// An element with a text.
  Markup& element(std::string_view element, std::initializer_list<Attribute> attributes, std::string_view text);
  Markup& text(std::string_view text);
  /// What is markup already, or a script or style of ours.
  Markup& raw(std::string_view markup);

  const std::string& str() const { return out_; }

 private:
  void begin(std::string_view element, std::initializer_list<Attribute> attributes);

  std::string out_;
};

}  // namespace bukorval::picture
