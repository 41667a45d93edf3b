#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// What somebody may have meant who wrote something that is not there.
namespace bukorval::dati {

/// The texts that are a slip of the keyboard away from one, or begin with it, the nearest first. Case does not count.
std::vector<std::string> nearest(std::string_view text, const std::vector<std::string>& known, std::size_t atMost = 3);

/// "; did you mean A, B or C?", for the end of a message; "" when nothing is near.
std::string didYouMean(std::string_view text, const std::vector<std::string>& known);
/// The same, and "; there are A, B, C" where nothing is near and there are only a few.
std::string didYouMeanOf(std::string_view text, const std::vector<std::string>& known);

}  // namespace bukorval::dati
