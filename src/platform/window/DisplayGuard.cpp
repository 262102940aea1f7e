#include "platform/window/DisplayGuard.h"

#include <X11/Xlib.h>
#include <X11/Xlibint.h>
#undef min // Xlibint.h
#undef max

#include <utility>

namespace platform {

namespace {

constexpr int kErrorCodes = 256;
constexpr int kAttachSharedMemory = 1; // the request of MIT-SHM

DisplayGuard* allGuards = nullptr;
Display* guarded = nullptr;            // of the innermost scope
XIOErrorHandler hostHandler = nullptr; // in force outside of all scopes

int connectionError(Display* display) {
    return display == guarded || hostHandler == nullptr ? 0 : hostHandler(display);
}

} // namespace

struct DisplayErrors {
    // Xlib calls an error handler only for the errors for which this is true. Cairo attaches memory to find
    // out whether the server shares ours, and sees the refusal in a handler of its own.
    static int isForHandler(Display* display, XErrorEvent* /*converted*/, xError* wire) {
        const DisplayGuard* guard = allGuards;
        while (guard != nullptr && guard->display_ != display) {
            guard = guard->next_;
        }
        return guard != nullptr && wire->majorCode == guard->sharedMemoryRequests_ &&
                       wire->minorCode == kAttachSharedMemory
                   ? True
                   : False;
    }
};

DisplayGuard::DisplayGuard(_XDisplay* display) : display_(display), next_(std::exchange(allGuards, this)) {
    int firstEvent = 0;
    int firstError = 0;
    if (XQueryExtension(display, "MIT-SHM", &sharedMemoryRequests_, &firstEvent, &firstError) == False) {
        sharedMemoryRequests_ = -1;
    }
    for (int code = 0; code < kErrorCodes; ++code) {
        XESetWireToError(display, code, [](Display* on, XErrorEvent* converted, xError* wire) {
            return DisplayErrors::isForHandler(on, converted, wire);
        });
    }
    XSetIOErrorExitHandler(
        display, [](Display* /*display*/, void* lost) { *static_cast<bool*>(lost) = true; }, &lost_);
}

DisplayGuard::~DisplayGuard() {
    DisplayGuard** place = &allGuards;
    while (*place != nullptr && *place != this) {
        place = &(*place)->next_;
    }
    if (*place != nullptr) {
        *place = next_;
    }
}

DisplayGuard::Scope::Scope(const DisplayGuard& guard) noexcept
    : before_(std::exchange(guarded, guard.display_)) {
    if (before_ == nullptr) {
        hostHandler = XSetIOErrorHandler(connectionError);
    }
}

DisplayGuard::Scope::~Scope() {
    guarded = before_;
    if (before_ == nullptr) {
        XSetIOErrorHandler(hostHandler);
    }
}

} // namespace platform
