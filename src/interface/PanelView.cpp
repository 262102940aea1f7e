#include "interface/PanelView.h"

#include "interface/PanelCanvas.h"

#include <algorithm>

namespace qor {

void PanelView::layoutSubviews() {
    UIView::layoutSubviews();
    const CGSize& room = bounds().size;
    const double scale =
        std::min(room.width / kPanelCanvas.size.width, room.height / kPanelCanvas.size.height);
    for (const Ref<UIView>& child : subviews()) {
        if (child->constraints().empty()) {
            // A transform works about the centre, which is to go to its own multiple.
            const CGPoint centre = child->center();
            child->setTransform(CGAffineTransformConcat(
                CGAffineTransformMakeScale(scale, scale),
                CGAffineTransformMakeTranslation(centre.x * (scale - 1.0), centre.y * (scale - 1.0))));
        }
    }
}

} // namespace qor
