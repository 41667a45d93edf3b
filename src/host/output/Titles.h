#pragma once

#include <string>
#include <string_view>

namespace bukorval::host {

/// What heads a column of an aligned table: words for the usual columns of the grids, a shortened field name
/// for the rest (BU65_MARCA_MG64 becomes MARCA).
std::string title(std::string_view field);
/// Whether people are shown that column of a card only on request.
bool isTechnical(std::string_view field);

}  // namespace bukorval::host
