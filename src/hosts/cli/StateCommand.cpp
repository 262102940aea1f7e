// qor-limiter state: what a host saves of the plug-in, as a file to make and to check.
#include "hosts/cli/Command.h"
#include "hosts/cli/OutputFile.h"
#include "hosts/cli/PresetSettings.h"

#include <algorithm>
#include <iostream>
#include <memory>

namespace qor::cli {

namespace {

struct StateArguments {
    std::string file;
    std::string preset;
    std::vector<std::string> settings;
};

/// Through a unit of its own, so that the file is what a session would hold.
Result<void> saveStateFile(const StateArguments& arguments) {
    const auto values = valuesFrom(arguments.preset, arguments.settings);
    if (!values) {
        return values.error();
    }
    host::UnitHostOptions options;
    options.serviced = false;
    auto unit = host::UnitHost::create(options);
    if (!unit) {
        return workFailed("the limiter could not be made: " + unit.error().localizedDescription());
    }
    for (const ParameterRow& row : kParameterTable) {
        if (auto set = unit.value()->setParameter(row.address, values.value().at(row.address)); !set) {
            return workFailed(set.error().localizedDescription());
        }
    }
    const auto file = OutputFile::create(arguments.file);
    if (!file) {
        return file.error();
    }
    if (auto written = file.value()->write(textView(host::saveState(*unit.value()))); !written) {
        return written;
    }
    return file.value()->commit();
}

Result<void> checkStateFile(const StateArguments& arguments) {
    const auto state =
        host::readPresetFile(URL::fileURLWithPath(arguments.file), host::Completeness::someParameters);
    if (!state) {
        return workFailed(state.error().localizedDescription());
    }
    const auto& values = state.value().values;
    const auto count =
        std::count_if(values.begin(), values.end(), [](const auto& value) { return value.has_value(); });
    std::cout << arguments.file << ": sound; sets " << count << " of " << kParameterCount << " parameters"
              << (count == kParameterCount ? "" : " (a preset, not a session's state)") << '\n';
    for (const std::string& note : state.value().notes) {
        std::cout << "note: " << note << '\n';
    }
    return {};
}

} // namespace

Command addStateCommand(CLI::App& program) {
    CLI::App* state = program.add_subcommand("state", "Save and check what a session keeps of the plug-in");
    const auto arguments = std::make_shared<StateArguments>();
    state->require_subcommand(1);
    state->footer("Example:\n  qor-limiter state check \"My Drums.plist\"");
    CLI::App* save =
        state->add_subcommand("save", "Write the state with the values given, all others at their defaults");
    save->add_option("FILE", arguments->file, "The file to write")->required();
    save->add_option("--preset", arguments->preset, "Start from a preset")->type_name("PRESET");
    save->add_option("--set", arguments->settings,
                     "Set a parameter; may be given often ('qor-limiter params')")
        ->type_name("NAME=VALUE")
        ->expected(1)
        ->take_all();
    save->footer("Example:\n  qor-limiter state save session.plist --set mode=linked");
    CLI::App* check =
        state->add_subcommand("check", "Say whether a preset or state file is sound, or where it is not");
    check->add_option("FILE", arguments->file, "The file to check")->required();
    check->footer(
        "Exit status 0: sound. 1: refused, with the line or the key path, what was found and what is "
        "wanted.\n\nExample:\n  qor-limiter state check session.plist");
    return {state, [arguments, save]() -> Result<void> {
                return save->parsed() ? saveStateFile(*arguments) : checkStateFile(*arguments);
            }};
}

} // namespace qor::cli
