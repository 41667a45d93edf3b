#pragma once

#include <string>

#include "host/server/Operations.h"

namespace bukorval::host::server {

/// What the server offers, for programs (OpenAPI 3.0): made from the commands and their options.
std::string openApi(const Operations& operations, const std::string& version);

}  // namespace bukorval::host::server
