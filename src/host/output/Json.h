#pragma once

#include <nlohmann/json.hpp>

#include "host/output/Table.h"

namespace bukorval::host {

/// Null, true or false, a number or text; dates as ISO text.
nlohmann::ordered_json inJson(const values::Variant& valore, const Colonna& colonna);
/// An array of objects, one per row.
nlohmann::ordered_json inJson(const Tabella& tabella);

}  // namespace bukorval::host
