// A window for tests and pictures: synthetic input in; pixels and recorded operations out; time by hand.
#pragma once

#include "platform/core/RunLoop.h"
#include "platform/view/UIWindow.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Has a run loop with a clock that stands until it is moved. Every operation runs with that loop as the
/// current one and leaves the window laid out and drawn, as between two frames of a screen.
class HeadlessWindow {
public:
    explicit HeadlessWindow(const CGSize& size, double scale = 1.0);
    /// On a loop and clock of somebody else's, which must outlive it.
    HeadlessWindow(const CGSize& size, RunLoop& loop, ManualClock& clock, double scale = 1.0);
    ~HeadlessWindow();
    HeadlessWindow(const HeadlessWindow&) = delete;
    HeadlessWindow& operator=(const HeadlessWindow&) = delete;

    UIWindow& window() noexcept { return *window_; }
    RunLoop& loop() noexcept { return loop_; }
    ManualClock& clock() noexcept { return clock_; }

    void show(Ref<UIView> rootView);
    void resize(const CGSize& size);
    /// Moves the time on in the timers' steps, drawing at each.
    void run(double seconds);
    /// Runs what is queued and due now.
    void settle();

    void down(const CGPoint& at, int touch = 0);
    void move(const CGPoint& to, int touch = 0);
    void up(const CGPoint& at, int touch = 0);
    void cancel();
    /// Down at the first point, in `steps` moves to the second, up.
    void drag(const CGPoint& from, const CGPoint& to, int steps = 4);
    void click(const CGPoint& at);
    /// Two clicks 0.1 seconds apart.
    void doubleClick(const CGPoint& at);
    bool wheel(const CGPoint& at, double notches, std::uint32_t modifierFlags = UIKeyModifierNone);
    bool key(UIKey key, std::uint32_t modifierFlags = UIKeyModifierNone);
    /// Each character as a key of its own.
    void type(std::string_view text);

    UIImage picture();
    /// 0xAARRGGBB, colours multiplied by alpha.
    std::uint32_t pixel(int x, int y);
    /// The whole tree drawn into a recording context, one line an operation.
    std::vector<std::string> recordedOperations();
    /// Display passes so far that changed a pixel.
    std::uint64_t displayPasses() const noexcept { return passes_; }

private:
    struct Time {
        ManualClock clock;
        RunLoop loop{clock};
    };
    std::unique_ptr<Time> own_;
    RunLoop& loop_;
    ManualClock& clock_;
    Ref<UIWindow> window_;
    std::uint64_t passes_ = 0;
};

} // namespace platform
