// qor-limiter presets: what presets there are, what one holds, saving and deleting one.
#include "hosts/cli/Command.h"
#include "hosts/cli/PresetSettings.h"
#include "hosts/cli/PresetTexts.h"

#include <iostream>
#include <memory>

namespace qor::cli {

namespace {

struct PresetsArguments {
    bool json = false;
    std::string name;
    std::string from;
    std::vector<std::string> settings;
};

Result<void> showPreset(const PresetsArguments& arguments) {
    const auto entry = host::findPreset(arguments.name);
    if (!entry) {
        return wrongUsage(entry.error().localizedDescription());
    }
    const auto preset = openPreset(arguments.name);
    if (!preset) {
        return preset.error();
    }
    for (const std::string& note : preset.value().notes) {
        std::cerr << "qor-limiter: note: " << note << '\n';
    }
    std::cout << (arguments.json ? presetAsJson(entry.value(), preset.value())
                                 : presetAsTable(entry.value(), preset.value()));
    return {};
}

Result<void> saveOne(const PresetsArguments& arguments) {
    const auto values = valuesFrom(arguments.from, arguments.settings);
    if (!values) {
        return values.error();
    }
    const auto saved = host::savePreset(arguments.name, values.value());
    if (!saved) {
        return workFailed(saved.error().localizedDescription());
    }
    std::cout << saved.value().file.path() << '\n';
    return {};
}

Result<void> deleteOne(const PresetsArguments& arguments) {
    const auto entry = host::findUserPreset(arguments.name);
    if (!entry) {
        return wrongUsage(entry.error().localizedDescription());
    }
    if (const auto deleted = host::deletePreset(entry.value()); !deleted) {
        return workFailed(deleted.error().localizedDescription());
    }
    std::cout << entry.value().file.path() << '\n';
    return {};
}

CLI::App* addShow(CLI::App& presets, const std::shared_ptr<PresetsArguments>& arguments) {
    CLI::App* show = presets.add_subcommand("show", "Print a preset's values");
    show->add_option("PRESET", arguments->name, "A preset's name, or a file (with a slash or \".plist\")")
        ->required();
    show->add_flag("--json", arguments->json, "Print JSON: an object with the values by identifier");
    show->footer("Example:\n  qor-limiter presets show \"Drum Bus\"");
    return show;
}

CLI::App* addSave(CLI::App& presets, const std::shared_ptr<PresetsArguments>& arguments) {
    CLI::App* save = presets.add_subcommand("save", "Save a user preset and print its file");
    save->add_option("NAME", arguments->name, "The preset's name; a preset of that name is replaced")
        ->required();
    save->add_option("--from", arguments->from, "Start from a preset instead of the defaults")
        ->type_name("PRESET");
    save->add_option("--set", arguments->settings,
                     "Set a parameter; may be given often ('qor-limiter params')")
        ->type_name("NAME=VALUE")
        ->expected(1)
        ->take_all();
    save->footer(
        "Example:\n  qor-limiter presets save \"My Drums\" --from \"Drum Bus\" --set threshold=0.55");
    return save;
}

CLI::App* addDelete(CLI::App& presets, const std::shared_ptr<PresetsArguments>& arguments) {
    CLI::App* remove = presets.add_subcommand("delete", "Delete a user preset for good and print its file");
    remove->add_option("NAME", arguments->name, "The preset's name, letter for letter")->required();
    remove->footer("Example:\n  qor-limiter presets delete \"My Drums\"");
    return remove;
}

} // namespace

Command addPresetsCommand(CLI::App& program) {
    CLI::App* presets = program.add_subcommand("presets", "List, show, save and delete presets");
    const auto arguments = std::make_shared<PresetsArguments>();
    presets->add_flag("--json", arguments->json, "Print JSON: an array with one object per preset");
    presets->footer(
        "Lists the factory presets and your own. Yours lie in \"qor-limiter/presets\" in the data "
        "directory\n(XDG_DATA_HOME, otherwise ~/.local/share).\n\n"
        "Example:\n  qor-limiter presets --json");
    presets->require_subcommand(0, 1);
    CLI::App* show = addShow(*presets, arguments);
    CLI::App* save = addSave(*presets, arguments);
    CLI::App* remove = addDelete(*presets, arguments);
    return {presets, [arguments, show, save, remove]() -> Result<void> {
                if (show->parsed()) {
                    return showPreset(*arguments);
                }
                if (save->parsed()) {
                    return saveOne(*arguments);
                }
                if (remove->parsed()) {
                    return deleteOne(*arguments);
                }
                const auto list = host::listPresets();
                std::cout << (arguments->json ? presetsAsJson(list) : presetsAsTable(list));
                return {};
            }};
}

} // namespace qor::cli
