#include "platform/window/NativeWindow.h"

#include "platform/files/Environment.h"
#include "platform/window/NativeWindowState.h"

#include <cairo-xlib.h>
#include <poll.h>

#include <X11/Xutil.h>

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

constexpr double kLongestSide = 10000.0; // pixels, for the window system

NSError failure(WindowErrorCode code, std::string text) {
    return {kWindowErrorDomain, code, {{NSLocalizedDescriptionKey, std::move(text)}}};
}

NSError noDisplay() {
    const auto name = environmentVariable("DISPLAY");
    return failure(
        WindowNoDisplay,
        name ? "the display '" + *name +
                   "' cannot be opened. Check the variable DISPLAY and the right to use that display."
             : "there is no display: the variable DISPLAY is not set. Start from a graphical session.");
}

// Cairo keeps a note of each picture whose shared memory the server may still read, and loses the notes that
// are left when the display is closed. It drops those that are answered when it next makes such a picture.
void releaseSharedPictures(Display* display, Window window) {
    XSync(display, False);
    XWindowAttributes attributes{};
    if (XGetWindowAttributes(display, window, &attributes) == 0) {
        return;
    }
    constexpr int kSide = 256; // pixels; enough for Cairo to share it
    cairo_surface_t* surface =
        cairo_xlib_surface_create(display, window, attributes.visual, attributes.width, attributes.height);
    cairo_surface_destroy(cairo_surface_create_similar_image(surface, CAIRO_FORMAT_RGB24, kSide, kSide));
    cairo_surface_destroy(surface);
}

bool windowExists(Display* display, Window window) {
    XWindowAttributes attributes{};
    return XGetWindowAttributes(display, window, &attributes) != 0;
}

} // namespace

double desktopScale() {
    std::optional<DisplayGuard> guard; // outlives the connection
    std::unique_ptr<PuglWorld, WorldDeleter> world(puglNewWorld(PUGL_MODULE, 0));
    if (!world) {
        return 1.0;
    }
    guard.emplace(static_cast<Display*>(puglGetNativeWorld(world.get())));
    const DisplayGuard::Scope scope(*guard);
    std::unique_ptr<PuglView, ViewDeleter> view(puglNewView(world.get()));
    const double scale = view ? puglGetScaleFactor(view.get()) : 1.0;
    view.reset();
    world.reset();
    return scale;
}

PuglSpan NativeWindow::State::span(double points) const noexcept {
    return static_cast<PuglSpan>(std::lround(std::clamp(points * rules.scale, 1.0, kLongestSide)));
}

NativeWindow::NativeWindow(std::unique_ptr<State> state) : state_(std::move(state)) {}

Result<std::unique_ptr<NativeWindow>> NativeWindow::open(Ref<UIWindow> content,
                                                         const NativeWindowOptions& options) {
    auto made = std::make_unique<State>(std::move(content), options);
    State& state = *made;
    state.world.reset(puglNewWorld(options.parent != 0 ? PUGL_MODULE : PUGL_PROGRAM, 0));
    if (!state.world) {
        return noDisplay();
    }
    state.display = static_cast<Display*>(puglGetNativeWorld(state.world.get()));
    state.guard.emplace(state.display);
    const DisplayGuard::Scope scope(*state.guard);
    if (options.parent != 0 && !windowExists(state.display, options.parent)) {
        return failure(WindowBadParent, "the host's window " + std::to_string(options.parent) +
                                            " does not exist on this display.");
    }
    puglSetClassName(state.world.get(), options.className.c_str());
    state.view.reset(puglNewView(state.world.get()));
    if (!state.view) {
        return failure(WindowFailed, "there is not enough memory for a window.");
    }
    PuglView* view = state.view.get();
    state.rules = {.scale = options.scale > 0.0 ? options.scale : puglGetScaleFactor(view),
                   .minimum = options.minimumSize,
                   .aspect = options.keepsAspect ? options.size.width / options.size.height : 0.0};
    puglSetHandle(view, &state);
    puglSetEventFunc(view, NativeWindowEvents::handle);
    puglSetWindowTitle(view, options.title.c_str());
    puglSetViewHint(view, PUGL_RESIZABLE, options.resizable ? PUGL_TRUE : PUGL_FALSE);
    if (options.minimumSize.width > 0.0 && options.minimumSize.height > 0.0) {
        puglSetSizeHint(view, PUGL_MIN_SIZE, state.span(options.minimumSize.width),
                        state.span(options.minimumSize.height));
    }
    if (options.keepsAspect) {
        puglSetSizeHint(view, PUGL_FIXED_ASPECT, state.span(options.size.width),
                        state.span(options.size.height));
    }
    puglSetSize(view, state.span(options.size.width), state.span(options.size.height));
    if (options.parent != 0) {
        puglSetParentWindow(view, options.parent);
    } else if (options.transientFor != 0) {
        puglSetTransientParent(view, options.transientFor);
    }
    puglSetBackend(view, puglCairoBackend());
    NativeWindowEvents::configure(state, state.span(options.size.width), state.span(options.size.height));
    if (const PuglStatus status = puglRealize(view); status != PUGL_SUCCESS) {
        puglSetBackend(view, nullptr); // it has nothing to take down
        return failure(WindowFailed, std::string("the window cannot be made: ") + puglStrerror(status) + ".");
    }
    state.handle = puglGetNativeView(view);
    if (options.parent == 0 && options.keyboardOnDemand) {
        XWMHints hints{};
        hints.flags = InputHint;
        hints.input = False;
        XSetWMHints(state.display, state.handle, &hints);
    }
    if (!windowExists(state.display, state.handle)) {
        state.destroyed = true;
        return failure(WindowFailed, "the display refused the window.");
    }
    return std::unique_ptr<NativeWindow>(new NativeWindow(std::move(made)));
}

NativeWindow::~NativeWindow() {
    State& state = *state_;
    const RunLoop::Scope loop(state.loop);
    const DisplayGuard::Scope scope(*state.guard);
    state.content->cancelTouches();
    if (state.hasKeyboard && !state.gone()) {
        state.content->setFirstResponder(nullptr);
        NativeWindowEvents::updateKeyboard(state);
    }
    if (!state.gone()) {
        releaseSharedPictures(state.display, state.handle);
    }
    state.view.reset();
    state.world.reset();
}

std::uintptr_t NativeWindow::nativeHandle() const noexcept {
    return state_->handle;
}

void NativeWindow::show() {
    if (!isGone()) {
        const DisplayGuard::Scope scope(*state_->guard);
        puglShow(state_->view.get());
        XFlush(state_->display);
    }
}

void NativeWindow::hide() {
    if (!isGone()) {
        const DisplayGuard::Scope scope(*state_->guard);
        puglHide(state_->view.get());
        XFlush(state_->display);
    }
}

bool NativeWindow::isVisible() const noexcept {
    return !isGone() && puglGetVisible(state_->view.get());
}

void NativeWindow::setTitle(const std::string& title) {
    if (!isGone()) {
        const DisplayGuard::Scope scope(*state_->guard);
        puglSetWindowTitle(state_->view.get(), title.c_str());
        XFlush(state_->display);
    }
}

void NativeWindow::setTransientFor(std::uintptr_t window) {
    if (!isGone()) {
        const DisplayGuard::Scope scope(*state_->guard);
        puglSetTransientParent(state_->view.get(), window);
        XFlush(state_->display);
    }
}

void NativeWindow::setSize(const CGSize& points) {
    state_->options.size = points;
    if (!isGone()) {
        const DisplayGuard::Scope scope(*state_->guard);
        puglSetSize(state_->view.get(), state_->span(points.width), state_->span(points.height));
        XFlush(state_->display);
    }
}

void NativeWindow::setScale(double pixelsPerPoint) {
    State& state = *state_;
    if (!(pixelsPerPoint > 0.0) || pixelsPerPoint == state.rules.scale || isGone()) {
        return;
    }
    const CGSize points = state.placement.points;
    state.rules.scale = pixelsPerPoint;
    const DisplayGuard::Scope scope(*state.guard);
    if (state.options.minimumSize.width > 0.0 && state.options.minimumSize.height > 0.0) {
        puglSetSizeHint(state.view.get(), PUGL_MIN_SIZE, state.span(state.options.minimumSize.width),
                        state.span(state.options.minimumSize.height));
    }
    setSize(points);
    // The window keeps its pixels until the display has answered; the content has the new scale from now on.
    NativeWindowEvents::configure(state, state.pixels.width, state.pixels.height);
}

double NativeWindow::scale() const noexcept {
    return state_->rules.scale;
}

double NativeWindow::desktopScale() const noexcept {
    return puglGetScaleFactor(state_->view.get());
}

CGSize NativeWindow::size() const noexcept {
    return state_->placement.points;
}

CGSize NativeWindow::pixelSize() const noexcept {
    return state_->pixels;
}

int NativeWindow::fileDescriptor() const noexcept {
    return ConnectionNumber(state_->display);
}

bool NativeWindow::isGone() const noexcept {
    return state_->gone();
}

bool NativeWindow::pump(double timeout) {
    State& state = *state_;
    if (!state.gone()) {
        const RunLoop::Scope loop(state.loop);
        const DisplayGuard::Scope scope(*state.guard);
        if (XPending(state.display) == 0 && timeout > 0.0 && !state.gone()) {
            pollfd waiting{.fd = fileDescriptor(), .events = POLLIN, .revents = 0};
            ::poll(&waiting, 1, static_cast<int>(std::ceil(std::min(timeout, 3600.0) * 1000.0)));
            XPending(state.display); // reads what has come
        }
        XEvent event{};
        while (!state.gone() &&
               XCheckTypedWindowEvent(state.display, state.handle, DestroyNotify, &event) != 0) {
            state.destroyed = true;
        }
        // What drawing or a new size brings up is shown in the same call; bounded, as views may always
        // change.
        for (int round = 0; round < 3 && !state.gone() && (round == 0 || state.drawAgain); ++round) {
            state.drawAgain = false;
            puglUpdate(state.world.get(), 0.0);
        }
        if (!state.gone()) {
            NativeWindowEvents::updateKeyboard(state);
            XFlush(state.display);
        }
    }
    const bool alive = !state.gone();
    if (std::exchange(state.resized, false) && onResize) {
        const auto callback = onResize;
        callback(state.placement.points);
    }
    // Also where the end was noticed between two calls.
    const bool ended = !alive && !std::exchange(state.endTold, true);
    if ((std::exchange(state.closeWanted, false) || ended) && onClose) {
        const auto callback = onClose;
        callback(); // `this` may be gone
    }
    return alive;
}

} // namespace platform
