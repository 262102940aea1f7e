// The view that is moved and scaled as the panel.
#pragma once

#include "platform/view/View.h"

namespace qor {

/// Subviews with constraints follow those. The others have their frames in units of the panel's canvas, and
/// are shown at the panel's size: what lies on a part of the picture stays on it. Main thread only.
class PanelView : public UIView {
public:
    using UIView::UIView;

    void layoutSubviews() override;
};

} // namespace qor
