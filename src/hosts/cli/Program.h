// The program around the subcommands: arguments, help, exit status.
#pragma once

namespace qor::cli {

/// Runs the command line and returns the exit status: 0, 1 if the work failed, 2 for wrong usage. Results go
/// to standard output, errors to standard error.
int runProgram(int argumentCount, const char* const* arguments);

} // namespace qor::cli
