// A rectangle of the screen with a place in a tree of such.
#pragma once

#include "platform/core/Block.h"
#include "platform/core/Ref.h"
#include "platform/draw/CGAffineTransform.h"
#include "platform/draw/UIColor.h"
#include "platform/view/NSLayoutConstraint.h"
#include "platform/view/UIEvent.h"
#include "platform/view/UITouch.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform {

class CGContext;
class UIGestureRecognizer;
class UIViewController;
class UIWindow;
class ViewLayer;

/// Lives in a `Ref` (`makeRef`); a superview owns its subviews. Lengths are points, y grows downwards. Main
/// thread only. Whole views are invalidated: `draw` always gets the bounds.
class UIView : public std::enable_shared_from_this<UIView> {
public:
    explicit UIView(const CGRect& frame = CGRectZero);
    virtual ~UIView();
    UIView(const UIView&) = delete;
    UIView& operator=(const UIView&) = delete;

    // Geometry. A transform works about the centre; `frame` is then the area around the transformed view.
    CGRect frame() const;
    /// With a transform in force the rectangle is taken as the one before it. A new size asks for layout and
    /// redraw.
    void setFrame(const CGRect& frame);
    const CGRect& bounds() const noexcept { return bounds_; }
    /// The size is changed about the centre; the origin scrolls the content.
    void setBounds(const CGRect& bounds);
    CGPoint center() const noexcept;
    const CGAffineTransform& transform() const noexcept { return transform_; }
    void setTransform(const CGAffineTransform& transform);
    /// From this view's coordinates to the superview's.
    CGAffineTransform transformToSuperview() const;
    CGPoint convertPointToWindow(const CGPoint& point) const;
    CGPoint convertPointFromWindow(const CGPoint& point) const;
    CGPoint convertPointToView(const CGPoint& point, const UIView& view) const;
    CGRect convertRectToView(const CGRect& rect, const UIView& view) const;

    // The tree, drawn from the first subview to the last.
    UIView* superview() const noexcept { return superview_; }
    /// The window at the root, absent while the view is in none.
    UIWindow* window() const noexcept;
    const std::vector<Ref<UIView>>& subviews() const noexcept { return subviews_; }
    void addSubview(Ref<UIView> view);
    void insertSubview(Ref<UIView> view, std::size_t index);
    void removeFromSuperview();
    bool isDescendantOfView(const UIView& view) const noexcept;
    /// The view itself or the first one below it with that identifier.
    UIView* viewWithIdentifier(const std::string& wanted);

    std::string identifier; // for layouts and tests
    bool userInteractionEnabled = true;
    bool clipsToBounds() const noexcept { return clipsToBounds_; }
    void setClipsToBounds(bool clips);

    // Looks. An alpha works on the whole subtree, each layer by itself.
    double alpha() const noexcept { return alpha_; }
    void setAlpha(double alpha);
    bool isHidden() const noexcept { return hidden_; }
    void setHidden(bool hidden);
    const std::optional<UIColor>& backgroundColor() const noexcept { return backgroundColor_; }
    void setBackgroundColor(std::optional<UIColor> color);

    // Layout. A pass runs before the next display, or at once by `layoutIfNeeded`.
    void setNeedsLayout();
    void layoutIfNeeded();
    /// Places the subviews that have constraints.
    virtual void layoutSubviews();
    bool translatesAutoresizingMaskIntoConstraints = true;
    NSLayoutAnchor topAnchor() { return {*this, NSLayoutAttribute::top}; }
    NSLayoutAnchor leadingAnchor() { return {*this, NSLayoutAttribute::leading}; }
    NSLayoutAnchor bottomAnchor() { return {*this, NSLayoutAttribute::bottom}; }
    NSLayoutAnchor trailingAnchor() { return {*this, NSLayoutAttribute::trailing}; }
    NSLayoutAnchor widthAnchor() { return {*this, NSLayoutAttribute::width}; }
    NSLayoutAnchor heightAnchor() { return {*this, NSLayoutAttribute::height}; }
    NSLayoutAnchor centerXAnchor() { return {*this, NSLayoutAttribute::centerX}; }
    NSLayoutAnchor centerYAnchor() { return {*this, NSLayoutAttribute::centerY}; }
    const std::vector<Ref<NSLayoutConstraint>>& constraints() const noexcept { return constraints_; }

    // Drawing.
    void setNeedsDisplay();
    bool needsDisplay() const noexcept { return needsDisplay_; }
    /// Draws into the current context in the view's own coordinates. The base class draws nothing.
    virtual void draw(const CGRect& rect);
    /// How often `draw` has been called by a display pass.
    std::uint64_t drawCount() const noexcept { return drawCount_; }
    /// Draws the background, the view and its visible subviews into a context, with `draw` called on each.
    void drawHierarchy(CGContext& context);

    // Touches. `hitTest` gives the deepest view under a point of this view's coordinates that takes touches.
    virtual UIView* hitTest(const CGPoint& point, const UIEvent* event);
    virtual bool pointInside(const CGPoint& point, const UIEvent* event) const;
    virtual void touchesBegan(const UITouchSet& touches, UIEvent* event);
    virtual void touchesMoved(const UITouchSet& touches, UIEvent* event);
    virtual void touchesEnded(const UITouchSet& touches, UIEvent* event);
    virtual void touchesCancelled(const UITouchSet& touches, UIEvent* event);
    void addGestureRecognizer(Ref<UIGestureRecognizer> recognizer);
    void removeGestureRecognizer(const Ref<UIGestureRecognizer>& recognizer);
    const std::vector<Ref<UIGestureRecognizer>>& gestureRecognizers() const noexcept { return recognizers_; }
    /// Asked of the view that was hit, before a recognizer of it or of a view above leaves its first state.
    virtual bool gestureRecognizerShouldBegin(const UIGestureRecognizer& recognizer) const;
    /// True for the cover under a dialog: recognizers above it don't see its touches, nor keys what lies
    /// behind.
    virtual bool isModal() const noexcept { return false; }

    // Wheel and keys. Both go up the tree until a view says that it has used them.
    virtual bool scrollWheel(const UIWheelEvent& event);
    Block<bool(UIView&, const UIWheelEvent&)> onScrollWheel; // asked before the views above
    virtual bool keyDown(const UIKeyEvent& event);
    virtual bool canBecomeFirstResponder() const { return false; }
    bool becomeFirstResponder();
    void resignFirstResponder();
    bool isFirstResponder() const noexcept;
    /// The focus came or went.
    virtual void focusDidChange(bool focused);

protected:
    /// The view came into a window or left it (absent).
    virtual void didMoveToWindow(UIWindow* window);
    virtual UIWindow* asWindow() noexcept { return nullptr; }

private:
    friend class NSLayoutConstraint;
    friend class UIViewController;
    friend class UIWindow;
    friend class ViewCompositor;

    void addConstraint(Ref<NSLayoutConstraint> constraint);
    void removeConstraint(const Ref<NSLayoutConstraint>& constraint);
    void layOutByConstraints(UIView& child) const;
    void resized();
    void appearanceChanged() const noexcept;
    void windowChanged(UIWindow* window);
    CGAffineTransform transformToWindow() const;

    CGRect rect_; // the frame before the transform
    CGRect bounds_;
    CGAffineTransform transform_;
    UIView* superview_ = nullptr;
    std::vector<Ref<UIView>> subviews_;
    std::vector<Ref<UIGestureRecognizer>> recognizers_;
    std::vector<Ref<NSLayoutConstraint>> constraints_;
    UIViewController* controller_ = nullptr; // whose root view this is
    std::unique_ptr<ViewLayer> layer_;
    std::optional<UIColor> backgroundColor_;
    double alpha_ = 1.0;
    std::uint64_t drawCount_ = 0;
    bool hidden_ = false;
    bool clipsToBounds_ = false;
    bool needsLayout_ = true;
    bool needsDisplay_ = true;
    bool drawsNothing_ = false; // the last `draw` was the base class's
};

} // namespace platform
