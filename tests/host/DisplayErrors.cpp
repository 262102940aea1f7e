// The program stands in for the library's call that hands out the plug-in's handler, and listens in.
#include "DisplayErrors.h"

#include <atomic>
#include <dlfcn.h>

#include <X11/Xlib.h>
#include <X11/Xlibint.h>

namespace {

using Handler = Bool (*)(Display*, XErrorEvent*, xError*);
using Setter = Handler (*)(Display*, int, Handler);

std::atomic<int> errors{0};
std::atomic<Handler> plugins{nullptr};

// What the plug-in lets through are questions that Cairo asks by making an error, and answers itself.
Bool listen(Display* display, XErrorEvent* converted, xError* wire) {
    const Handler handler = plugins.load();
    const Bool letThrough = handler(display, converted, wire);
    if (letThrough == False) {
        ++errors;
    }
    return letThrough;
}

} // namespace

extern "C" [[gnu::visibility("default")]] Handler XESetWireToError(Display* display, int code,
                                                                   Handler handler) {
    static const auto original = reinterpret_cast<Setter>(dlsym(RTLD_NEXT, "XESetWireToError"));
    plugins.store(handler);
    return original(display, code, listen);
}

namespace test {

int displayErrors() noexcept {
    return errors.load();
}

} // namespace test
