#include "Common/ViewExtensions.h"

namespace qor {

using platform::NSLayoutConstraint;
using platform::UIView;

void pinToSuperviewEdges(UIView& view) {
    UIView* const superview = view.superview();
    if (superview == nullptr) {
        return;
    }
    view.translatesAutoresizingMaskIntoConstraints = false;
    NSLayoutConstraint::activateConstraints({
        view.topAnchor().constraintEqualToAnchor(superview->topAnchor()),
        view.leadingAnchor().constraintEqualToAnchor(superview->leadingAnchor()),
        view.bottomAnchor().constraintEqualToAnchor(superview->bottomAnchor()),
        view.trailingAnchor().constraintEqualToAnchor(superview->trailingAnchor()),
    });
}

} // namespace qor
