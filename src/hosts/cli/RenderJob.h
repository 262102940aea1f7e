// One file through the limiter.
#pragma once

#include "hosts/cli/AudioWriter.h"
#include "hosts/cli/Automation.h"
#include "hosts/cli/ParameterSettings.h"
#include "hosts/cli/RenderEngine.h"

#include <cstdint>
#include <string>
#include <vector>

namespace qor::cli {

struct RenderRequest {
    std::string input;
    std::string output;
    std::vector<ParameterSetting> settings; // in the order to apply them
    std::string automation;                 // a file, or empty
    std::string meters;                     // a file, or empty
    std::string report;                     // a picture file, or empty
    std::uint32_t block = 512;              // frames of a render call, 1 to `kLargestBlock`
    OutputFormat format = OutputFormat::float32;
};

/// Levels in dB relative to full scale and in LUFS; negative infinity for silence.
struct RenderSummary {
    std::int64_t frames = 0;
    int sampleRate = 0; // Hz
    double inputPeak = 0.0;
    double inputLoudness = 0.0;
    double outputPeak = 0.0;
    double outputLoudness = 0.0;
    std::vector<std::string> warnings;
};

/// Allocates the engine at the file's rate, applies the settings, renders the file and writes the outputs,
/// which appear only when all is done. Memory does not depend on the file's length. Progress goes to standard
/// error if that is a terminal.
Result<RenderSummary> renderFile(const RenderRequest& request, RenderEngine& engine);

} // namespace qor::cli
