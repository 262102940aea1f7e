// The one table of the limiter's parameters. The parameter tree, the plug-in formats, the command line and
// the documentation are all made from it.
#pragma once

#include "kernel/ParameterAddresses.h"
#include "platform/audio/Audio.h"
#include "platform/core/RealTime.h"

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace qor {

inline constexpr std::size_t kParameterCount = 12;

/// What is known of one parameter. The first half is what the unit's own tree says; the second half is what
/// our hosts show people.
struct ParameterRow {
    AUParameterAddress address;
    const char* identifier;
    const char* displayName; // the tree's; not unique
    float minimum;
    float maximum;
    float defaultValue;
    AudioUnitParameterUnit unit;

    const char* shortName;                   // on the command line
    const char* hostName;                    // in the plug-in formats; unique
    const char* symbol;                      // a C identifier, for formats that want one
    int digits;                              // behind the point, in value texts
    std::span<const char* const> valueNames; // one for each whole value from 0 up; empty for continuous ones
    const char* help;                        // one sentence or two

    bool isStepped() const noexcept { return !valueNames.empty(); }
    /// The value held inside the range; NaN gives the default.
    float clamped(float value) const noexcept QOR_NONBLOCKING_IN_RENDER;
};

namespace parameterNames {
inline constexpr std::array<const char*, 4> kModes{"Stereo", "Linked", "Mid/Side", "Mid/Side Linked"};
inline constexpr std::array<const char*, 2> kSwitch{"Off", "On"};
} // namespace parameterNames

/// In address order: a row's place is its address.
inline constexpr std::array<ParameterRow, kParameterCount> kParameterTable{{
    {kLimiterAttack,
     "kLimiterAttack",
     "Limiter Attack",
     0.0F,
     1.0F,
     0.1F,
     AudioUnitParameterUnit::Generic,
     "attack",
     "Attack",
     "attack",
     3,
     {},
     "How fast the gain falls: 0 follows each sample at once, 1 takes about a hundred samples. Counted in "
     "samples, so it sounds faster at higher sample rates."},
    {kLimiterRelease,
     "kLimiterRelease",
     "Limiter Release",
     0.0F,
     1.0F,
     0.5F,
     AudioUnitParameterUnit::Generic,
     "release",
     "Release",
     "release",
     3,
     {},
     "How slowly the gain comes back: 0 takes about a hundred samples, 1 about a hundred thousand. Counted "
     "in "
     "samples, so it sounds faster at higher sample rates."},
    {kLimiterThreshold,
     "kLimiterThreshold",
     "Limiter Threshold",
     0.0F,
     1.0F,
     0.8F,
     AudioUnitParameterUnit::Generic,
     "threshold",
     "Threshold",
     "threshold",
     3,
     {},
     "Where limiting begins: higher means less limiting. In the threshold law from about -34 dB at 0 to +6 "
     "dB at 1."},
    {kLimiterKnee,
     "kLimiterKnee",
     "Limiter Knee",
     0.0F,
     1.0F,
     0.5F,
     AudioUnitParameterUnit::Generic,
     "knee",
     "Knee",
     "knee",
     3,
     {},
     "The gain law: above 0.5 a soft one that acts at every level, otherwise one that acts above the "
     "threshold. The threshold takes on the new law when it is set again."},
    {kLimiterTrim,
     "kLimiterTrim",
     "Limiter Trim",
     0.0F,
     1.0F,
     0.5F,
     AudioUnitParameterUnit::Generic,
     "trim",
     "Trim",
     "trim",
     3,
     {},
     "The level of the limited signal: -20 dB at 0, 0 dB at 0.5, +20 dB at 1."},
    {kLimiterMix,
     "kLimiterMix",
     "Limiter Mix",
     0.0F,
     1.0F,
     1.0F,
     AudioUnitParameterUnit::Generic,
     "mix",
     "Mix",
     "mix",
     3,
     {},
     "The share of the limited signal in the output: 0 is the dry signal, 1 the limited one."},
    {kLimiterMode, "kLimiterMode", "Limiter Mode", 0.0F, 3.0F, 0.0F, AudioUnitParameterUnit::Indexed, "mode",
     "Mode", "mode", 0, parameterNames::kModes,
     "What the two limiters work on: left and right apart, the sum of both, mid and side apart, or mid "
     "alone."},
    {kLimiterBypass, "kLimiterBypass", "Limiter Bypass", 0.0F, 1.0F, 0.0F, AudioUnitParameterUnit::Boolean,
     "bypass", "Bypass", "bypass", 0, parameterNames::kSwitch,
     "Passes the signal by the limiter; the output meters and the final limiter go on."},
    {kLimiterAudition, "kLimiterAudition", "Limiter Audition", 0.0F, 1.0F, 0.0F,
     AudioUnitParameterUnit::Boolean, "audition", "Audition", "audition", 0, parameterNames::kSwitch,
     "Lets you hear what the limiter takes away instead of what it leaves."},
    {kLimiterInputFilterHP,
     "kLimiterInputFilterHP",
     "Limiter Reserved",
     0.0F,
     1.0F,
     0.0F,
     AudioUnitParameterUnit::Generic,
     "inputfilterhp",
     "Input Filter HP",
     "input_filter_hp",
     3,
     {},
     "The lower edge of the input filter; 0 leaves the lows in."},
    {kLimiterInputFilterLP,
     "kLimiterInputFilterLP",
     "Limiter Reserved",
     0.0F,
     1.0F,
     1.0F,
     AudioUnitParameterUnit::Generic,
     "inputfilterlp",
     "Input Filter LP",
     "input_filter_lp",
     3,
     {},
     "The upper edge of the input filter; 1 leaves the highs in."},
    {kLimiterFinalLimiter, "kLimiterFinalLimiter", "Final Limiter", 0.0F, 1.0F, 1.0F,
     AudioUnitParameterUnit::Boolean, "finallimiter", "Final Limiter", "final_limiter", 0,
     parameterNames::kSwitch, "A peak limiter behind everything that holds the output at or below 0 dB."},
}};

/// The row with the address, or null.
const ParameterRow* parameterRow(AUParameterAddress address) noexcept QOR_NONBLOCKING_IN_RENDER;
/// The row that a person means: its identifier, its short name, or its address in digits; letters in any
/// case. Null if none fits.
const ParameterRow* parameterRowNamed(std::string_view name) noexcept;

/// A value as people read it: the value's name, or digits as the row says.
std::string parameterValueText(const ParameterRow& row, float value);
/// The value that a text means: a value's name (letters in any case) or a finite number; not held to the
/// range.
std::optional<float> parameterValueFromText(const ParameterRow& row, std::string_view source);

} // namespace qor
