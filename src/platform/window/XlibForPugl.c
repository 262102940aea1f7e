// Calls of Xlib that pugl makes, with what it leaves out.
#include <X11/Xlib.h>
#include <X11/extensions/Xrandr.h>

Window qorCreateWindow(Display* display, Window parent, int x, int y, unsigned width, unsigned height,
                       unsigned border, int depth, unsigned class_, Visual* visual, unsigned long mask,
                       XSetWindowAttributes* attributes);
short qorConfigCurrentRate(XRRScreenConfiguration* configuration);

// A window whose depth is not its parent's needs a border pixel of its own, even without a border; otherwise
// the server refuses it (hosts whose windows have an alpha channel).
Window qorCreateWindow(Display* display, Window parent, int x, int y, unsigned width, unsigned height,
                       unsigned border, int depth, unsigned class_, Visual* visual, unsigned long mask,
                       XSetWindowAttributes* attributes) {
    attributes->border_pixel = 0;
    return XCreateWindow(display, parent, x, y, width, height, border, depth, class_, visual,
                         mask | CWBorderPixel, attributes);
}

// There is no configuration if the parent went away in this moment.
short qorConfigCurrentRate(XRRScreenConfiguration* configuration) {
    return configuration ? XRRConfigCurrentRate(configuration) : 0;
}
