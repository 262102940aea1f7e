// What the process survives.
#include "DisplayFixture.h"

#include "support/LevelMemory.h"

#include <unistd.h>

namespace platform {
namespace {

int hostErrors = 0;

int countError(Display* /*display*/, XErrorEvent* /*event*/) {
    ++hostErrors;
    return 0;
}

class ConnectionTest : public DisplayTest {
protected:
    void SetUp() override {
        DisplayTest::SetUp();
        hostErrors = 0;
        before_ = XSetErrorHandler(countError);
    }
    void TearDown() override {
        DisplayTest::TearDown();
        XSetErrorHandler(before_);
    }

private:
    XErrorHandler before_ = nullptr;
};

TEST_F(ConnectionTest, ADestroyedParentClosesTheWindowWithoutAnError) {
    const Window parent = makeParent(400, 300);
    open({.parent = parent, .size = {.width = 300.0, .height = 200.0}, .scale = 1.0});
    int closed = 0;
    window->onClose = [&] { ++closed; };
    XDestroyWindow(display, parent);
    XSync(display, False);
    probe->setNeedsDisplay();
    EXPECT_TRUE(pumpUntil([&] { return window->isGone(); }));
    EXPECT_FALSE(window->pump());
    EXPECT_EQ(closed, 1);
    window->show();
    window->hide();
    window->setSize({.width = 100.0, .height = 100.0});
    window->setScale(2.0);
    window->setTitle("gone");
    EXPECT_FALSE(window->pump(0.01));
    window.reset();
    EXPECT_EQ(hostErrors, 0);
}

TEST_F(ConnectionTest, AParentDestroyedUnseenMakesNoErrorAtTheEnd) {
    const Window parent = makeParent(400, 300);
    open({.parent = parent, .size = {.width = 300.0, .height = 200.0}, .scale = 1.0});
    XDestroyWindow(display, parent);
    XSync(display, False);
    window.reset();
    EXPECT_EQ(hostErrors, 0);
}

TEST_F(ConnectionTest, AParentDestroyedBeforeTheWindowIsShownMakesNoError) {
    const Window parent = makeParent(400, 300);
    auto opened = NativeWindow::open(content, {.parent = parent, .scale = 1.0});
    ASSERT_TRUE(opened);
    window = std::move(opened).value();
    XDestroyWindow(display, parent);
    XSync(display, False);
    window->show();
    EXPECT_TRUE(pumpUntil([&] { return window->isGone(); }));
    EXPECT_EQ(hostErrors, 0);
}

TEST_F(ConnectionTest, TheHostsHandlerStaysInForceForTheHost) {
    open({.size = {.width = 300.0, .height = 200.0}, .scale = 1.0});
    const Window bad = makeParent(10, 10);
    XDestroyWindow(display, bad);
    XUnmapWindow(display, bad);
    XSync(display, False);
    window->pump();
    EXPECT_EQ(hostErrors, 1);
    EXPECT_EQ(XSetErrorHandler(countError), countError);
}

TEST_F(ConnectionTest, ALostConnectionLeavesTheProcessAlive) {
    open({.size = {.width = 300.0, .height = 200.0}, .scale = 1.0});
    const auto hostHandler = [](Display* /*display*/) -> int { std::abort(); };
    const XIOErrorHandler before = XSetIOErrorHandler(hostHandler);
    int closed = 0;
    window->onClose = [&] { ++closed; };
    XKillClient(display, window->nativeHandle());
    XSync(display, False);
    probe->setNeedsDisplay();
    EXPECT_TRUE(pumpUntil([&] { return window->isGone(); }));
    EXPECT_EQ(closed, 1);
    EXPECT_FALSE(window->pump(0.01));
    window->setTitle("gone");
    window.reset();
    EXPECT_EQ(XSetIOErrorHandler(before), static_cast<XIOErrorHandler>(hostHandler));
    open({.size = {.width = 300.0, .height = 200.0}, .scale = 1.0});
    EXPECT_EQ(pixel(10, 10), 0xFF0000UL) << "a new connection works";
}

TEST_F(ConnectionTest, ALossNoticedBetweenTwoPumpsIsToldByTheNext) {
    open({.size = {.width = 300.0, .height = 200.0}, .scale = 1.0});
    int closed = 0;
    window->onClose = [&] { ++closed; };
    XKillClient(display, window->nativeHandle());
    XSync(display, False);
    for (int i = 0; i < 5000 && !window->isGone(); ++i) {
        window->setTitle("still there?");
        ::usleep(1000);
    }
    ASSERT_TRUE(window->isGone());
    EXPECT_EQ(closed, 0);
    EXPECT_FALSE(window->pump(0.01));
    EXPECT_EQ(closed, 1);
    EXPECT_FALSE(window->pump(0.01));
    EXPECT_EQ(closed, 1);
}

TEST_F(ConnectionTest, AConnectionLostUnseenLeavesTheProcessAliveAtTheEnd) {
    open({.size = {.width = 300.0, .height = 200.0}, .scale = 1.0});
    XKillClient(display, window->nativeHandle());
    XSync(display, False);
    window.reset();
    EXPECT_EQ(hostErrors, 0);
}

TEST_F(ConnectionTest, ManyOpeningsLeaveTheMemoryLevel) {
    const auto openAndClose = [&](int times) {
        for (int i = 0; i < times; ++i) {
            auto opened =
                NativeWindow::open(content, {.size = {.width = 64.0, .height = 48.0}, .scale = 1.0});
            ASSERT_TRUE(opened);
            opened.value()->show();
            opened.value()->pump(0.002);
        }
    };
    openAndClose(30);
    // Less than a hundred bytes an opening: what Xlib itself keeps for a display's input method.
    EXPECT_TRUE(::test::staysLevel(10000, [&] { openAndClose(100); }));
}

} // namespace
} // namespace platform
