#include "platform/window/KeyTranslation.h"
#include "platform/window/NativeWindowState.h"

#include <cairo.h>

namespace platform {

namespace {

using State = NativeWindowEvents::State;

constexpr std::uint32_t kLeftButton = 0;
constexpr int kMouse = 0;                  // the number of the touch
constexpr double kLargestWindow = 16000.0; // pixels; beyond it a size is not a size

void drawRegion(const State& state, PuglView* view, const PuglExposeEvent& region) {
    auto* cairo = static_cast<cairo_t*>(puglGetContext(view));
    // The rest would go to the display too, to be left out there.
    cairo_rectangle(cairo, region.x, region.y, region.width, region.height);
    cairo_clip(cairo);
    const ViewCompositor& picture = state.content->picture();
    cairo_set_source_rgb(cairo, 0.0, 0.0, 0.0); // the bars beside the content
    cairo_paint(cairo);
    if (picture.width() == 0 || picture.height() == 0) {
        return;
    }
    // Cairo only reads from it.
    auto* pixels = const_cast<std::uint32_t*>(picture.pixels().data());
    cairo_surface_t* image = cairo_image_surface_create_for_data(
        reinterpret_cast<unsigned char*>(pixels), CAIRO_FORMAT_RGB24, picture.width(), picture.height(),
        picture.width() * static_cast<int>(sizeof(std::uint32_t)));
    cairo_set_source_surface(cairo, image, state.placement.x, state.placement.y);
    cairo_pattern_set_filter(cairo_get_source(cairo), CAIRO_FILTER_NEAREST);
    cairo_paint(cairo);
    cairo_set_source_rgb(cairo, 0.0, 0.0, 0.0); // lets the image go
    cairo_surface_destroy(image);
}

void expose(State& state, PuglView* view, const PuglExposeEvent& region) {
    if (state.content->needsDisplayPass()) {
        // A new size came with this event; what lies outside of its region is shown in the next round.
        NativeWindowEvents::refresh(state);
    }
    drawRegion(state, view, region);
}

void button(State& state, const PuglButtonEvent& event, bool down) {
    if (event.button != kLeftButton) {
        return;
    }
    const CGPoint at = state.placement.pointAt(event.x, event.y);
    state.buttonHeld = down;
    if (down) {
        state.focusAsked = true;
        state.content->touchDown(kMouse, at, modifierFlags(event.state));
    } else {
        state.content->touchUp(kMouse, at, modifierFlags(event.state));
    }
}

} // namespace

void NativeWindowEvents::configure(State& state, double width, double height) {
    if (width < 1.0 || height < 1.0 || width > kLargestWindow || height > kLargestWindow) {
        return;
    }
    state.pixels = {.width = width, .height = height};
    const ContentPlacement placed =
        placeContent(static_cast<int>(width), static_cast<int>(height), state.rules);
    state.resized = state.resized || !(placed.points == state.placement.points);
    state.placement = placed;
    state.content->setScale(placed.scale);
    state.content->setSize(placed.points);
}

void NativeWindowEvents::refresh(State& state) {
    if (!state.content->needsDisplayPass()) {
        return;
    }
    const PixelRect changed = state.content->display();
    if (changed.isEmpty()) {
        return;
    }
    puglPostRedisplayRect(state.view.get(), {.x = static_cast<PuglCoord>(changed.x + state.placement.x),
                                             .y = static_cast<PuglCoord>(changed.y + state.placement.y),
                                             .width = static_cast<PuglSpan>(changed.width),
                                             .height = static_cast<PuglSpan>(changed.height)});
    state.drawAgain = true;
}

void NativeWindowEvents::updateKeyboard(State& state) {
    if (state.options.parent == 0 && !state.options.keyboardOnDemand) {
        return; // the desktop gives it to a window of its own
    }
    const bool wanted = state.content->firstResponder() != nullptr;
    const bool asked = std::exchange(state.focusAsked, false);
    if (wanted && (!state.hasKeyboard || asked)) {
        Window now = 0;
        int revert = 0;
        XGetInputFocus(state.display, &now, &revert);
        if (now != state.handle) {
            state.keyboardBefore = now;
            XSetInputFocus(state.display, state.handle, RevertToParent, CurrentTime);
        }
        state.hasKeyboard = true;
    } else if (!wanted && state.hasKeyboard) {
        state.hasKeyboard = false;
        if (puglHasFocus(state.view.get()) && state.keyboardBefore != 0) {
            XSetInputFocus(state.display, state.keyboardBefore, RevertToParent, CurrentTime);
        }
    }
}

PuglStatus NativeWindowEvents::handle(PuglView* view, const PuglEvent* event) {
    auto& state = *static_cast<State*>(puglGetHandle(view));
    switch (event->type) {
    case PUGL_CONFIGURE:
        configure(state, event->configure.width, event->configure.height);
        // An exposure that came together with this is still cut to the size before.
        puglPostRedisplay(view);
        state.drawAgain = true;
        break;
    case PUGL_UPDATE:
        refresh(state);
        break;
    case PUGL_EXPOSE:
        expose(state, view, event->expose);
        break;
    case PUGL_UNMAP:
        state.buttonHeld = false;
        state.content->cancelTouches();
        break;
    case PUGL_CLOSE:
        state.closeWanted = true;
        break;
    case PUGL_BUTTON_PRESS:
        button(state, event->button, true);
        break;
    case PUGL_BUTTON_RELEASE:
        button(state, event->button, false);
        break;
    case PUGL_MOTION:
        if (state.buttonHeld) {
            state.content->touchMoved(kMouse, state.placement.pointAt(event->motion.x, event->motion.y),
                                      modifierFlags(event->motion.state));
        }
        break;
    case PUGL_SCROLL:
        state.content->wheel(state.placement.pointAt(event->scroll.x, event->scroll.y), event->scroll.dx,
                             event->scroll.dy, modifierFlags(event->scroll.state));
        break;
    case PUGL_KEY_PRESS:
        if (const auto key = specialKey(event->key.key, event->key.state)) {
            state.content->key(*key);
        }
        break;
    case PUGL_TEXT:
        if (const auto key = textKey(event->text.string, event->text.state)) {
            state.content->key(*key);
        }
        break;
    default:
        break;
    }
    return PUGL_SUCCESS;
}

} // namespace platform
