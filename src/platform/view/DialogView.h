// The cover under a dialog, and the box in its middle.
#pragma once

#include "platform/view/UIView.h"

namespace platform {

/// Darkens what lies behind and keeps input from it. Its box is centred and never larger than the cover.
/// Keys that nothing in the box uses go to `onKey`.
class DialogView : public UIView {
public:
    explicit DialogView(const CGSize& boxSize);

    UIView& box() noexcept { return *box_; }
    void setBoxSize(const CGSize& size);
    Block<bool(const UIKeyEvent&)> onKey;
    /// Called with the box's bounds, to place what is in it.
    Block<void(const CGRect&)> onLayout;

    bool isModal() const noexcept override { return true; }
    bool keyDown(const UIKeyEvent& event) override;
    bool scrollWheel(const UIWheelEvent& event) override;
    void layoutSubviews() override;
    void draw(const CGRect& rect) override;

protected:
    void didMoveToWindow(UIWindow* window) override;

private:
    Ref<UIView> box_;
    CGSize boxSize_;
};

} // namespace platform
