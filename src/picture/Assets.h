#pragma once

#include <string_view>

namespace bukorval::picture {

/// A text of the page that only runs where its hash is known.
struct Asset {
  std::string_view text;
  std::string_view sha256;  ///< hexadecimal
};
/// page.css and page.js, put into the program when it is built.
extern const Asset kStyle, kScript;

}  // namespace bukorval::picture
