// qor-limiter snapshot: the editor's picture without a display.
#include "hosts/cli/Command.h"
#include "hosts/cli/ParameterSettings.h"
#include "hosts/cli/PictureFile.h"
#include "interface/PanelScene.h"
#include "interface/ParameterDisplay.h"
#include "kernel/ParameterTable.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <vector>

namespace qor::cli {

namespace {

struct SnapshotArguments {
    std::string output;
    std::string size = "512x340";
    std::string scale = "1";
    std::vector<std::string> settings;
    std::string meters;
    std::string contrast;
};

NSError atOption(const char* option, const std::string& source, const char* remedy) {
    return wrongUsage(std::string(option) + ": " + shown(source) + " can't be used. " + remedy);
}

// Numbers between separators; false if there are more or fewer, or one isn't finite.
template <std::size_t N>
bool parseNumbers(std::string_view source, char separator, std::array<double, N>& numbers) {
    for (std::size_t index = 0; index < N; ++index) {
        const std::size_t end = index + 1 < N ? source.find(separator) : source.size();
        if (end == std::string_view::npos || !parseDouble(source.substr(0, end), numbers[index]) ||
            !std::isfinite(numbers[index])) {
            return false;
        }
        source.remove_prefix(std::min(end + 1, source.size()));
    }
    return true;
}

Result<void> setUp(PanelScene& scene, const SnapshotArguments& arguments) {
    for (const ParameterRow& row : kParameterTable) {
        showParameter(scene.panel, static_cast<std::int64_t>(row.address), row.defaultValue);
    }
    for (const std::string& source : arguments.settings) {
        const Result<ParameterSetting> setting = parseSetting(source);
        if (!setting) {
            return wrongUsage("--set: " + setting.error().localizedDescription());
        }
        showParameter(scene.panel, static_cast<std::int64_t>(setting.value().address), setting.value().value);
    }
    if (!arguments.meters.empty()) {
        std::array<double, 4> meters{};
        if (!parseNumbers(arguments.meters, ',', meters)) {
            return atOption("--meters", arguments.meters, "Give four numbers from 0 to 1: 0.8,0.7,0.6,0.5.");
        }
        scene.setMeters(meters[0], meters[1], meters[2], meters[3]);
    }
    if (!arguments.contrast.empty()) {
        std::array<double, 1> contrast{};
        if (!parseNumbers(arguments.contrast, ',', contrast) || contrast[0] < 0.0 || contrast[0] > 1.0) {
            return atOption("--contrast", arguments.contrast, "Give a grey level from 0 to 1.");
        }
        scene.setContrast(static_cast<float>(contrast[0]));
    }
    return {};
}

Result<void> runSnapshot(const SnapshotArguments& arguments) {
    std::array<double, 2> size{};
    if (!parseNumbers(arguments.size, 'x', size) || size[0] <= 0.0 || size[1] <= 0.0) {
        return atOption("--size", arguments.size, "Give width and height in points: 512x340.");
    }
    std::array<double, 1> scale{};
    if (!parseNumbers(arguments.scale, 'x', scale) || scale[0] <= 0.0) {
        return atOption("--scale", arguments.scale, "Give a number above 0: 2.");
    }
    PanelScene scene;
    if (Result<void> ready = setUp(scene, arguments); !ready) {
        return ready;
    }
    const Result<std::unique_ptr<PictureFile>> file = PictureFile::create(arguments.output);
    if (!file) {
        return file.error();
    }
    if (Result<void> written =
            file.value()->write({.width = size[0], .height = size[1]}, scale[0],
                                [&] { scene.draw(CGRectMake(0.0, 0.0, size[0], size[1])); });
        !written) {
        return written;
    }
    return file.value()->commit();
}

} // namespace

Command addSnapshotCommand(CLI::App& program) {
    CLI::App* snapshot = program.add_subcommand("snapshot", "Draw the editor's panel into a file");
    const auto arguments = std::make_shared<SnapshotArguments>();
    snapshot->add_option("OUT", arguments->output, "The picture to write: .png, .svg or .pdf")->required();
    snapshot
        ->add_option("--size", arguments->size, "Width and height in points; the panel keeps its proportions")
        ->capture_default_str()
        ->type_name("WxH");
    snapshot->add_option("--scale", arguments->scale, "Pixels per point, or enlargement of a vector picture")
        ->capture_default_str()
        ->type_name("S");
    snapshot
        ->add_option_function<std::string>(
            "--set", [arguments](const std::string& source) { arguments->settings.push_back(source); },
            "Show a parameter's value; may be given often. The panel shows the six knobs, bypass and "
            "audition; "
            "without --set, their defaults")
        ->trigger_on_parse()
        ->type_name("NAME=VALUE");
    snapshot
        ->add_option("--meters", arguments->meters,
                     "Two needles (1 is no reduction) and two output dots, each 0 to 1")
        ->type_name("C1,C2,P1,P2");
    snapshot
        ->add_option("--contrast", arguments->contrast,
                     "What the brightness slider sets: 0 black plate and white lines, 1 the reverse")
        ->type_name("C");
    snapshot->footer(
        "Example:\n  qor-limiter snapshot panel.png --scale 2 --set threshold=0.6 --set bypass=on \\\n"
        "      --meters 0.8,0.7,0.6,0.55");
    return {snapshot, [arguments] { return runSnapshot(*arguments); }};
}

} // namespace qor::cli
