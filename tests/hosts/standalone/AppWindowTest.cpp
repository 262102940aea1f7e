// The program with its window, seen from outside.
#include "AppProcess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace {

using test::AppProcess;
using testing::HasSubstr;

class AppWindow : public testing::Test {
protected:
    void SetUp() override {
        display_ = XOpenDisplay(nullptr);
        ASSERT_NE(display_, nullptr) << "these tests need a display; tests/support/with-xvfb.sh gives one";
        XSelectInput(display_, DefaultRootWindow(display_), SubstructureNotifyMask);
    }
    void TearDown() override {
        if (display_ != nullptr) {
            XCloseDisplay(display_);
        }
    }

    /// Waits for a window of the program to be mapped; 0 if the program ends instead.
    Window waitForWindow(const AppProcess& process) {
        for (int i = 0; i < 3000; ++i) {
            while (XPending(display_) > 0) {
                XEvent event{};
                XNextEvent(display_, &event);
                if (event.type == MapNotify) {
                    return event.xmap.window;
                }
            }
            siginfo_t ended{};
            ::waitid(P_PID, static_cast<id_t>(process.id()), &ended, WEXITED | WNOHANG | WNOWAIT);
            if (ended.si_pid != 0) {
                return 0;
            }
            ::usleep(5000);
        }
        return 0;
    }
    std::string titleOf(Window window) {
        char* name = nullptr;
        if (XFetchName(display_, window, &name) == 0) {
            return {};
        }
        std::string title = name;
        XFree(name);
        return title;
    }
    /// Waits until it is so, for some seconds at most.
    template <class F>
    static bool eventually(const F& condition) {
        for (int i = 0; i < 2000 && !condition(); ++i) {
            ::usleep(5000);
        }
        return condition();
    }
    XWindowAttributes attributesOf(Window window) {
        XWindowAttributes attributes{};
        XGetWindowAttributes(display_, window, &attributes);
        return attributes;
    }
    std::size_t colorsIn(Window window) {
        const XWindowAttributes attributes = attributesOf(window);
        XImage* image = XGetImage(display_, window, 0, 0, static_cast<unsigned>(attributes.width),
                                  static_cast<unsigned>(attributes.height), AllPlanes, ZPixmap);
        if (image == nullptr) {
            return 0;
        }
        std::vector<unsigned long> found;
        for (int y = 0; y < attributes.height; ++y) {
            for (int x = 0; x < attributes.width; ++x) {
                found.push_back(XGetPixel(image, x, y));
            }
        }
        XDestroyImage(image);
        std::sort(found.begin(), found.end());
        return static_cast<std::size_t>(std::unique(found.begin(), found.end()) - found.begin());
    }
    void askToClose(Window window) {
        XEvent event{};
        event.xclient.type = ClientMessage;
        event.xclient.window = window;
        event.xclient.message_type = XInternAtom(display_, "WM_PROTOCOLS", False);
        event.xclient.format = 32;
        event.xclient.data.l[0] = static_cast<long>(XInternAtom(display_, "WM_DELETE_WINDOW", False));
        XSendEvent(display_, window, False, 0, &event);
        XSync(display_, False);
    }

    Display* display_ = nullptr;
    test::TemporaryDirectory home_;
};

TEST_F(AppWindow, ShowsTheEditorAndEndsInGoodOrderOnSigterm) {
    AppProcess process({"--backend", "none", "--scale", "1"}, home_);
    const Window window = waitForWindow(process);
    ASSERT_NE(window, 0U) << process.errors();
    EXPECT_TRUE(eventually([&] { return titleOf(window) == "QOR Limiter (no sound)"; }));
    EXPECT_TRUE(eventually([&] { return colorsIn(window) > 20; })) << "the panel has many colours";
    process.signal(SIGTERM);
    EXPECT_EQ(process.wait(), 0);
    EXPECT_EQ(process.errors(), "");
    EXPECT_TRUE(std::filesystem::exists(home_.file("state/qor-limiter/app-state.plist")));
}

TEST_F(AppWindow, HasTheScaleThatItIsGiven) {
    AppProcess process({"--backend", "none", "--scale", "1"}, home_);
    const int width = attributesOf(waitForWindow(process)).width;
    process.signal(SIGINT);
    EXPECT_EQ(process.wait(), 0);
    AppProcess again({"--backend", "none", "--scale", "2"}, home_);
    EXPECT_EQ(attributesOf(waitForWindow(again)).width, 2 * width);
    again.signal(SIGINT);
    EXPECT_EQ(again.wait(), 0);
}

TEST_F(AppWindow, RemembersItsSize) {
    int height = 0;
    {
        AppProcess process({"--backend", "none", "--scale", "1"}, home_);
        const Window window = waitForWindow(process);
        ASSERT_NE(window, 0U) << process.errors();
        const XWindowAttributes first = attributesOf(window);
        height = first.height * 3 / 2;
        XResizeWindow(display_, window, static_cast<unsigned>(first.width * 3 / 2),
                      static_cast<unsigned>(height));
        XSync(display_, False);
        askToClose(window);
        EXPECT_EQ(process.wait(), 0);
    }
    AppProcess process({"--backend", "none", "--scale", "1"}, home_);
    const Window window = waitForWindow(process);
    EXPECT_TRUE(eventually([&] { return std::abs(attributesOf(window).height - height) <= 1; }));
    process.signal(SIGTERM);
    EXPECT_EQ(process.wait(), 0);
}

TEST_F(AppWindow, WorksWithoutAnySoundAndSaysSo) {
    AppProcess process({"--backend", "jack"}, home_);
    const Window window = waitForWindow(process);
    ASSERT_NE(window, 0U) << process.errors();
    EXPECT_TRUE(eventually([&] { return !process.errors().empty(); }));
    EXPECT_EQ(process.errors(),
              "qor-limiter-app: no JACK server is running. Start jackd or PipeWire. The editor works "
              "without sound.\n");
    askToClose(window);
    EXPECT_EQ(process.wait(), 0);
}

TEST_F(AppWindow, EndsWithOneWhenItsConnectionIsLost) {
    AppProcess process({"--backend", "none"}, home_);
    const Window window = waitForWindow(process);
    ASSERT_NE(window, 0U) << process.errors();
    XKillClient(display_, window);
    XSync(display_, False);
    EXPECT_EQ(process.wait(), 1);
    EXPECT_THAT(process.errors(), HasSubstr("the connection with the display is lost."));
    EXPECT_TRUE(std::filesystem::exists(home_.file("state/qor-limiter/app-state.plist")));
}

} // namespace
