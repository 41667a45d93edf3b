#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "host/environment/Environment.h"

/// What a page asks for between two commands.
namespace bukorval::host::server {

/// The deltas of figures that are being typed, by the object's own formulas. @param body  {"rows": [{"IMP_BUDGET":
/// "1250.50", …}]} or {"cells": {…}} for one; type and subtype may be there. Throws UsageError. @return {"rows": […]}.
std::string deltasOf(const nlohmann::json& body);

/// Which cards of the selected budget have been changed since a moment, as `now` named it the last time.
/// @param mark  of the commits until now. @return {"now": "2025-10-06 09:30:00 #17 @731 ~a.5", "cards": [{"id": 12,
/// "lastChange": "…"}]}; lastChange is null for a card that is gone.
std::string changesSince(Environment& environment, const std::string& since, const std::string& mark);

}  // namespace bukorval::host::server
