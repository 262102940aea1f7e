#include "hosts/standalone/Options.h"

#include "platform/core/Text.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <iostream>
#include <map>

namespace qor::app {

namespace {

constexpr int kWrongUsage = 2;

// The library's own check of a range lets through what is not a number.
std::string checkScale(const std::string& text) {
    double factor = 0.0;
    return parseDouble(text, factor) && factor >= 0.25 && factor <= 8.0
               ? std::string()
               : "'" + text + "' is no factor from 0.25 to 8, as in 1.5";
}

} // namespace

ParsedOptions parseOptions(int argumentCount, const char* const* arguments) {
    ParsedOptions parsed;
    Options& options = parsed.options;
    CLI::App program("QOR Limiter: a zero-latency stereo peak limiter as a program with a window",
                     "qor-limiter-app");
    program.set_version_flag("--version", "qor-limiter-app " QOR_VERSION, "Print the version and end");
    program.set_help_flag("-h,--help", "Print this help and end");
    const std::map<std::string, BackendChoice> backends{{"auto", BackendChoice::automatic},
                                                        {"jack", BackendChoice::jack},
                                                        {"rtaudio", BackendChoice::rtaudio},
                                                        {"none", BackendChoice::none}};
    std::string backend = "auto";
    program
        .add_option(
            "--backend", backend,
            "Where sound comes from and goes to: jack (PipeWire's JACK too), rtaudio (a sound device), none, "
            "or auto: the first of them that is there")
        ->check(CLI::IsMember({"auto", "jack", "rtaudio", "none"}))
        ->type_name("NAME");
    program.add_flag("--connect", options.sound.connect,
                     "Connect the JACK ports with the first capture and playback ports of the machine");
    program.add_option("--name", options.sound.clientName, "The name of the JACK client (qor-limiter)")
        ->type_name("TEXT");
    program
        .add_option("--input-device", options.sound.devices.input,
                    "RtAudio's input device: a number of --list-devices or a part of its name")
        ->type_name("DEVICE");
    program.add_option("--output-device", options.sound.devices.output, "RtAudio's output device, likewise")
        ->type_name("DEVICE");
    program.add_flag("--list-devices", options.listDevices,
                     "List JACK's ports and the sound devices, and end");
    program.add_option("--scale", options.scale, "Pixels per point of the window (that of the desktop)")
        ->check(checkScale)
        ->type_name("FACTOR");
    program.add_flag("--log", options.log, "Write the limiter's log lines to standard output");
    program.footer(
        "The window's size and the limiter's settings are kept below $XDG_STATE_HOME/qor-limiter.\n"
        "Exit status: 0 done, 1 no display or no window, 2 wrong usage.");
    try {
        program.parse(argumentCount, arguments);
    } catch (const CLI::ParseError& found) {
        if (found.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
            program.exit(found, std::cout, std::cerr);
            parsed.exitStatus = 0;
        } else {
            std::cerr << "qor-limiter-app: " << found.what() << "\nSee 'qor-limiter-app --help'.\n";
            parsed.exitStatus = kWrongUsage;
        }
        std::cout.flush();
        return parsed;
    }
    options.sound.backend = backends.at(backend);
    return parsed;
}

} // namespace qor::app
