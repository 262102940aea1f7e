#include "DisplayFixture.h"

#include "platform/draw/UIBezierPath.h"

namespace platform {

void ProbeView::draw(const CGRect& rect) {
    CGRect half = rect;
    half.size.width /= 2.0;
    left.setFill();
    UIBezierPath::bezierPathWithRect(half).fill();
    half.origin.x += half.size.width;
    UIColor(0.0, 0.0, 1.0, 1.0).setFill();
    UIBezierPath::bezierPathWithRect(half).fill();
}

void DisplayTest::SetUp() {
    display = XOpenDisplay(nullptr);
    ASSERT_NE(display, nullptr) << "these tests need a display; tests/support/with-xvfb.sh gives one";
    scope.emplace(loop);
    content = makeRef<UIWindow>(CGSizeMake(1.0, 1.0));
    probe = makeRef<ProbeView>();
    content->setRootView(probe);
    XTestFakeMotionEvent(display, -1, 1599, 1199, CurrentTime); // out of the way
    XSync(display, False);
}

void DisplayTest::TearDown() {
    window.reset();
    scope.reset();
    if (display != nullptr) {
        XCloseDisplay(display);
    }
}

NativeWindow& DisplayTest::open(const NativeWindowOptions& options) {
    auto opened = NativeWindow::open(content, options);
    EXPECT_TRUE(opened) << opened.error().localizedDescription();
    window = std::move(opened).value();
    window->show();
    EXPECT_TRUE(pumpUntil([&] { return window->isVisible() && probe->drawCount() > 0; }));
    settle();
    return *window;
}

bool DisplayTest::pumpUntil(const std::function<bool()>& condition) {
    for (int i = 0; i < 500; ++i) {
        if (condition()) {
            return true;
        }
        XSync(display, False);
        window->pump(0.01);
    }
    return condition();
}

void DisplayTest::settle() {
    for (int i = 0; i < 5; ++i) {
        XSync(display, False);
        window->pump(0.01);
    }
    XSync(display, False);
}

unsigned long DisplayTest::pixelOf(Window target, int x, int y) {
    XImage* image = XGetImage(display, target, x, y, 1, 1, AllPlanes, ZPixmap);
    if (image == nullptr) {
        ADD_FAILURE() << "no picture of the window";
        return 0;
    }
    const unsigned long value = XGetPixel(image, 0, 0) & 0xFFFFFF;
    XDestroyImage(image);
    return value;
}

XWindowAttributes DisplayTest::attributesOf(Window target) {
    XWindowAttributes attributes{};
    EXPECT_NE(XGetWindowAttributes(display, target, &attributes), 0);
    return attributes;
}

Window DisplayTest::makeParent(int width, int height) {
    const Window parent =
        XCreateSimpleWindow(display, DefaultRootWindow(display), 50, 60, static_cast<unsigned>(width),
                            static_cast<unsigned>(height), 0, 0, 0x00FF00);
    XMapWindow(display, parent);
    XSync(display, False);
    return parent;
}

Window DisplayTest::focused() {
    Window now = 0;
    int revert = 0;
    XGetInputFocus(display, &now, &revert);
    return now;
}

void DisplayTest::moveTo(int x, int y) {
    int rootX = 0;
    int rootY = 0;
    Window child = 0;
    XTranslateCoordinates(display, window->nativeHandle(), DefaultRootWindow(display), x, y, &rootX, &rootY,
                          &child);
    XTestFakeMotionEvent(display, -1, rootX, rootY, CurrentTime);
    XSync(display, False);
}

void DisplayTest::button(unsigned number, bool down) {
    XTestFakeButtonEvent(display, number, down ? True : False, CurrentTime);
    XSync(display, False);
}

void DisplayTest::press(KeySym key, KeySym modifier) {
    if (modifier != NoSymbol) {
        XTestFakeKeyEvent(display, XKeysymToKeycode(display, modifier), True, CurrentTime);
    }
    XTestFakeKeyEvent(display, XKeysymToKeycode(display, key), True, CurrentTime);
    XTestFakeKeyEvent(display, XKeysymToKeycode(display, key), False, CurrentTime);
    if (modifier != NoSymbol) {
        XTestFakeKeyEvent(display, XKeysymToKeycode(display, modifier), False, CurrentTime);
    }
    XSync(display, False);
}

} // namespace platform
