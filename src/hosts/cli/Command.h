// The program's subcommands: each is one file with one function here.
#pragma once

#include "hosts/cli/Failure.h"

#include <CLI/App.hpp>

#include <functional>
#include <vector>

namespace qor::cli {

/// A subcommand whose arguments are declared; `run` does the work after they have been read.
struct Command {
    CLI::App* arguments = nullptr;
    std::function<Result<void>()> run;
};

Command addRenderCommand(CLI::App& program);
Command addParamsCommand(CLI::App& program);
Command addPresetsCommand(CLI::App& program);
Command addStateCommand(CLI::App& program);
Command addSnapshotCommand(CLI::App& program);
Command addDiagnosticsCommand(CLI::App& program);

/// All of them, in the order of the help text.
std::vector<Command> addCommands(CLI::App& program);

} // namespace qor::cli
