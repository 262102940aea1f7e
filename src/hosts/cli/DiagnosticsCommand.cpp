// qor-limiter diagnostics: what the platform reports about the system limiter behind the kernel.
#include "hosts/cli/Command.h"
#include "hosts/cli/FileLogSink.h"
#include "hosts/shared/UnitHost.h"

namespace qor::cli {

namespace {

Result<void> printDiagnostics() {
    host::UnitHostOptions options;
    options.serviced = false;
    auto host = host::UnitHost::create(options);
    if (!host) {
        return workFailed("the limiter could not be made: " + host.error().localizedDescription());
    }
    host.value()->pump(); // what the construction had to say is not asked for
    const LogSinkScope log(standardOutputSink());
    {
        const RunLoop::Scope scope(host.value()->runLoop());
        unwrap(host.value()->unit().effect).nodeDiagnostics();
    }
    host.value()->pump();
    return {};
}

} // namespace

Command addDiagnosticsCommand(CLI::App& program) {
    CLI::App* diagnostics =
        program.add_subcommand("diagnostics", "Print what the final limiter reports about itself");
    diagnostics->footer(
        "One line per fact: the node, its unit, and each of the unit's buses. For reports of faults.\n\n"
        "Example:\n  qor-limiter diagnostics > report.txt");
    return {diagnostics, printDiagnostics};
}

} // namespace qor::cli
