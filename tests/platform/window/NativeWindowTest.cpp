// What a window shows, and how it takes sizes.
#include "DisplayFixture.h"

#include <X11/Xatom.h>
#include <poll.h>

namespace platform {
namespace {

constexpr unsigned long kRed = 0xFF0000;
constexpr unsigned long kBlue = 0x0000FF;
constexpr unsigned long kBlack = 0x000000;
constexpr unsigned long kGreen = 0x00FF00;

class NativeWindowTest : public DisplayTest {};

TEST_F(NativeWindowTest, IsOnTheScreenWithItsTitleSizeAndPicture) {
    open({.title = "QOR Limiter", .size = {.width = 300.0, .height = 200.0}, .scale = 1.0});
    const XWindowAttributes attributes = attributesOf(window->nativeHandle());
    EXPECT_EQ(attributes.map_state, IsViewable);
    EXPECT_EQ(attributes.width, 300);
    EXPECT_EQ(attributes.height, 200);
    char* name = nullptr;
    ASSERT_NE(XFetchName(display, window->nativeHandle(), &name), 0);
    EXPECT_STREQ(name, "QOR Limiter");
    XFree(name);
    EXPECT_EQ(pixel(10, 100), kRed);
    EXPECT_EQ(pixel(149, 100), kRed);
    EXPECT_EQ(pixel(150, 100), kBlue);
    EXPECT_EQ(pixel(299, 199), kBlue);
}

TEST_F(NativeWindowTest, HasItsScaleFromTheFirstPictureOn) {
    open({.size = {.width = 300.0, .height = 200.0}, .scale = 2.0});
    EXPECT_EQ(attributesOf(window->nativeHandle()).width, 600);
    EXPECT_EQ(attributesOf(window->nativeHandle()).height, 400);
    EXPECT_EQ(content->scale(), 2.0);
    EXPECT_EQ(content->bounds().size, (CGSize{300.0, 200.0}));
    EXPECT_EQ(probe->drawCount(), 1U);
    EXPECT_EQ(pixel(299, 399), kRed);
    EXPECT_EQ(pixel(300, 399), kBlue);
    EXPECT_EQ(pixel(599, 399), kBlue);
}

TEST_F(NativeWindowTest, TakesTheScaleOfTheDesktop) {
    const std::string resources = "Xft.dpi:\t192\n";
    const Window root = DefaultRootWindow(display);
    XChangeProperty(display, root, XA_RESOURCE_MANAGER, XA_STRING, 8, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(resources.data()),
                    static_cast<int>(resources.size()));
    XSync(display, False);
    open({.size = {.width = 300.0, .height = 200.0}});
    XDeleteProperty(display, root, XA_RESOURCE_MANAGER);
    EXPECT_EQ(window->scale(), 2.0);
    EXPECT_EQ(attributesOf(window->nativeHandle()).width, 600);
}

TEST_F(NativeWindowTest, ChangesItsScaleAndKeepsItsPoints) {
    open({.size = {.width = 300.0, .height = 200.0}, .scale = 1.0});
    window->setScale(2.0);
    ASSERT_TRUE(pumpUntil([&] { return window->pixelSize() == CGSize{600.0, 400.0}; }));
    settle();
    EXPECT_EQ(window->size(), (CGSize{300.0, 200.0}));
    EXPECT_EQ(content->scale(), 2.0);
    EXPECT_EQ(pixel(299, 399), kRed);
    EXPECT_EQ(pixel(300, 399), kBlue);
}

TEST_F(NativeWindowTest, FollowsTheSizeThatItIsAskedFor) {
    open({.size = {.width = 300.0, .height = 200.0}, .scale = 1.0});
    std::vector<CGSize> told;
    window->onResize = [&](const CGSize& size) { told.push_back(size); };
    window->setSize({.width = 600.0, .height = 400.0});
    ASSERT_TRUE(pumpUntil([&] { return !told.empty(); }));
    settle();
    ASSERT_EQ(told.size(), 1U);
    EXPECT_EQ(told.front(), (CGSize{600.0, 400.0}));
    EXPECT_EQ(window->size(), (CGSize{600.0, 400.0}));
    EXPECT_EQ(pixel(299, 399), kRed);
    EXPECT_EQ(pixel(300, 399), kBlue);
}

TEST_F(NativeWindowTest, HasBarsWhereASizeOfAnotherShapeIsForcedOnIt) {
    open({.size = {.width = 300.0, .height = 200.0}, .scale = 1.0});
    XResizeWindow(display, window->nativeHandle(), 500, 200);
    ASSERT_TRUE(pumpUntil([&] { return window->pixelSize() == CGSize{500.0, 200.0}; }));
    settle();
    EXPECT_EQ(window->size(), (CGSize{300.0, 200.0}));
    EXPECT_EQ(pixel(50, 100), kBlack);
    EXPECT_EQ(pixel(99, 100), kBlack);
    EXPECT_EQ(pixel(100, 100), kRed);
    EXPECT_EQ(pixel(249, 100), kRed);
    EXPECT_EQ(pixel(250, 100), kBlue);
    EXPECT_EQ(pixel(399, 100), kBlue);
    EXPECT_EQ(pixel(400, 100), kBlack);
    moveTo(100, 0);
    button(1, true);
    button(1, false);
    ASSERT_TRUE(pumpUntil([&] { return probe->touches.size() == 2; }));
    EXPECT_EQ(probe->touches.front().at, (CGPoint{0.0, 0.0}));
}

TEST_F(NativeWindowTest, ShowsAllOfItsContentWhenForcedBelowTheMinimum) {
    open({.size = {.width = 300.0, .height = 200.0},
          .minimumSize = {.width = 150.0, .height = 100.0},
          .scale = 1.0});
    XResizeWindow(display, window->nativeHandle(), 75, 50);
    ASSERT_TRUE(pumpUntil([&] { return window->pixelSize() == CGSize{75.0, 50.0}; }));
    settle();
    EXPECT_EQ(window->size(), (CGSize{150.0, 100.0}));
    EXPECT_EQ(content->scale(), 0.5);
    EXPECT_EQ(pixel(5, 25), kRed);
    EXPECT_EQ(pixel(70, 25), kBlue);
}

TEST_F(NativeWindowTest, TellsTheDesktopItsMinimumAndItsAspect) {
    open({.size = {.width = 300.0, .height = 200.0},
          .minimumSize = {.width = 150.0, .height = 100.0},
          .scale = 2.0});
    XSizeHints hints{};
    long supplied = 0;
    ASSERT_NE(XGetWMNormalHints(display, window->nativeHandle(), &hints, &supplied), 0);
    EXPECT_EQ(hints.flags & (PMinSize | PAspect | PBaseSize), PMinSize | PAspect);
    EXPECT_EQ(hints.min_width, 300);
    EXPECT_EQ(hints.min_height, 200);
    EXPECT_EQ(hints.min_aspect.x * 2, hints.min_aspect.y * 3);
    EXPECT_EQ(hints.max_aspect.x * 2, hints.max_aspect.y * 3);
}

TEST_F(NativeWindowTest, ShowsOnlyWhatHasChanged) {
    auto small = makeRef<ProbeView>(CGRectMake(20.0, 30.0, 40.0, 40.0));
    probe->addSubview(small);
    open({.size = {.width = 300.0, .height = 200.0}, .scale = 1.0});
    // Someone paints over the window behind its back; what is not shown again keeps that paint.
    GC context = XCreateGC(display, window->nativeHandle(), 0, nullptr);
    XSetForeground(display, context, kGreen);
    XFillRectangle(display, window->nativeHandle(), context, 0, 0, 300, 200);
    XFreeGC(display, context);
    XSync(display, False);
    window->pump();
    EXPECT_EQ(pixel(40, 50), kGreen) << "nothing has changed, nothing is to be shown";
    const auto before = probe->drawCount();
    small->left = UIColor(1.0, 1.0, 1.0, 1.0);
    small->setNeedsDisplay();
    ASSERT_TRUE(pumpUntil([&] { return pixel(25, 50) == 0xFFFFFF; }));
    settle();
    EXPECT_EQ(pixel(45, 50), kGreen) << "this half of the view is drawn as before";
    EXPECT_EQ(pixel(19, 50), kGreen);
    EXPECT_EQ(pixel(60, 50), kGreen);
    EXPECT_EQ(pixel(40, 29), kGreen);
    EXPECT_EQ(pixel(40, 70), kGreen);
    EXPECT_EQ(probe->drawCount(), before);
}

TEST_F(NativeWindowTest, ShowsAChangeInTheCallThatFindsIt) {
    open({.size = {.width = 300.0, .height = 200.0}, .scale = 1.0});
    probe->left = UIColor(0.0, 1.0, 0.0, 1.0);
    probe->setNeedsDisplay();
    window->pump();
    unsigned long shown = pixel(10, 10);
    for (int i = 0; i < 200 && shown != kGreen; ++i) { // until the server has worked it off
        shown = pixel(10, 10);
    }
    EXPECT_EQ(shown, kGreen);
}

TEST_F(NativeWindowTest, GoesAndComesBackWithItsPicture) {
    open({.size = {.width = 300.0, .height = 200.0}, .scale = 1.0});
    window->hide();
    ASSERT_TRUE(pumpUntil([&] { return !window->isVisible(); }));
    EXPECT_EQ(attributesOf(window->nativeHandle()).map_state, IsUnmapped);
    window->show();
    ASSERT_TRUE(pumpUntil([&] { return window->isVisible(); }));
    settle();
    EXPECT_EQ(pixel(10, 100), kRed);
    EXPECT_EQ(probe->drawCount(), 1U) << "the picture is kept";
}

TEST_F(NativeWindowTest, AsksToBeClosedAndMayBeDestroyedThen) {
    open({.size = {.width = 300.0, .height = 200.0}, .scale = 1.0});
    bool closed = false;
    window->onClose = [&] {
        closed = true;
        window.reset();
    };
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window->nativeHandle();
    event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", False));
    XSendEvent(display, window->nativeHandle(), False, 0, &event);
    XSync(display, False);
    for (int i = 0; i < 100 && !closed; ++i) {
        window->pump(0.01);
    }
    EXPECT_TRUE(closed);
    EXPECT_EQ(window, nullptr);
}

TEST_F(NativeWindowTest, HasADescriptorThatTellsOfInput) {
    open({.size = {.width = 300.0, .height = 200.0}, .scale = 1.0});
    pollfd waiting{.fd = window->fileDescriptor(), .events = POLLIN, .revents = 0};
    EXPECT_EQ(::poll(&waiting, 1, 0), 0);
    moveTo(10, 10);
    button(1, true);
    EXPECT_EQ(::poll(&waiting, 1, 5000), 1);
    button(1, false);
}

TEST_F(NativeWindowTest, ShowsTheSameContentAgainInAnotherWindow) {
    open({.size = {.width = 300.0, .height = 200.0}, .scale = 1.0});
    window.reset();
    open({.size = {.width = 300.0, .height = 200.0}, .scale = 1.0});
    EXPECT_EQ(pixel(10, 100), kRed);
    EXPECT_EQ(pixel(290, 100), kBlue);
}

TEST_F(NativeWindowTest, StandsBesideAnother) {
    open({.size = {.width = 300.0, .height = 200.0}, .scale = 1.0});
    auto otherContent = makeRef<UIWindow>(CGSizeMake(1.0, 1.0));
    auto otherProbe = makeRef<ProbeView>();
    otherContent->setRootView(otherProbe);
    auto opened = NativeWindow::open(otherContent, {.size = {.width = 100.0, .height = 100.0}, .scale = 2.0});
    ASSERT_TRUE(opened);
    const auto other = std::move(opened).value();
    other->show();
    ASSERT_TRUE(pumpUntil([&] {
        other->pump();
        return otherProbe->drawCount() > 0;
    }));
    EXPECT_EQ(pixelOf(other->nativeHandle(), 10, 10), kRed);
    EXPECT_EQ(pixelOf(other->nativeHandle(), 199, 199), kBlue);
    EXPECT_EQ(content->scale(), 1.0);
}

} // namespace
} // namespace platform
