// The easing curves by name.
#pragma once

#include <cstdint>
#include <optional>

namespace qor {

enum class EnumEasing : std::int64_t {
    EASING_easeNone = 0,
    EASING_easeInQuad,
    EASING_easeOutQuad,
    EASING_easeInOutQuad,
    EASING_easeOutInQuad,
    EASING_easeInCubic,
    EASING_easeOutCubic,
    EASING_easeInOutCubic,
    EASING_easeOutInCubic,
    EASING_easeInQuart,
    EASING_easeOutQuart,
    EASING_easeInOutQuart,
    EASING_easeOutInQuart,
    EASING_easeInQuint,
    EASING_easeOutQuint,
    EASING_easeInOutQuint,
    EASING_easeOutInQuint,
    EASING_easeInSine,
    EASING_easeOutSine,
    EASING_easeInOutSine,
    EASING_easeOutInSine,
    EASING_easeInExpo,
    EASING_easeOutExpo,
    EASING_easeInOutExpo,
    EASING_easeOutInExpo,
    EASING_easeInCirc,
    EASING_easeOutCirc,
    EASING_easeInOutCirc,
    EASING_easeOutInCirc,
    EASING_easeInElastic,
    EASING_easeOutElastic,
    EASING_easeInOutElastic,
    EASING_easeOutInElastic,
    EASING_easeInBack,
    EASING_easeOutBack,
    EASING_easeInOutBack,
    EASING_easeOutInBack,
    EASING_easeInBounce,
    EASING_easeOutBounce,
    EASING_easeInOutBounce,
    EASING_easeOutInBounce,
    EASING_easeLast, // an end marker: as a type it selects the straight line
};

/// The easing of a raw value; absent outside 0 to 41.
constexpr std::optional<EnumEasing> initRawValue(std::int64_t rawValue) noexcept {
    if (rawValue < 0 || rawValue > static_cast<std::int64_t>(EnumEasing::EASING_easeLast)) {
        return std::nullopt;
    }
    return static_cast<EnumEasing>(rawValue);
}

} // namespace qor
