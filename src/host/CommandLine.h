#pragma once

namespace bukorval::host {

class Environment;

/// Reads the command line: the shared options go to the environment, then the command runs. What is wrong with the
/// command line is told on standard error, help goes to standard output.
/// @return exitOk or exitUsage. What the command throws passes through.
int runCommandLine(int argc, const char* const* argv, Environment& environment);

}  // namespace bukorval::host
