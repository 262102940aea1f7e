// The root of a view tree: takes input in, gives a picture out. Needs no display.
#pragma once

#include "platform/view/UIView.h"
#include "platform/view/ViewCompositor.h"

#include <cstdint>
#include <vector>

namespace platform {

/// Whoever shows it (a native window, or a test) feeds it with input, calls `display` when it asks for it,
/// and copies the picture. Touches are logical points; `scale` is pixels per point of the picture. Times are
/// those of the current run loop's clock. Main thread only.
class UIWindow : public UIView {
public:
    explicit UIWindow(const CGSize& size, double scale = 1.0);
    ~UIWindow() override;

    /// The view that fills the window.
    void setRootView(Ref<UIView> view);
    const Ref<UIView>& rootView() const noexcept { return root_; }
    void setSize(const CGSize& size);
    double scale() const noexcept { return scale_; }
    void setScale(double pixelsPerPoint);

    // Input. A touch is known by a number: 0 for the mouse's left button, others for fingers.
    void touchDown(int touch, const CGPoint& location, std::uint32_t modifierFlags = UIKeyModifierNone);
    void touchMoved(int touch, const CGPoint& location, std::uint32_t modifierFlags = UIKeyModifierNone);
    void touchUp(int touch, const CGPoint& location, std::uint32_t modifierFlags = UIKeyModifierNone);
    /// The system took the touches away (focus lost, window closed).
    void cancelTouches();
    bool isTouched() const noexcept { return !active_.empty(); }
    /// Returns whether anything used the wheel.
    bool wheel(const CGPoint& location, double deltaX, double deltaY,
               std::uint32_t modifierFlags = UIKeyModifierNone);
    /// Returns whether anything used the key.
    bool key(const UIKeyEvent& event);

    // Focus.
    UIView* firstResponder() const noexcept { return firstResponder_; }
    bool setFirstResponder(UIView* view);
    /// Moves the focus to the next view that takes it, or the one before, within the topmost dialog.
    bool moveFocus(bool backwards);

    // Picture.
    /// Something has changed since the last `display`.
    bool needsDisplayPass() const noexcept { return changed_; }
    /// Called once when the first change after a `display` comes; to ask the system for a redraw.
    Block<void()> onNeedsDisplay;
    /// Lays out and draws what needs it. Returns the pixels that changed.
    PixelRect display();
    const ViewCompositor& picture() const noexcept { return compositor_; }

    // Used by views and recognizers.
    void noteChange() noexcept;
    void viewWillLeave(const UIView& view);
    void cancelTouchesInViews(const UIGestureRecognizer& recognizer);

    void layoutSubviews() override;

protected:
    UIWindow* asWindow() noexcept override { return this; }

private:
    struct ActiveTouch {
        int number;
        Ref<UITouch> touch;
        std::vector<Ref<UIGestureRecognizer>> recognizers;
        bool viewCancelled = false;
    };
    struct LastTap {
        CGPoint location;
        double time = -1e9;
        int count = 0;
    };

    ActiveTouch* find(int number);
    UIEvent makeEvent(std::uint32_t modifierFlags) const;
    int countTap(const CGPoint& location, double time);
    void forget(int number);
    UIView* topModal(UIView& view) const;
    void collectFocusable(UIView& view, std::vector<UIView*>& found) const;

    Ref<UIView> root_;
    double scale_;
    std::vector<ActiveTouch> active_;
    std::vector<Ref<UIGestureRecognizer>> involved_; // since the first of the touches went down
    LastTap lastTap_;
    UIView* firstResponder_ = nullptr;
    ViewCompositor compositor_;
    bool changed_ = true;
};

} // namespace platform
