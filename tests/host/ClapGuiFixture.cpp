#include "ClapGuiFixture.h"

#include <chrono>
#include <cstdint>
#include <string_view>
#include <thread>

#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>

namespace test {

ClapGuiTest::ClapGuiTest() : display(XOpenDisplay(nullptr)) {
    EXPECT_NE(display, nullptr) << "these tests need a display; tests/support/with-xvfb.sh gives one";
}

ClapGuiTest::~ClapGuiTest() {
    XCloseDisplay(display);
}

Window ClapGuiTest::makeParent(int x, int y) {
    const Window parent = XCreateSimpleWindow(display, DefaultRootWindow(display), x, y, 512, 392, 0, 0, 0);
    XSetWindowAttributes attributes{};
    attributes.override_redirect = True; // no window manager is asked: it lies where it was put
    XChangeWindowAttributes(display, parent, CWOverrideRedirect, &attributes);
    XMapRaised(display, parent);
    XSync(display, False);
    return parent;
}

std::vector<Window> ClapGuiTest::children(Window parent) {
    Window root = 0;
    Window above = 0;
    Window* list = nullptr;
    unsigned count = 0;
    XQueryTree(display, parent, &root, &above, &list, &count);
    std::vector<Window> found(list, list + count);
    if (list != nullptr) {
        XFree(list);
    }
    return found;
}

bool ClapGuiTest::turnUntil(const std::function<bool()>& holds) {
    for (int i = 0; i < 1000; ++i) {
        for (ClapEditorUnderTest* one : turned) {
            one->turn();
            EXPECT_EQ(one->badDescriptors, 0);
        }
        if (holds()) {
            return true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5)); // the display's side of things
    }
    return false;
}

void ClapGuiTest::turn(int times) {
    int left = times;
    turnUntil([&left] { return --left <= 0; });
}

void ClapGuiTest::motion(int x, int y) {
    XTestFakeMotionEvent(display, -1, x, y, 0);
    XSync(display, False);
    turn(5);
}

void ClapGuiTest::button(bool down) {
    XTestFakeButtonEvent(display, 1, down ? True : False, 0);
    XSync(display, False);
    turn(5);
}

void ClapGuiTest::dragTrim(int pixels, int x) {
    motion(x + 83, 200);
    button(true);
    motion(x + 83, 200 - pixels / 2);
    motion(x + 83, 200 - pixels);
    button(false);
}

std::pair<int, int> ClapGuiTest::sizeOf(Window window) {
    XWindowAttributes attributes{};
    EXPECT_NE(XGetWindowAttributes(display, window, &attributes), 0);
    return {attributes.width, attributes.height};
}

bool ClapGuiTest::isDrawn(Window editor, int x) {
    XWindowAttributes attributes{};
    if (XGetWindowAttributes(display, editor, &attributes) == 0 || attributes.map_state != IsViewable) {
        return false;
    }
    const std::string picture = knobPicture(editor, x);
    const std::string_view pixel = std::string_view(picture).substr(0, sizeof(std::uint32_t));
    for (std::size_t at = 0; at < picture.size(); at += pixel.size()) {
        if (std::string_view(picture).substr(at, pixel.size()) != pixel) {
            return true;
        }
    }
    return false;
}

std::string ClapGuiTest::knobPicture(Window editor, int x) {
    constexpr int kSide = 70;
    XImage* image = XGetImage(display, editor, x + 48, 165, kSide, kSide, AllPlanes, ZPixmap);
    if (image == nullptr) {
        ADD_FAILURE() << "no picture of the window";
        return {};
    }
    const std::string bytes(image->data, static_cast<std::size_t>(image->bytes_per_line) * kSide);
    XDestroyImage(image);
    return bytes;
}

} // namespace test
