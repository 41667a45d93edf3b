#include "host/server/Assets.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <iterator>

namespace bukorval::host::server {
namespace {

struct MediaType {
  std::string_view ending, type;
};
constexpr MediaType kTypes[] = {{".html", "text/html; charset=utf-8"},
                                {".css", "text/css; charset=utf-8"},
                                {".js", "text/javascript; charset=utf-8"},
                                {".mjs", "text/javascript; charset=utf-8"},
                                {".json", "application/json"},
                                {".webmanifest", "application/manifest+json"},
                                {".svg", "image/svg+xml"},
                                {".png", "image/png"},
                                {".ico", "image/x-icon"},
                                {".woff2", "font/woff2"},
                                {".txt", "text/plain; charset=utf-8"}};

std::string_view typeOf(std::string_view path) {
  const auto* const found = std::ranges::find_if(kTypes, [&](const auto& type) { return path.ends_with(type.ending); });
  return found == std::end(kTypes) ? std::string_view() : found->type;
}

/// Letters, digits and a few signs; no part begins with a point.
bool isPlain(std::string_view path) {
  char before = '/';
  return std::ranges::all_of(path, [&](char c) {
    const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
                       c == '_' || (c == '.' && before != '/') || (c == '/' && before != '/');
    before = c;
    return plain;
  });
}

std::optional<std::string> fileOf(const std::string& folder, std::string_view path) {
  std::ifstream in(folder + "/" + std::string(path), std::ios::binary);
  if (!in) return std::nullopt;
  std::string content{std::istreambuf_iterator(in), {}};
  return in.bad() ? std::nullopt : std::optional(std::move(content));
}

std::optional<std::string> builtIn(std::string_view path) {
  const auto all = assets();
  const auto found = std::ranges::find(all, path, &Asset::path);
  return found == all.end() ? std::nullopt : std::optional(std::string(found->content));
}

/// A folder's name that changes with what is in the program, so that browsers may keep what is below it.
const std::string& keptFolder() {
  static const std::string name = [] {
    std::uint64_t sum = 14695981039346656037U;
    for (const auto& asset : assets())
      for (const char c : asset.content) sum = (sum ^ static_cast<unsigned char>(c)) * 1099511628211U;
    return "v" + std::to_string(sum) + "/";
  }();
  return name;
}

constexpr std::string_view kFirstPage = "index.html";

/// The first page names the files that browsers may keep.
std::string withKeptFiles(std::string page) {
  for (const std::string_view attribute : {" href=\"", " src=\""})
    for (auto at = page.find(attribute); at != std::string::npos; at = page.find(attribute, at + 1))
      page.insert(at + attribute.size(), "/" + keptFolder());
  return page;
}

}  // namespace

std::optional<Reply> assetReply(const std::string& folder, std::string_view path) {
  path.remove_prefix(std::min<std::size_t>(path.size(), 1));
  const auto type = typeOf(path);
  if (type.empty() || !isPlain(path)) return std::nullopt;
  const bool kept = folder.empty() && path.starts_with(keptFolder());
  if (kept) path.remove_prefix(keptFolder().size());
  auto content = folder.empty() ? builtIn(path) : fileOf(folder, path);
  if (!content) return std::nullopt;
  if (folder.empty() && path == kFirstPage) content = withKeptFiles(std::move(*content));
  const auto* const how = kept ? "private, max-age=31536000, immutable" : "no-cache";
  return Reply{200, std::string(type), std::move(*content), {{"Cache-Control", how}}};
}

}  // namespace bukorval::host::server
