#pragma once

namespace bukorval::host {

/// Writes a page of the manual in the language of the environment, as `man` reads it: behind `--manual` the name of a
/// command, or nothing for the program's own page. It is made from what the command line is made from.
/// @return whether the command line asks for that.
bool writeManual(int argc, const char* const* argv);

}  // namespace bukorval::host
