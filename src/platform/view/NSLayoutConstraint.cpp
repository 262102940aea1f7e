#include "platform/view/NSLayoutConstraint.h"

#include "platform/view/UIView.h"

namespace platform {

NSLayoutAnchor::NSLayoutAnchor(UIView& view, NSLayoutAttribute attribute)
    : view_(view.weak_from_this()), attribute_(attribute) {}

Ref<NSLayoutConstraint> NSLayoutAnchor::constraintEqualToAnchor(const NSLayoutAnchor& other,
                                                                double constant) const {
    Ref<NSLayoutConstraint> made = constraintEqualToConstant(constant);
    made->secondItem = other.view_;
    made->secondAttribute = other.attribute_;
    return made;
}

Ref<NSLayoutConstraint> NSLayoutAnchor::constraintEqualToConstant(double constant) const {
    auto made = makeRef<NSLayoutConstraint>();
    made->self_ = made;
    made->firstItem = view_;
    made->firstAttribute = attribute_;
    made->constant = constant;
    return made;
}

void NSLayoutConstraint::setActive(bool active) {
    const Ref<UIView> view = firstItem.lock();
    if (active == active_ || !view) {
        return;
    }
    active_ = active;
    if (active) {
        view->addConstraint(self_.lock());
    } else {
        view->removeConstraint(self_.lock());
    }
}

void NSLayoutConstraint::setConstant(double value) {
    constant = value;
    const Ref<UIView> view = firstItem.lock();
    if (active_ && view && view->superview() != nullptr) {
        view->superview()->setNeedsLayout();
    }
}

void NSLayoutConstraint::activateConstraints(const std::vector<Ref<NSLayoutConstraint>>& constraints) {
    for (const Ref<NSLayoutConstraint>& constraint : constraints) {
        constraint->setActive(true);
    }
}

void NSLayoutConstraint::deactivateConstraints(const std::vector<Ref<NSLayoutConstraint>>& constraints) {
    for (const Ref<NSLayoutConstraint>& constraint : constraints) {
        constraint->setActive(false);
    }
}

double NSLayoutConstraint::value(const UIView& superview) const {
    const Ref<UIView> other = secondItem.lock();
    if (!other) {
        return constant;
    }
    const CGRect area = other.get() == &superview ? superview.bounds() : other->frame();
    switch (secondAttribute) {
    case NSLayoutAttribute::leading:
        return area.origin.x + constant;
    case NSLayoutAttribute::trailing:
        return area.origin.x + area.size.width + constant;
    case NSLayoutAttribute::top:
        return area.origin.y + constant;
    case NSLayoutAttribute::bottom:
        return area.origin.y + area.size.height + constant;
    case NSLayoutAttribute::width:
        return area.size.width + constant;
    case NSLayoutAttribute::height:
        return area.size.height + constant;
    case NSLayoutAttribute::centerX:
        return area.origin.x + area.size.width / 2.0 + constant;
    case NSLayoutAttribute::centerY:
        return area.origin.y + area.size.height / 2.0 + constant;
    case NSLayoutAttribute::none:
        break;
    }
    return constant;
}

} // namespace platform
