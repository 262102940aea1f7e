// What turns touches, wheel and time into gestures.
#pragma once

#include "platform/core/Block.h"
#include "platform/core/Ref.h"
#include "platform/view/UIEvent.h"

#include <cstdint>
#include <string>
#include <vector>

namespace platform {

class UIView;

enum class UIGestureRecognizerState : std::int64_t {
    possible = 0,
    began = 1,
    changed = 2,
    ended = 3,
    cancelled = 4,
    failed = 5,
};

/// Sits on a view and sees the touches that begin on it and below. Several recognizers may recognise at once.
/// A recognizer sees a touch before the view does. Main thread only.
class UIGestureRecognizer : public std::enable_shared_from_this<UIGestureRecognizer> {
public:
    UIGestureRecognizer() = default;
    UIGestureRecognizer(const UIGestureRecognizer&) = delete;
    UIGestureRecognizer& operator=(const UIGestureRecognizer&) = delete;
    virtual ~UIGestureRecognizer() = default;

    UIGestureRecognizerState state() const noexcept { return state_; }
    UIView* view() const noexcept { return view_; }
    bool isEnabled() const noexcept { return enabled_; }
    /// Switching off cancels a gesture that runs.
    void setEnabled(bool enabled);
    /// Whether the views' touches are cancelled once this has recognised its gesture.
    bool cancelsTouchesInView = true;
    std::string identifier; // for layouts and tests
    /// Called on each change of state from began on, and on each step of a gesture that goes on.
    void addAction(Block<void(UIGestureRecognizer&)> action) { actions_.push_back(std::move(action)); }
    /// The middle of the gesture's touches (or the pointer) in a view's coordinates; the window's for none.
    CGPoint locationInView(const UIView* view) const;

    // Used by the window. Touches are those on this recognizer's view.
    virtual void touchesBegan(const UITouchSet& touches, const UIEvent& event) = 0;
    virtual void touchesMoved(const UITouchSet& touches, const UIEvent& event) = 0;
    virtual void touchesEnded(const UITouchSet& touches, const UIEvent& event) = 0;
    virtual void touchesCancelled(const UITouchSet& touches, const UIEvent& event);
    /// Whether the wheel was used up.
    virtual bool wheelTurned(const UIWheelEvent& event);
    /// No touch is left: a gesture that failed or ended gets ready for the next.
    virtual void allTouchesEnded();
    void attach(UIView* view);

protected:
    /// Goes to a state and tells the actions; back to `possible` in silence.
    void setState(UIGestureRecognizerState state);
    /// Forgets everything about the gesture.
    virtual void reset() {}
    /// Asks the view that was hit whether the gesture may begin.
    bool mayBegin() const;
    bool isRunning() const noexcept;
    void setLocation(const CGPoint& locationInWindow) noexcept { location_ = locationInWindow; }
    const CGPoint& windowLocation() const noexcept { return location_; }
    void setHitView(const UITouchSet& touches);

private:
    UIView* view_ = nullptr;
    Weak<UIView> hitView_;
    CGPoint location_;
    std::vector<Block<void(UIGestureRecognizer&)>> actions_;
    UIGestureRecognizerState state_ = UIGestureRecognizerState::possible;
    bool enabled_ = true;
};

} // namespace platform
