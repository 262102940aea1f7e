// qor-limiter render: one sound file through the limiter.
#include "hosts/cli/Command.h"
#include "hosts/cli/FileChecks.h"
#include "hosts/cli/FileLogSink.h"
#include "hosts/cli/PresetSettings.h"
#include "hosts/cli/RenderJob.h"
#include "hosts/cli/UnitEngine.h"

#include <cmath>
#include <iostream>
#include <memory>

namespace qor::cli {

namespace {

struct RenderArguments {
    RenderRequest request;
    std::vector<std::pair<bool, std::string>> settings; // raw or not, "NAME=VALUE"
    std::string format;
    std::string log;
    std::string preset;
    std::int64_t block = 512;
    bool plainPull = false;
};

// `option` is what the setting was given with.
NSError atOption(const char* option, const NSError& error) {
    return wrongUsage(std::string(option) + ": " + error.localizedDescription());
}

// The preset's first, so that a setting changes what the preset says.
Result<std::vector<ParameterSetting>> parseSettings(const RenderArguments& arguments) {
    std::vector<ParameterSetting> settings;
    if (!arguments.preset.empty()) {
        const Result<host::CheckedState> preset = openPreset(arguments.preset);
        if (!preset) {
            return preset.error();
        }
        settings = presetSettings(preset.value());
    }
    for (const auto& [raw, source] : arguments.settings) {
        const Result<ParameterSetting> setting = raw ? parseRawSetting(source) : parseSetting(source);
        if (!setting) {
            return atOption(raw ? "--raw-set" : "--set", setting.error());
        }
        settings.push_back(setting.value());
    }
    return settings;
}

// No file that is written may be one that is read, or written twice.
Result<void> requireDistinctFiles(const RenderArguments& arguments) {
    struct Use {
        const char* what;
        const std::string* file;
        bool written;
    };
    const RenderRequest& request = arguments.request;
    const Use uses[] = {{"the input", &request.input, false}, {"the automation", &request.automation, false},
                        {"--output", &request.output, true},  {"--meters", &request.meters, true},
                        {"--report", &request.report, true},  {"--log", &arguments.log, true}};
    for (const Use& later : uses) {
        for (const Use* earlier = std::begin(uses); earlier != &later; ++earlier) {
            if (later.written && !later.file->empty() && !earlier->file->empty() &&
                isSameFile(*earlier->file, *later.file)) {
                return wrongUsage(std::string(later.what) + " " + quotedName(*later.file) +
                                  " is the same file as " + earlier->what + " " + quotedName(*earlier->file) +
                                  ". Name another file.");
            }
        }
    }
    return {};
}

std::string decibels(double value, const char* unit) {
    if (std::isinf(value)) {
        return std::string("-inf ") + unit;
    }
    std::string number = fixedText(value, unit[0] == 'L' ? 1 : 2);
    if (number.find_first_not_of("-0.") == std::string::npos) {
        number.erase(0, number.find_first_not_of('-')); // no "-0.00"
    }
    return number + " " + unit;
}

void print(const RenderSummary& summary, const std::string& output) {
    for (const std::string& warning : summary.warnings) {
        std::cerr << "qor-limiter: warning: " << warning << '\n';
    }
    std::cout << "frames: " << summary.frames
              << "\nseconds: " << fixedText(static_cast<double>(summary.frames) / summary.sampleRate, 3)
              << "\nsample rate: " << summary.sampleRate << " Hz"
              << "\ninput peak: " << decibels(summary.inputPeak, "dBFS")
              << "\ninput loudness: " << decibels(summary.inputLoudness, "LUFS")
              << "\noutput peak: " << decibels(summary.outputPeak, "dBFS")
              << "\noutput loudness: " << decibels(summary.outputLoudness, "LUFS") << "\noutput: " << output
              << '\n';
}

Result<void> runRender(const RenderArguments& arguments) {
    RenderRequest request = arguments.request;
    Result<std::vector<ParameterSetting>> settings = parseSettings(arguments);
    if (!settings) {
        return settings.error();
    }
    request.settings = std::move(settings).value();
    const Result<OutputFormat> format = chooseOutputFormat(request.output, arguments.format);
    if (!format) {
        return format.error();
    }
    request.format = format.value();
    if (arguments.block < 1 || arguments.block > std::int64_t{kLargestBlock}) {
        return wrongUsage("--block: " + text(arguments.block) + " is outside the range. Give 1 to " +
                          text(kLargestBlock) + " frames.");
    }
    request.block = static_cast<std::uint32_t>(arguments.block);
    if (Result<void> distinct = requireDistinctFiles(arguments); !distinct) {
        return distinct;
    }
    std::unique_ptr<FileLogSink> file;
    if (!arguments.log.empty() && arguments.log != "-") {
        Result<std::unique_ptr<FileLogSink>> opened = FileLogSink::create(arguments.log);
        if (!opened) {
            return opened.error();
        }
        file = std::move(opened).value();
    }
    LogSink& quiet = discardingSink();
    const LogSinkScope log(file != nullptr ? *file : arguments.log.empty() ? quiet : standardOutputSink());
    Result<std::unique_ptr<UnitEngine>> engine = UnitEngine::create(arguments.plainPull);
    if (!engine) {
        return engine.error();
    }
    const Result<RenderSummary> summary = renderFile(request, *engine.value());
    if (!summary) {
        return summary.error();
    }
    print(summary.value(), request.output);
    return file != nullptr ? file->finish() : Result<void>();
}

} // namespace

Command addRenderCommand(CLI::App& program) {
    CLI::App* render = program.add_subcommand("render", "Limit a sound file");
    const auto arguments = std::make_shared<RenderArguments>();
    render->add_option("IN", arguments->request.input, "The sound file to limit: one or two channels")
        ->required();
    render
        ->add_option("-o,--output", arguments->request.output,
                     "The file to write; it appears when it is complete. Never the input itself")
        ->required()
        ->type_name("OUT");
    const auto addSetting = [&](const char* name, bool raw, const char* form, const char* help) {
        render
            ->add_option_function<std::string>(
                name,
                [arguments, raw](const std::string& source) {
                    arguments->settings.emplace_back(raw, source);
                },
                help)
            ->trigger_on_parse()
            ->type_name(form);
    };
    addSetting(
        "--set", false, "NAME=VALUE",
        "Set a parameter; may be given often, the order counts. NAME is an identifier, a short name or an "
        "address ('qor-limiter params')");
    addSetting(
        "--raw-set", true, "ADDRESS=VALUE",
        "Give the kernel a value as it is, past the ranges; addresses 0 to 15, in one order with --set");
    render
        ->add_option("--preset", arguments->preset,
                     "Start from a preset: a name ('qor-limiter presets') or a file")
        ->type_name("PRESET");
    render
        ->add_option("--automation", arguments->request.automation,
                     "Lines 'SAMPLETIME NAME VALUE', applied at their sample; '#' starts a comment")
        ->type_name("FILE");
    render->add_option("--block", arguments->block, "Frames of a render call, 1 to 4096")
        ->capture_default_str()
        ->type_name("N");
    render
        ->add_option(
            "--format", arguments->format,
            "float (32-bit WAV), pcm24 or pcm16 (WAV), flac (24-bit). Without it: flac for an OUT that "
            "ends in .flac, otherwise float")
        ->type_name("FORMAT");
    render->add_flag("--plain-pull", arguments->plainPull,
                     "Deliver the dry input each time the unit asks for input, also for its final limiter");
    render
        ->add_option("--meters", arguments->request.meters,
                     "Write the meters after each render call as comma-separated values")
        ->type_name("FILE.csv");
    render
        ->add_option("--report", arguments->request.report,
                     "Draw a picture: waveforms, gain reduction and output peaks over time, and the levels")
        ->type_name("FILE.png|.svg|.pdf");
    render
        ->add_option("--log", arguments->log,
                     "Write the limiter's log lines to a file, or '-' for standard output")
        ->type_name("FILE");
    render->footer(
        "Prints frames, length, and peak and loudness (EBU R 128) before and after.\n\n"
        "Example:\n  qor-limiter render mix.wav -o limited.wav --set knee=1 --set threshold=0.6 \\\n"
        "      --format pcm24 --meters meters.csv");
    return {render, [arguments] { return runRender(*arguments); }};
}

} // namespace qor::cli
