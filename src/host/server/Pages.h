#pragma once

#include <string_view>

#include "host/server/Http.h"

/// The pages in front of the page: they need no script.
namespace bukorval::host::server {

/// For who comes without a session.
Reply strangerPage(bool hasPassword);
/// The form for the password. @param problem  what was wrong with the last one. @param named  it asks for the user too.
Reply loginPage(int status, std::string_view problem, bool named);

}  // namespace bukorval::host::server
