// qor-limiter params: the table of parameters, for people and for programs.
#include "hosts/cli/Command.h"
#include "hosts/cli/ParameterTexts.h"

#include <iostream>
#include <memory>

namespace qor::cli {

Command addParamsCommand(CLI::App& program) {
    CLI::App* arguments = program.add_subcommand("params", "List the parameters");
    arguments->footer(
        "Names, ranges and defaults of the parameters that 'render --set' and automation take.\n\n"
        "Example:\n  qor-limiter params --json");
    const auto json = std::make_shared<bool>(false);
    arguments->add_flag("--json", *json, "Print JSON: an array with one object per parameter");
    return {arguments, [json]() -> Result<void> {
                std::cout << (*json ? parametersAsJson() : parametersAsTable());
                return {};
            }};
}

} // namespace qor::cli
