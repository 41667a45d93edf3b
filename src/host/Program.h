#pragma once

namespace bukorval::host {

/// The program `bukorval`: reads the command line, runs one command, tells failures on standard error.
/// @return 0; 1 refused; 2 the command line is wrong; 99 a run-time error.
int runProgram(int argc, const char* const* argv) noexcept;

}  // namespace bukorval::host
