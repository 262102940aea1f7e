// A window inside a host's window.
#include <gmock/gmock.h>

#include "DisplayFixture.h"

namespace platform {
namespace {

class EmbeddedWindowTest : public DisplayTest {
protected:
    NativeWindow& openIn(Window parent) {
        return open({.parent = parent, .size = {.width = 300.0, .height = 200.0}, .scale = 1.0});
    }
};

TEST_F(EmbeddedWindowTest, LiesInItsParent) {
    const Window parent = makeParent(400, 300);
    openIn(parent);
    Window root = 0;
    Window above = 0;
    Window* children = nullptr;
    unsigned count = 0;
    ASSERT_NE(XQueryTree(display, parent, &root, &above, &children, &count), 0);
    ASSERT_EQ(count, 1U);
    EXPECT_EQ(children[0], window->nativeHandle());
    XFree(children);
    EXPECT_EQ(attributesOf(window->nativeHandle()).x, 0);
    EXPECT_EQ(attributesOf(window->nativeHandle()).y, 0);
    EXPECT_EQ(pixelOf(parent, 10, 10), 0xFF0000UL);
    EXPECT_EQ(pixelOf(parent, 350, 250), 0x00FF00UL);
}

TEST_F(EmbeddedWindowTest, LiesInAParentOfAnotherDepth) {
    XVisualInfo visual{};
    ASSERT_NE(XMatchVisualInfo(display, DefaultScreen(display), 32, TrueColor, &visual), 0)
        << "the display has no windows with an alpha channel";
    XSetWindowAttributes attributes{};
    attributes.colormap = XCreateColormap(display, DefaultRootWindow(display), visual.visual, AllocNone);
    attributes.border_pixel = 0;
    const Window parent = XCreateWindow(display, DefaultRootWindow(display), 0, 0, 400, 300, 0, 32,
                                        InputOutput, visual.visual, CWColormap | CWBorderPixel, &attributes);
    XMapWindow(display, parent);
    XSync(display, False);
    openIn(parent);
    EXPECT_EQ(pixel(10, 10), 0xFF0000UL);
}

TEST_F(EmbeddedWindowTest, RefusesAParentThatDoesNotExist) {
    const Window parent = makeParent(400, 300);
    XDestroyWindow(display, parent);
    XSync(display, False);
    const auto opened = NativeWindow::open(content, {.parent = parent});
    ASSERT_FALSE(opened);
    EXPECT_EQ(opened.error().code, WindowBadParent);
    EXPECT_THAT(opened.error().localizedDescription(), ::testing::HasSubstr(std::to_string(parent)));
}

TEST_F(EmbeddedWindowTest, LeavesTheKeyboardToTheHostUntilAViewWantsIt) {
    const Window parent = makeParent(400, 300);
    probe->focusable = true;
    openIn(parent);
    XSetInputFocus(display, parent, RevertToPointerRoot, CurrentTime);
    moveTo(20, 30);
    button(1, true);
    button(1, false);
    ASSERT_TRUE(pumpUntil([&] { return probe->touches.size() == 2; }));
    settle();
    EXPECT_EQ(focused(), parent) << "a click alone takes nothing";
    probe->becomeFirstResponder();
    ASSERT_TRUE(pumpUntil([&] { return focused() == window->nativeHandle(); }));
    press(XK_7);
    ASSERT_TRUE(pumpUntil([&] { return probe->keys.size() == 1; }));
    EXPECT_EQ(probe->keys[0].text, "7");
    probe->resignFirstResponder();
    ASSERT_TRUE(pumpUntil([&] { return focused() == parent; }));
}

TEST_F(EmbeddedWindowTest, GivesTheKeyboardBackWhenItIsClosedInBetween) {
    const Window parent = makeParent(400, 300);
    probe->focusable = true;
    openIn(parent);
    XSetInputFocus(display, parent, RevertToPointerRoot, CurrentTime);
    XSync(display, False);
    probe->becomeFirstResponder();
    ASSERT_TRUE(pumpUntil([&] { return focused() == window->nativeHandle(); }));
    window.reset();
    EXPECT_EQ(focused(), parent);
    EXPECT_EQ(content->firstResponder(), nullptr);
}

TEST_F(EmbeddedWindowTest, TakesTheKeyboardBackOnAClickAfterTheHostHadIt) {
    const Window parent = makeParent(400, 300);
    probe->focusable = true;
    openIn(parent);
    probe->becomeFirstResponder();
    ASSERT_TRUE(pumpUntil([&] { return focused() == window->nativeHandle(); }));
    XSetInputFocus(display, parent, RevertToPointerRoot, CurrentTime);
    settle();
    EXPECT_EQ(focused(), parent);
    moveTo(20, 30);
    button(1, true);
    button(1, false);
    EXPECT_TRUE(pumpUntil([&] { return focused() == window->nativeHandle(); }));
}

TEST_F(EmbeddedWindowTest, LeavesTheKeyboardToTheHostBesideItToo) {
    const Window host = makeParent(400, 300);
    XSetInputFocus(display, host, RevertToPointerRoot, CurrentTime);
    XSync(display, False);
    probe->focusable = true;
    NativeWindowOptions options;
    options.transientFor = host;
    options.keyboardOnDemand = true;
    options.scale = 1.0;
    open(options);
    XWMHints* hints = XGetWMHints(display, window->nativeHandle());
    ASSERT_NE(hints, nullptr);
    EXPECT_EQ(hints->flags & InputHint, InputHint);
    EXPECT_EQ(hints->input, False);
    XFree(hints);
    Window above = 0;
    EXPECT_NE(XGetTransientForHint(display, window->nativeHandle(), &above), 0);
    EXPECT_EQ(above, host);
    probe->becomeFirstResponder();
    ASSERT_TRUE(pumpUntil([&] { return focused() == window->nativeHandle(); }));
    probe->resignFirstResponder();
    EXPECT_TRUE(pumpUntil([&] { return focused() == host; }));
}

TEST_F(EmbeddedWindowTest, FollowsTheSizeThatTheHostGivesIt) {
    const Window parent = makeParent(900, 700);
    openIn(parent);
    XResizeWindow(display, window->nativeHandle(), 600, 400);
    ASSERT_TRUE(pumpUntil([&] { return window->size() == CGSize{600.0, 400.0}; }));
    settle();
    EXPECT_EQ(pixel(299, 399), 0xFF0000UL);
    EXPECT_EQ(pixel(300, 399), 0x0000FFUL);
}

} // namespace
} // namespace platform
