// Build tool: writes the bundle's Turtle files.
//   qor-lv2-describe OUTPUT-DIRECTORY [PRESET-FILE...]
#include "hosts/lv2/Lv2Description.h"
#include "platform/files/Files.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <optional>

namespace {

using qor::lv2::PresetValues;

/// A factory preset: groups with a single "param" each.
std::optional<PresetValues> readPreset(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    platform::NSPropertyListFormat format = platform::NSPropertyListXMLFormat_v1_0;
    const auto parsed = platform::PropertyListSerialization::propertyListWithData(
        platform::dataFromText(bytes), platform::NSPropertyListImmutable, format);
    const platform::PropertyListDictionary* top = parsed ? parsed.value().asDictionary() : nullptr;
    if (top == nullptr) {
        return std::nullopt;
    }
    PresetValues preset;
    preset.name = path.stem().string();
    std::size_t found = 0;
    for (const auto& [key, value] : *top) {
        const platform::PropertyListDictionary* group = value.asDictionary();
        const platform::PropertyList* entry = group == nullptr ? nullptr : group->find("param");
        const platform::PropertyListDictionary* param = entry == nullptr ? nullptr : entry->asDictionary();
        const platform::PropertyList* address = param == nullptr ? nullptr : param->find("address");
        const platform::PropertyList* number = param == nullptr ? nullptr : param->find("value");
        if (address == nullptr || number == nullptr || !address->asInteger() || !number->asNumber()) {
            continue;
        }
        const auto place = static_cast<std::uint64_t>(*address->asInteger());
        if (place < qor::kParameterCount) {
            preset.values[place] = static_cast<float>(*number->asNumber());
            ++found;
        }
    }
    return found == qor::kParameterCount ? std::optional(preset) : std::nullopt;
}

bool write(const std::filesystem::path& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    return static_cast<bool>(file.flush());
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fputs("usage: qor-lv2-describe OUTPUT-DIRECTORY [PRESET-FILE...]\n", stderr);
        return 2;
    }
    std::vector<PresetValues> presets;
    for (int i = 2; i < argc; ++i) {
        const std::optional<PresetValues> preset = readPreset(argv[i]);
        if (!preset) {
            std::fprintf(stderr, "qor-lv2-describe: %s: not a preset with all twelve parameters\n", argv[i]);
            return 1;
        }
        presets.push_back(*preset);
    }
    std::sort(presets.begin(), presets.end(),
              [](const PresetValues& a, const PresetValues& b) { return a.name < b.name; });
    const std::filesystem::path directory(argv[1]);
    std::filesystem::create_directories(directory);
    const bool written = write(directory / "manifest.ttl", qor::lv2::manifestTurtle(presets)) &&
                         write(directory / "qor-limiter.ttl", qor::lv2::pluginTurtle()) &&
                         write(directory / "presets.ttl", qor::lv2::presetsTurtle(presets));
    if (!written) {
        std::fprintf(stderr, "qor-lv2-describe: cannot write to %s\n", argv[1]);
        return 1;
    }
    return 0;
}
