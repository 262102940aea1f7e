// The other side of a window: a connection of the test's own that looks at it, moves the mouse and types.
#pragma once

#include "platform/core/RunLoop.h"
#include "platform/draw/UIColor.h"
#include "platform/window/NativeWindow.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

// Behind the others, as they define common words.
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

namespace platform {

/// Red on the left, blue on the right; writes down what reaches it.
class ProbeView : public UIView {
public:
    explicit ProbeView(const CGRect& frame = CGRectZero) : UIView(frame) {}
    void draw(const CGRect& rect) override;
    void touchesBegan(const UITouchSet& set, UIEvent* event) override { note("began", set, event); }
    void touchesMoved(const UITouchSet& set, UIEvent* event) override { note("moved", set, event); }
    void touchesEnded(const UITouchSet& set, UIEvent* event) override { note("ended", set, event); }
    void touchesCancelled(const UITouchSet& set, UIEvent* event) override { note("cancelled", set, event); }
    bool scrollWheel(const UIWheelEvent& event) override {
        wheels.push_back(event);
        return true;
    }
    bool keyDown(const UIKeyEvent& event) override {
        keys.push_back(event);
        return true;
    }
    bool canBecomeFirstResponder() const override { return focusable; }

    struct Touch {
        std::string phase;
        CGPoint at; // of the window
        int tapCount;
        std::uint32_t modifierFlags;
    };
    std::vector<Touch> touches;
    std::vector<UIWheelEvent> wheels;
    std::vector<UIKeyEvent> keys;
    bool focusable = false;
    UIColor left = UIColor(1.0, 0.0, 0.0, 1.0);

private:
    void note(const char* phase, const UITouchSet& set, const UIEvent* event) {
        for (const Ref<UITouch>& touch : set) {
            touches.push_back({phase, touch->locationInWindow(), touch->tapCount(), event->modifierFlags});
        }
    }
};

class DisplayTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    /// Opens a window with the probe in it, shows it and waits until it is drawn.
    NativeWindow& open(const NativeWindowOptions& options);
    /// Pumps until it is so, for at most some seconds.
    bool pumpUntil(const std::function<bool()>& condition);
    /// Brings everything over that the server has for the window.
    void settle();

    /// 0xRRGGBB as the screen shows it.
    unsigned long pixelOf(Window target, int x, int y);
    unsigned long pixel(int x, int y) { return pixelOf(window->nativeHandle(), x, y); }
    XWindowAttributes attributesOf(Window target);
    Window makeParent(int width, int height);
    Window focused();

    // Input as from the devices; places are pixels of the window.
    void moveTo(int x, int y);
    void button(unsigned number, bool down);
    void press(KeySym key, KeySym modifier = NoSymbol);

    ManualClock clock;
    RunLoop loop{clock};
    std::optional<RunLoop::Scope> scope;
    Display* display = nullptr;
    Ref<UIWindow> content;
    Ref<ProbeView> probe;
    std::unique_ptr<NativeWindow> window;
};

} // namespace platform
