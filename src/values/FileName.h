#pragma once

#include <filesystem>
#include <string>
#include <string_view>

/// Names of files are UTF-8 inside; at their edge to the system they become its own.
namespace values {

#ifdef _WIN32

inline std::filesystem::path pathOf(std::string_view name) {
  return std::filesystem::path(std::u8string(name.begin(), name.end()));
}
inline std::string nameOf(const std::filesystem::path& path) {
  const auto name = path.generic_u8string();
  return std::string(name.begin(), name.end());
}

#else

inline std::filesystem::path pathOf(std::string_view name) { return name; }
inline std::string nameOf(const std::filesystem::path& path) { return path.string(); }

#endif

}  // namespace values
