// A preset of an audio unit as the host sees it: a number and a name.
#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace platform {

/// Factory presets have numbers from 0 up, a negative number marks a user preset.
class AUAudioUnitPreset {
public:
    AUAudioUnitPreset() = default;
    AUAudioUnitPreset(std::int64_t number, std::string name) : number_(number), name_(std::move(name)) {}

    std::int64_t number() const noexcept { return number_; }
    void setNumber(std::int64_t number) noexcept { number_ = number; }
    const std::string& name() const noexcept { return name_; }
    void setName(std::string name) { name_ = std::move(name); }

private:
    std::int64_t number_ = 0;
    std::string name_;
};

} // namespace platform
