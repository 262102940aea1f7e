// The formats of sound files that the program writes.
#pragma once

#include "hosts/cli/Failure.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qor::cli {

enum class OutputFormat : std::uint8_t { float32, pcm24, pcm16, flac };

struct OutputFormatName {
    const char* name;
    OutputFormat format;
};
/// What `--format` takes. FLAC has 24 bits, the others are WAV.
inline constexpr std::array<OutputFormatName, 4> kOutputFormats{{
    {"float", OutputFormat::float32},
    {"pcm24", OutputFormat::pcm24},
    {"pcm16", OutputFormat::pcm16},
    {"flac", OutputFormat::flac},
}};
std::optional<OutputFormat> outputFormatNamed(std::string_view name);

/// The format for a file: the wanted one, or, if none is wanted, what the ending of the file's name says,
/// otherwise 32-bit float. Refuses an unknown format, and a name whose ending promises another kind of file.
Result<OutputFormat> chooseOutputFormat(const std::string& file, const std::string& wanted);

} // namespace qor::cli
