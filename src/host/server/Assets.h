#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "host/server/Http.h"

/// The files of the page.
namespace bukorval::host::server {

struct Asset {
  std::string_view path;  ///< "app.js", "icons/plus.svg"
  std::string_view content;
};
/// Those of src/page, put into the program when it is built.
std::span<const Asset> assets();

/// @param folder  where files are read from instead, "" for those in the program.
/// @param path    "/app.js". Nothing for one that is not there, or outside the folder.
std::optional<Reply> assetReply(const std::string& folder, std::string_view path);

}  // namespace bukorval::host::server
