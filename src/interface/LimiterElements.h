// The elements of the surface: what is touched, what it shows and what it sets.
#pragma once

#include "interface/QORLimiterViewBase.h"
#include "kernel/ParameterAddresses.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace qor {

enum class LimiterElementKind : std::uint8_t { knob, button, inert };

/// One element. The "ratio" with the Ratio fields is the knee, the "trim" with the Gain fields the trim.
struct LimiterElement {
    std::string_view mode;
    UIBezierPath QORLimiterViewBase::*path;
    LimiterElementKind kind;
    double QORLimiterViewBase::*value;  // of a knob
    bool QORLimiterViewBase::*selected; // of a button
    bool QORLimiterViewBase::*active;   // not of inert ones
    std::int64_t address;
};

/// In the order of the hit test, which decides where areas overlap.
inline constexpr std::array<LimiterElement, 11> kLimiterElements{{
    {"attack", &QORLimiterViewBase::hotspotAttackPath, LimiterElementKind::knob,
     &QORLimiterViewBase::valueAttack, nullptr, &QORLimiterViewBase::isAttackActive, kLimiterAttack},
    {"release", &QORLimiterViewBase::hotspotReleasePath, LimiterElementKind::knob,
     &QORLimiterViewBase::valueRelease, nullptr, &QORLimiterViewBase::isReleaseActive, kLimiterRelease},
    {"threshold", &QORLimiterViewBase::hotspotThresholdPath, LimiterElementKind::knob,
     &QORLimiterViewBase::valueThreshold, nullptr, &QORLimiterViewBase::isThresholdActive, kLimiterThreshold},
    {"ratio", &QORLimiterViewBase::hotspotRatioPath, LimiterElementKind::knob,
     &QORLimiterViewBase::valueRatio, nullptr, &QORLimiterViewBase::isRatioActive, kLimiterKnee},
    {"trim", &QORLimiterViewBase::hotspotGainPath, LimiterElementKind::knob, &QORLimiterViewBase::valueGain,
     nullptr, &QORLimiterViewBase::isGainActive, kLimiterTrim},
    {"mix", &QORLimiterViewBase::hotspotMixPath, LimiterElementKind::knob, &QORLimiterViewBase::valueMix,
     nullptr, &QORLimiterViewBase::isMixActive, kLimiterMix},
    {"bypass", &QORLimiterViewBase::hotspotBypassPath, LimiterElementKind::button, nullptr,
     &QORLimiterViewBase::isBypassSelected, &QORLimiterViewBase::isBypassActive, kLimiterBypass},
    {"audition", &QORLimiterViewBase::hotspotAuditionPath, LimiterElementKind::button, nullptr,
     &QORLimiterViewBase::isAuditioSelected, &QORLimiterViewBase::isAuditionActive, kLimiterAudition},
    {"caption", &QORLimiterViewBase::hotspotCaptionPath, LimiterElementKind::inert, nullptr, nullptr, nullptr,
     -1},
    {"meter", &QORLimiterViewBase::hotspotMeterPath, LimiterElementKind::inert, nullptr, nullptr, nullptr,
     -1},
    {"mode", &QORLimiterViewBase::hotspotModePath, LimiterElementKind::inert, nullptr, nullptr, nullptr, -1},
}};

/// The element of a mode's name; null for none.
constexpr const LimiterElement* limiterElement(std::string_view mode) {
    for (const LimiterElement& element : kLimiterElements) {
        if (element.mode == mode) {
            return &element;
        }
    }
    return nullptr;
}

} // namespace qor
