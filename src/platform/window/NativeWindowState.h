// What a native window is made of; private to this library.
#pragma once

#include "platform/core/RunLoop.h"
#include "platform/window/ContentPlacement.h"
#include "platform/window/DisplayGuard.h"
#include "platform/window/NativeWindow.h"
#include "platform/window/Pugl.h"

#include <X11/Xlib.h>

#include <optional>

namespace platform {

struct WorldDeleter {
    void operator()(PuglWorld* world) const noexcept { puglFreeWorld(world); }
};
struct ViewDeleter {
    void operator()(PuglView* view) const noexcept { puglFreeView(view); }
};

struct NativeWindow::State {
    State(Ref<UIWindow> shown, NativeWindowOptions wanted)
        : content(std::move(shown)), options(std::move(wanted)), loop(RunLoop::current()) {}

    Ref<UIWindow> content;
    NativeWindowOptions options;
    RunLoop& loop;

    std::optional<DisplayGuard> guard; // outlives the connection
    std::unique_ptr<PuglWorld, WorldDeleter> world;
    std::unique_ptr<PuglView, ViewDeleter> view;
    Display* display = nullptr;
    Window handle = 0;

    ContentRules rules;
    ContentPlacement placement;
    CGSize pixels; // of the window
    bool destroyed = false;
    bool endTold = false; // by `onClose`

    // Found by events, answered at the end of `pump`.
    bool closeWanted = false;
    bool resized = false;
    bool drawAgain = false; // something came up behind the drawing of this round

    bool buttonHeld = false;
    bool focusAsked = false; // a press may have to bring the keyboard back
    bool hasKeyboard = false;
    Window keyboardBefore = 0; // who gets it back

    bool gone() const noexcept { return destroyed || (guard && guard->lost()); }
    PuglSpan span(double points) const noexcept;
};

/// The window's answers to events.
struct NativeWindowEvents {
    using State = NativeWindow::State;

    static PuglStatus handle(PuglView* view, const PuglEvent* event);
    /// Takes a size of the window over. Also before the first event, so that the first picture is right.
    static void configure(State& state, double width, double height);
    /// Draws the views that need it and asks for the changed pixels to be shown.
    static void refresh(State& state);
    /// An embedded window has the keyboard only while a view of it wants it, so that the host's keys stay the
    /// host's.
    static void updateKeyboard(State& state);
};

} // namespace platform
