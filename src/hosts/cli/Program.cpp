#include "hosts/cli/Program.h"

#include "hosts/cli/Command.h"
#include "hosts/cli/Interrupt.h"

#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <cstdio>
#include <iostream>

namespace qor::cli {

namespace {

int report(const NSError& error) {
    std::cerr << "qor-limiter: " << error.localizedDescription() << '\n';
    return static_cast<int>(error.code);
}

// What the parser found: a wish for help or the version, or a mistake.
int answer(const CLI::App& program, const CLI::ParseError& found) {
    if (found.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
        return program.exit(found, std::cout, std::cerr) == 0 ? kExitSuccess : kExitWrongUsage;
    }
    std::string command = "qor-limiter";
    for (const CLI::App* used : program.get_subcommands()) {
        command += " " + used->get_name();
    }
    return report(wrongUsage(std::string(found.what()) + "\nSee '" + command + " --help'."));
}

} // namespace

std::vector<Command> addCommands(CLI::App& program) {
    return {addRenderCommand(program), addParamsCommand(program),   addPresetsCommand(program),
            addStateCommand(program),  addSnapshotCommand(program), addDiagnosticsCommand(program)};
}

int runProgram(int argumentCount, const char* const* arguments) {
    catchInterrupts();
    LogSink& before = setLogSink(discardingSink());
    CLI::App program("QOR Limiter: a zero-latency stereo peak limiter for sound files", "qor-limiter");
    program.set_version_flag("--version", "qor-limiter " QOR_VERSION, "Print the version and end");
    program.set_help_flag("-h,--help", "Print this help and end");
    program.require_subcommand(1);
    program.footer("Results go to standard output, progress and errors to standard error.\n"
                   "Exit status: 0 done, 1 the work failed, 2 wrong usage.\n"
                   "'qor-limiter COMMAND --help' explains a command.\n\n"
                   "Example:\n  qor-limiter render mix.wav -o limited.wav --set threshold=0.6");
    const std::vector<Command> commands = addCommands(program);
    int status = kExitSuccess;
    try {
        program.parse(argumentCount, arguments);
        for (const Command& command : commands) {
            if (command.arguments->parsed()) {
                if (const Result<void> done = command.run(); !done) {
                    status = report(done.error());
                }
            }
        }
    } catch (const CLI::ParseError& found) {
        status = answer(program, found);
    }
    std::cout.flush();
    // Log lines go there past std::cout and are flushed one by one: only the stream's mark tells of them.
    const bool lost = std::fflush(stdout) != 0 || std::ferror(stdout) != 0;
    if ((!std::cout || lost) && status == kExitSuccess) {
        status = report(workFailed("cannot write to standard output. Direct it to a place with room."));
    }
    setLogSink(before);
    return status;
}

} // namespace qor::cli
