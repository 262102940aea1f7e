#include "interface/ParameterDiagnostics.h"

#include <array>
#include <string_view>

namespace qor {

namespace {

struct FlagName {
    std::uint32_t mask;
    std::string_view name;
};

constexpr std::array<FlagName, 22> kFlags{{
    {0x10, "flag_CFNameRelease"},          {0x2000, "flag_OmitFromPresets"},
    {0x4000, "flag_PlotHistory"},          {0x8000, "flag_MeterReadOnly"},
    {0x470000, "flag_DisplayMask"},        {0x10000, "flag_DisplaySquareRoot"},
    {0x20000, "flag_DisplaySquared"},      {0x30000, "flag_DisplayCubed"},
    {0x40000, "flag_DisplayCubeRoot"},     {0x50000, "flag_DisplayExponential"},
    {0x100000, "flag_HasClump"},           {0x200000, "flag_ValuesHaveStrings"},
    {0x400000, "flag_DisplayLogarithmic"}, {0x800000, "flag_IsHighResolution"},
    {0x1000000, "flag_NonRealTime"},       {0x2000000, "flag_CanRamp"},
    {0x4000000, "flag_ExpertMode"},        {0x8000000, "flag_HasCFNameString"},
    {0x10000000, "flag_IsGlobalMeta"},     {0x20000000, "flag_IsElementMeta"},
    {0x40000000, "flag_IsReadable"},       {0x80000000, "flag_IsWritable"},
}};

constexpr std::array<std::string_view, 27> kKinds{"generic",
                                                  "indexed",
                                                  "boolean",
                                                  "percent",
                                                  "seconds",
                                                  "sampleFrames",
                                                  "phase",
                                                  "rate",
                                                  "hertz",
                                                  "cents",
                                                  "relativeSemiTones",
                                                  "midiNoteNumber",
                                                  "midiController",
                                                  "decibels",
                                                  "linearGain",
                                                  "degrees",
                                                  "equalPowerCrossfade",
                                                  "mixerFaderCurve1",
                                                  "pan",
                                                  "meters",
                                                  "absoluteCents",
                                                  "octaves",
                                                  "BPM",
                                                  "beats",
                                                  "milliseconds",
                                                  "ratio",
                                                  "customUnit"};

std::string tabs(std::int64_t level) {
    std::string indent;
    indent.append(static_cast<std::size_t>(level < 0 ? 0 : level), '\t');
    return indent;
}

std::string listText(const std::optional<std::vector<std::string>>& strings) {
    if (!strings) {
        return "";
    }
    std::string list;
    for (const std::string& each : *strings) {
        list += (list.empty() ? "\"" : ", \"") + each + "\"";
    }
    return "[" + list + "]";
}

} // namespace

std::string verboseParameterKind(AudioUnitParameterUnit kind) {
    const auto raw = static_cast<std::size_t>(kind);
    return std::string(raw < kKinds.size() ? kKinds[raw] : "unknown parameter kind");
}

void verboseFlags(AudioUnitParameterOptions flags, std::int64_t level) {
    const std::string indent = tabs(level);
    print(indent + "- The flag value includes the following flags... ");
    for (const FlagName& flag : kFlags) {
        if ((flags & flag.mask) == flag.mask) {
            print(indent + " - " + std::string(flag.name));
        }
    }
}

void printParameter(AUParameter& parameter, std::int64_t level) {
    const std::string indent = tabs(level);
    // A label and its value are two items, with a blank between them.
    const auto line = [&](std::string_view label, const std::string& value) {
        print(indent + std::string(label) + " " + value);
    };
    print("\n" + indent + "ExtensionViewController: Folllowing AU parameter was found... ");
    line("- address: ", text(static_cast<std::uint64_t>(parameter.address())));
    line("- displayName: ", parameter.displayName());
    line("- value: ", text(parameter.value()));
    line("- options: ", text(parameter.flags()));
    verboseFlags(parameter.flags(), level);
    line("- maxValue: ", text(parameter.maxValue()));
    line("- minValue: ", text(parameter.minValue()));
    line("- unit: (type ",
         text(static_cast<unsigned>(parameter.unit())) + ") " + verboseParameterKind(parameter.unit()));
    line("- unitName: ", parameter.unitName().value_or(""));
    line("- valueStrings: ", listText(parameter.valueStrings()));
}

} // namespace qor
