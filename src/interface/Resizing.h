// How a fixed canvas is fitted to a view: the arithmetic behind each drawing class's own ResizingBehavior.
#pragma once

#include "platform/draw/Draw.h"

#include <cstdint>
#include <optional>

namespace qor::resizing {

enum class Case : std::int64_t { aspectFit = 0, aspectFill = 1, stretch = 2, center = 3 };

/// Absent for a raw value outside 0 to 3.
constexpr std::optional<Case> caseOf(std::int64_t rawValue) {
    if (rawValue < 0 || rawValue > 3) {
        return std::nullopt;
    }
    return static_cast<Case>(rawValue);
}

/// True where `rect` is taken as it is: the target is the canvas itself, or all zeros.
bool staysUnchanged(const CGRect& rect, const CGRect& target);
/// The factors for width and height. A canvas side of 0 gives infinity or NaN.
CGSize factors(Case behaviour, const CGRect& rect, const CGRect& target);
/// `rect` standardised, scaled by the factors and centred in `target`.
CGRect centred(const CGRect& rect, const CGRect& target, const CGSize& factors);

/// Moves and scales the context so that `canvas` falls on `fitted`.
void fit(CGContext& context, const CGSize& canvas, const CGRect& fitted);

} // namespace qor::resizing
