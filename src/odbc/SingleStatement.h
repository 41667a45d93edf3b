#pragma once

#include <string_view>

namespace odbc {

/// Throws values::Errore when the text holds no statement, or more than one, as it does when a value spliced into it
/// brings its own. IF … BEGIN … END around one statement counts as one; IF … ELSE holds two.
void requireSingleStatement(std::string_view text);

}  // namespace odbc
