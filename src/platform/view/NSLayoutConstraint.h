// Constraints, as far as edges that are pinned to each other and fixed lengths need them.
#pragma once

#include "platform/core/Ref.h"

#include <cstdint>
#include <vector>

namespace platform {

class UIView;
class NSLayoutConstraint;

enum class NSLayoutAttribute : std::uint8_t {
    none,
    leading,
    trailing,
    top,
    bottom,
    width,
    height,
    centerX,
    centerY,
};

/// One edge, centre or length of a view.
class NSLayoutAnchor {
public:
    NSLayoutAnchor(UIView& view, NSLayoutAttribute attribute);

    /// This equals the other plus a constant in points. The other belongs to the superview or to a sibling.
    Ref<NSLayoutConstraint> constraintEqualToAnchor(const NSLayoutAnchor& other, double constant = 0.0) const;
    /// For lengths: this is so many points.
    Ref<NSLayoutConstraint> constraintEqualToConstant(double constant) const;

private:
    Weak<UIView> view_;
    NSLayoutAttribute attribute_;
};

/// A rule for one attribute of its first view, applied when the superview of that view is laid out.
class NSLayoutConstraint {
public:
    Weak<UIView> firstItem;
    NSLayoutAttribute firstAttribute = NSLayoutAttribute::none;
    Weak<UIView> secondItem;
    NSLayoutAttribute secondAttribute = NSLayoutAttribute::none;
    double constant = 0.0; // points; to be changed through `setConstant` while active

    bool isActive() const noexcept { return active_; }
    void setActive(bool active);
    void setConstant(double value);
    static void activateConstraints(const std::vector<Ref<NSLayoutConstraint>>& constraints);
    static void deactivateConstraints(const std::vector<Ref<NSLayoutConstraint>>& constraints);

    /// What the right side is worth in the coordinates of the first view's superview; used by the layout
    /// pass.
    double value(const UIView& superview) const;

private:
    friend class NSLayoutAnchor;

    Weak<NSLayoutConstraint> self_;
    bool active_ = false;
};

} // namespace platform
