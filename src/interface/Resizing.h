// How a fixed canvas is fitted to a view. Each drawing class has behaviours of its own types.
#pragma once

#include "platform/draw/Draw.h"

#include <cstdint>
#include <optional>

namespace qor::resizing {

enum Case : std::int64_t { aspectFit = 0, aspectFill = 1, stretch = 2, center = 3 };

/// Absent for a raw value outside 0 to 3.
constexpr std::optional<Case> caseOf(std::int64_t rawValue) {
    if (rawValue < 0 || rawValue > 3) {
        return std::nullopt;
    }
    return static_cast<Case>(rawValue);
}

/// `rect` fitted to `target`: standardised, scaled by the case's factors and centred. A target that is `rect`
/// itself or all zeros leaves `rect` as it is; otherwise `scale` becomes the factors. A side of 0 in `rect`
/// gives infinity or NaN.
CGRect apply(Case behaviour, const CGRect& rect, const CGRect& target, CGSize& scale);

/// Moves and scales the context so that `canvas` falls on `fitted`.
void fit(CGContext& context, const CGSize& canvas, const CGRect& fitted);

/// How a symbol of `Owner` is fitted to its frame.
template <class Owner>
struct SymbolBehavior {
    using enum Case;
    Case rawValue;
    constexpr SymbolBehavior(Case behaviour) : rawValue(behaviour) {} // NOLINT: a behaviour is its case
    /// Absent for any other value.
    static std::optional<SymbolBehavior> initRawValue(std::int64_t value) { return caseOf(value); }
    CGRect apply(const CGRect& rect, const CGRect& target) const {
        CGSize scale;
        return resizing::apply(rawValue, rect, target, scale);
    }
};

/// How the whole drawing of `Owner` is fitted: also stores the factors in the instance's `viewScale`.
template <class Owner>
struct ViewBehavior {
    using enum Case;
    Case rawValue;
    constexpr ViewBehavior(Case behaviour) : rawValue(behaviour) {} // NOLINT: a behaviour is its case
    static std::optional<ViewBehavior> initRawValue(std::int64_t value) { return caseOf(value); }
    CGRect apply(const CGRect& rect, const CGRect& target, Owner& instance) const {
        return resizing::apply(rawValue, rect, target, instance.viewScale);
    }
};

} // namespace qor::resizing
