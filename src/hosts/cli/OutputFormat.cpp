#include "hosts/cli/OutputFormat.h"

#include <algorithm>
#include <filesystem>

namespace qor::cli {

namespace {

constexpr std::array<std::string_view, 3> kWavEndings{".wav", ".wave", ".rf64"};
constexpr std::string_view kFlacEnding = ".flac";
// Of sound files that this program doesn't write.
constexpr std::array<std::string_view, 15> kOtherEndings{".mp3", ".ogg", ".oga", ".opus", ".m4a",
                                                         ".aac", ".wma", ".aif", ".aiff", ".aifc",
                                                         ".au",  ".snd", ".caf", ".w64",  ".mp4"};

std::string endingOf(const std::string& file) {
    std::string ending = std::filesystem::path(file).extension().string();
    std::ranges::transform(ending, ending.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return ending;
}

bool contains(const auto& endings, const std::string& ending) {
    return std::ranges::find(endings, ending) != endings.end();
}

} // namespace

std::optional<OutputFormat> outputFormatNamed(std::string_view name) {
    for (const OutputFormatName& row : kOutputFormats) {
        if (name == row.name) {
            return row.format;
        }
    }
    return std::nullopt;
}

Result<OutputFormat> chooseOutputFormat(const std::string& file, const std::string& wanted) {
    const std::string ending = endingOf(file);
    if (contains(kOtherEndings, ending)) {
        return wrongUsage("--output: " + quotedName(file) + " ends in " + ending +
                          ", which can't be written. Name it .wav or .flac.");
    }
    if (wanted.empty()) {
        return ending == kFlacEnding ? OutputFormat::flac : OutputFormat::float32;
    }
    const std::optional<OutputFormat> format = outputFormatNamed(wanted);
    if (!format) {
        return wrongUsage("--format: " + shown(wanted) + " is no format. Give float, pcm24, pcm16 or flac.");
    }
    if (*format == OutputFormat::flac && contains(kWavEndings, ending)) {
        return wrongUsage("--format: flac makes a FLAC file, and " + quotedName(file) + " ends in " + ending +
                          ". Name it .flac, or give another format.");
    }
    if (*format != OutputFormat::flac && ending == kFlacEnding) {
        return wrongUsage("--format: " + wanted + " makes a WAV file, and " + quotedName(file) +
                          " ends in .flac. Name it .wav, or give flac.");
    }
    return *format;
}

} // namespace qor::cli
