// A window of the desktop that shows a view tree and turns input into touches.
#pragma once

#include "platform/core/Block.h"
#include "platform/core/Result.h"
#include "platform/view/UIWindow.h"

#include <cstdint>
#include <memory>
#include <string>

namespace platform {

inline constexpr const char* kWindowErrorDomain = "NativeWindow";
enum WindowErrorCode : std::uint8_t { WindowNoDisplay = 1, WindowBadParent = 2, WindowFailed = 3 };

struct NativeWindowOptions {
    std::uintptr_t parent = 0;       // the window to lie in; 0: free-standing
    std::uintptr_t transientFor = 0; // the window to stay above, for a free-standing one
    std::string title = "Window";
    std::string className = "qor-limiter";              // how desktops know whose window it is
    CGSize size = {.width = 512.0, .height = 340.0};    // points
    CGSize minimumSize = {.width = 0.0, .height = 0.0}; // points; zero for none
    bool keepsAspect = true;                            // that of `size`
    bool resizable = true;
    /// A free-standing window beside a host's has the keyboard only while a view wants it, as an embedded one
    /// always does.
    bool keyboardOnDemand = false;
    double scale = 0.0; // pixels per point; 0: what the desktop says
};

/// Pixels per point that the desktop asks for, without a window; 1 without a display.
double desktopScale();

/// Shows a `UIWindow` on the display, which it gives its size and scale and its input. Whatever size the
/// window is forced to, the content keeps its aspect and minimum size. Main thread; input and drawing happen
/// within `pump`, with the run loop that was the current one at `open`. No error of the display ends the
/// process.
class NativeWindow {
public:
    /// Fails without a display and without the parent; the text says what to do. The window is hidden at
    /// first.
    static Result<std::unique_ptr<NativeWindow>> open(Ref<UIWindow> content,
                                                      const NativeWindowOptions& options = {});
    /// Not from within a touch, key or drawing.
    ~NativeWindow();
    NativeWindow(const NativeWindow&) = delete;
    NativeWindow& operator=(const NativeWindow&) = delete;

    /// The system's own number of the window.
    std::uintptr_t nativeHandle() const noexcept;
    void show();
    void hide();
    /// It is on the screen and not wholly covered.
    bool isVisible() const noexcept;
    void setTitle(const std::string& title);
    void setTransientFor(std::uintptr_t window);

    /// Asks for a size in points; the window takes it in a later `pump`.
    void setSize(const CGSize& points);
    /// Pixels per point; the window keeps its size in points.
    void setScale(double pixelsPerPoint);
    double scale() const noexcept;
    /// The scale that the desktop asks for, also if another one is in force.
    double desktopScale() const noexcept;
    /// The content's size in points.
    CGSize size() const noexcept;
    /// The window's size in pixels, bars included.
    CGSize pixelSize() const noexcept;

    /// Takes input in and draws what has changed. Waits up to `timeout` seconds for input to come. Returns
    /// false once the window is gone: destroyed by the host, or the display connection is lost.
    bool pump(double timeout = 0.0);
    /// Becomes readable when there is something to pump.
    int fileDescriptor() const noexcept;
    bool isGone() const noexcept;

    /// The user wants to close it, or it is gone. From the end of `pump`; may destroy the window.
    Block<void()> onClose;
    /// The content has another size in points. From the end of `pump`.
    Block<void(const CGSize&)> onResize;

private:
    struct State;
    friend struct NativeWindowEvents;

    explicit NativeWindow(std::unique_ptr<State> state);

    std::unique_ptr<State> state_;
};

} // namespace platform
