// How the diagnostics write the platform's values: "none" for what is absent, lists in brackets.
#pragma once

#include "platform/audio/Audio.h"

#include <string>

namespace qor::diagnostic {

inline constexpr const char* kNone = "none";

inline std::string valueText(const std::string& value) {
    return value;
}
template <class Number>
requires std::is_arithmetic_v<Number> std::string valueText(Number value) {
    return platform::text(value);
}
inline std::string valueText(long value) {
    return platform::text(static_cast<std::int64_t>(value));
}
inline std::string valueText(unsigned long value) {
    return platform::text(static_cast<std::uint64_t>(value));
}

std::string valueText(const AVAudioFormat& format);
std::string valueText(AUAudioUnitBusType type);
std::string valueText(const AudioComponent& component);
std::string valueText(const AudioComponentDescription& description);
std::string valueText(const AudioTimeStamp& stamp);
std::string valueText(const AUAudioUnitPreset& preset);
std::string valueText(const AUAudioUnitBusArray& busses);
std::string valueText(const AUParameterTree& tree);
std::string valueText(const std::map<std::string, std::string>& settings);
/// Three numbers of a packed version: "1.0.0".
std::string versionText(std::uint32_t version);

template <class T>
std::string valueText(const std::optional<T>& value) {
    return value ? valueText(*value) : std::string(kNone);
}
template <class T>
std::string valueText(const Ref<T>& value) {
    return value ? valueText(*value) : std::string(kNone);
}
template <class Signature>
std::string valueText(const Block<Signature>& block) {
    return block ? "defined" : kNone;
}
/// "[a, b]" for anything that can be walked.
template <class List>
std::string listText(const List& list) {
    std::string line = "[";
    const char* separator = "";
    for (const auto& item : list) {
        line += separator + valueText(item);
        separator = ", ";
    }
    return line + "]";
}
template <class List>
std::string listText(const std::optional<List>& list) {
    return list ? listText(*list) : std::string(kNone);
}

} // namespace qor::diagnostic
