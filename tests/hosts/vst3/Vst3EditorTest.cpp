// The editor as a VST3 host shows it, in a real window. Needs a display.
#include "Vst3TestHost.h"

#include "kernel/ParameterTable.h"
#include "support/LevelMemory.h"

#include <gtest/gtest.h>
#include <malloc.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <memory>
#include <thread>

// Behind the others, as they define common words.
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>

using namespace qor;
using namespace test;

namespace {

constexpr auto kTrim = static_cast<v3_param_id>(kLimiterTrim);

class Vst3Editor : public ::testing::Test {
protected:
    Vst3Editor() : display(XOpenDisplay(nullptr)), instance(std::make_unique<Vst3Instance>(host)) {}
    ~Vst3Editor() override {
        close();
        instance.reset();
        XCloseDisplay(display);
        EXPECT_TRUE(host.timers.empty());
        EXPECT_EQ(host.runLoopReferences, 0);
        EXPECT_EQ(host.messages, 0);
    }

    Window makeParent(int x = 0, unsigned width = 512, unsigned height = 392) {
        const Window made =
            XCreateSimpleWindow(display, DefaultRootWindow(display), x, 0, width, height, 0, 0, 0);
        XSetWindowAttributes attributes{};
        attributes.override_redirect = True; // no window manager is asked: it lies where it is put
        XChangeWindowAttributes(display, made, CWOverrideRedirect, &attributes);
        XMapRaised(display, made);
        XSync(display, False);
        return made;
    }
    v3_plugin_view** attach(const Vst3Instance& in, Window to, float scale = 1.0F) {
        v3_plugin_view** const made = in.createView();
        if (made == nullptr) {
            return nullptr;
        }
        v3_cpp_obj(made)->set_frame(made, host.frame());
        setScale(made, scale);
        if (attachTo(made, to) != V3_OK) {
            v3_cpp_obj_unref(made);
            return nullptr;
        }
        return made;
    }
    static void setScale(v3_plugin_view** of, float scale) {
        v3_plugin_view_content_scale** scaling = nullptr;
        ASSERT_EQ(v3_cpp_obj_query_interface(of, v3_plugin_view_content_scale_iid, &scaling), V3_OK);
        EXPECT_EQ(v3_cpp_obj(scaling)->set_content_scale_factor(scaling, scale), V3_OK);
        v3_cpp_obj_unref(scaling);
    }
    static void detach(v3_plugin_view** from) {
        EXPECT_EQ(v3_cpp_obj(from)->removed(from), V3_OK);
        v3_cpp_obj(from)->set_frame(from, nullptr);
        EXPECT_EQ(v3_cpp_obj_unref(from), 0U);
    }
    bool open(float scale = 1.0F) {
        parent = makeParent();
        view = attach(*instance, parent, scale);
        return view != nullptr &&
               pumpUntil([this] { return childOf(parent) != 0 && isShown(childOf(parent)); });
    }
    void close() {
        if (view != nullptr) {
            detach(std::exchange(view, nullptr));
            XDestroyWindow(display, std::exchange(parent, 0));
        }
    }
    /// The host's main loop, until something holds; false if it never does.
    bool pumpUntil(const std::function<bool()>& holds) {
        for (int i = 0; i < 600; ++i) {
            host.runTimers();
            if (holds()) {
                return true;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(5)); // the display's side of things
        }
        return false;
    }
    void pump(int times) {
        pumpUntil([&times] { return --times <= 0; });
    }
    void motion(int x, int y) {
        XTestFakeMotionEvent(display, -1, x, y, 0);
        XSync(display, False);
        pump(5);
    }
    void button(bool down) {
        XTestFakeButtonEvent(display, 1, down ? True : False, 0);
        XSync(display, False);
        pump(5);
    }
    /// Drags the trim knob of an editor at the display's left edge plus `left`, at scale 1.
    void dragTrim(int points, int left = 0) {
        motion(left + 83, 200);
        button(true);
        motion(left + 83, 200 - points / 2);
        motion(left + 83, 200 - points);
        button(false);
    }
    Window childOf(Window window) {
        Window root = 0;
        Window above = 0;
        Window* list = nullptr;
        unsigned count = 0;
        XQueryTree(display, window, &root, &above, &list, &count);
        const Window first = count != 0 ? list[0] : 0;
        if (list != nullptr) {
            XFree(list);
        }
        return first;
    }
    bool isShown(Window window) {
        XWindowAttributes attributes{};
        return XGetWindowAttributes(display, window, &attributes) != 0 && attributes.map_state == IsViewable;
    }
    std::pair<int, int> sizeOf(Window window) {
        XWindowAttributes attributes{};
        XGetWindowAttributes(display, window, &attributes);
        return {attributes.width, attributes.height};
    }
    std::pair<int, int> toldSize() const {
        v3_view_rect rect{};
        EXPECT_EQ(v3_cpp_obj(view)->get_size(view, &rect), V3_OK);
        return {rect.right - rect.left, rect.bottom - rect.top};
    }
    bool windowHas(std::pair<int, int> size) {
        return pumpUntil([&] { return sizeOf(childOf(parent)) == size; });
    }
    /// The brightest pixel's place in a column or row of the editor's picture is of no matter here; only
    /// whether a pixel is black.
    bool isBlack(int x, int y) {
        XImage* const image = XGetImage(display, parent, x, y, 1, 1, AllPlanes, ZPixmap);
        const bool black = (XGetPixel(image, 0, 0) & 0xFFFFFFU) == 0;
        XDestroyImage(image);
        return black;
    }

    /// The dial's pixels, at scale 1.
    std::vector<unsigned long> dial() {
        constexpr int kWidth = 210;
        constexpr int kHeight = 110;
        XImage* const image = XGetImage(display, parent, 150, 135, kWidth, kHeight, AllPlanes, ZPixmap);
        std::vector<unsigned long> pixels;
        pixels.reserve(kWidth * kHeight);
        for (int i = 0; i < kWidth * kHeight; ++i) {
            pixels.push_back(XGetPixel(image, i % kWidth, i / kWidth));
        }
        XDestroyImage(image);
        return pixels;
    }

    Display* display;
    Vst3TestHost host;
    std::unique_ptr<Vst3Instance> instance;
    Window parent = 0;
    v3_plugin_view** view = nullptr;
};

/// A gesture of one parameter: begin, values, end.
void expectGesture(const std::vector<HostEdit>& edits, v3_param_id id) {
    ASSERT_GE(edits.size(), 3U);
    for (std::size_t i = 0; i < edits.size(); ++i) {
        EXPECT_EQ(edits[i].id, id);
        EXPECT_EQ(edits[i].kind, i == 0                  ? HostEdit::begin
                                 : i + 1 == edits.size() ? HostEdit::end
                                                         : HostEdit::perform)
            << i;
    }
}

const std::vector<float> kSilence(512, 0.0F);

} // namespace

TEST_F(Vst3Editor, LiesInItsParentAtTheSizeItTold) {
    ASSERT_TRUE(open());
    EXPECT_EQ(toldSize().first, 512);
    EXPECT_TRUE(windowHas(toldSize()));
    const auto single = toldSize();
    close();
    ASSERT_TRUE(open(2.0F));
    EXPECT_EQ(toldSize(), std::pair(2 * single.first, 2 * single.second));
    EXPECT_TRUE(windowHas(toldSize()));
    EXPECT_TRUE(host.asked.empty());
}

TEST_F(Vst3Editor, ADragIsOneGestureOfTheHost) {
    ASSERT_TRUE(open());
    const double before = instance->value(kTrim);
    dragTrim(30);
    expectGesture(host.edits, kTrim);
    EXPECT_NEAR(instance->value(kTrim), before + 0.15, 0.011);
    EXPECT_EQ(host.edits[host.edits.size() - 2].value, instance->value(kTrim));
}

TEST_F(Vst3Editor, ADragIsKeptInTheStateAndHeardInTheNextBlock) {
    const std::vector<float> tone(8192, 0.25F);
    instance->activate();
    const std::vector<float> before = instance->process(tone);
    const std::vector<char> stateBefore = instance->state();
    ASSERT_TRUE(open());
    dragTrim(60);
    EXPECT_NE(instance->state(), stateBefore);
    EXPECT_GT(std::abs(instance->process(tone).back()), std::abs(before.back()) * 1.1F);
}

TEST_F(Vst3Editor, ShowsTheLevelsOfTheSound) {
    instance->activate();
    ASSERT_TRUE(open());
    pump(20);
    const auto silent = dial();
    pump(20);
    EXPECT_EQ(dial(), silent);
    instance->process(std::vector<float>(40000, 0.9F));
    EXPECT_TRUE(pumpUntil([&] { return dial() != silent; }));
}

TEST_F(Vst3Editor, FollowsAutomationWithoutTellingItBack) {
    instance->activate();
    ASSERT_TRUE(open());
    instance->process(kSilence, 256, {{kTrim, 0, 0.75}});
    pump(20);
    EXPECT_TRUE(host.edits.empty());
    dragTrim(10); // goes on from there
    EXPECT_NEAR(instance->value(kTrim), 0.80, 0.011);
}

TEST_F(Vst3Editor, FollowsChangesThatComeWithoutFrames) {
    instance->activate();
    ASSERT_TRUE(open());
    instance->flush({{kTrim, 0, 0.75}});
    pump(20);
    EXPECT_TRUE(host.edits.empty());
    dragTrim(10);
    EXPECT_NEAR(instance->value(kTrim), 0.80, 0.011);
}

TEST_F(Vst3Editor, FollowsARecalledStateWhileNoBlockComes) {
    Vst3Instance other(host);
    other.activate();
    other.process(kSilence, 256, {{kTrim, 0, 0.25}});
    const std::vector<char> saved = other.state();
    ASSERT_TRUE(open());
    ASSERT_TRUE(instance->restore(saved));
    pump(20);
    EXPECT_TRUE(host.edits.empty());
    dragTrim(10);
    EXPECT_NEAR(instance->value(kTrim), 0.30, 0.011);
}

TEST_F(Vst3Editor, OldValuesThatTheHostPlaysBackDoNotPullAHeldKnob) {
    instance->activate();
    ASSERT_TRUE(open());
    motion(83, 200);
    button(true);
    motion(83, 170);
    const std::vector<char> held = instance->state();
    instance->process(kSilence, 256, {{kTrim, 0, 0.1}});
    pump(10);
    EXPECT_EQ(instance->state(), held);
    button(false);
    expectGesture(host.edits, kTrim);
}

TEST_F(Vst3Editor, TakesTheSizesThatTheHostGives) {
    ASSERT_TRUE(open());
    const auto single = toldSize();
    v3_view_rect rect{0, 0, 768, single.second * 3 / 2};
    XResizeWindow(display, parent, 768, static_cast<unsigned>(rect.bottom));
    ASSERT_EQ(v3_cpp_obj(view)->on_size(view, &rect), V3_OK);
    EXPECT_TRUE(windowHas({768, rect.bottom}));
    EXPECT_EQ(toldSize(), std::pair(768, rect.bottom));
    // A size of another shape: bars beside the panel.
    rect = {0, 0, 900, single.second};
    XResizeWindow(display, parent, 900, static_cast<unsigned>(rect.bottom));
    ASSERT_EQ(v3_cpp_obj(view)->on_size(view, &rect), V3_OK);
    EXPECT_TRUE(windowHas({900, single.second}));
    EXPECT_TRUE(
        pumpUntil([&] { return isBlack(5, 200) && isBlack(895, 200) && !isBlack(450, single.second - 3); }));
    rect = {0, 0, 0, 100};
    EXPECT_NE(v3_cpp_obj(view)->on_size(view, &rect), V3_OK);
    EXPECT_TRUE(host.asked.empty());
}

TEST_F(Vst3Editor, AsksForAnotherSizeWhenItsScaleChanges) {
    ASSERT_TRUE(open());
    const auto single = toldSize();
    setScale(view, 1.5F);
    ASSERT_EQ(host.asked.size(), 1U);
    EXPECT_EQ(host.asked.back().right, 768);
    EXPECT_EQ(toldSize(), std::pair(768, single.second * 3 / 2));
    EXPECT_TRUE(windowHas(toldSize()));
    host.allowsResizing = false;
    setScale(view, 1.0F);
    EXPECT_EQ(host.asked.size(), 2U);
    EXPECT_EQ(toldSize(), std::pair(768, single.second * 3 / 2)); // as the host left it
    EXPECT_TRUE(windowHas(toldSize()));
}

TEST_F(Vst3Editor, LeavesTheKeyboardAlone) {
    ASSERT_TRUE(open());
    const Window other = makeParent(600, 100, 100);
    XSetInputFocus(display, other, RevertToParent, CurrentTime);
    dragTrim(10);
    Window focus = 0;
    int revert = 0;
    XGetInputFocus(display, &focus, &revert);
    EXPECT_EQ(focus, other);
    EXPECT_NE(v3_cpp_obj(view)->on_key_down(view, ' ', 7, 0), V3_TRUE);
    EXPECT_NE(v3_cpp_obj(view)->on_wheel(view, 1.0F), V3_TRUE);
    XDestroyWindow(display, other);
}

TEST_F(Vst3Editor, TwoInstancesHaveEditorsOfTheirOwn) {
    ASSERT_TRUE(open());
    const auto second = std::make_unique<Vst3Instance>(host);
    const Window beside = makeParent(600);
    v3_plugin_view** const other = attach(*second, beside);
    ASSERT_NE(other, nullptr);
    ASSERT_TRUE(pumpUntil([&] { return childOf(beside) != 0 && isShown(childOf(beside)); }));
    const double before = instance->value(kTrim);
    dragTrim(20, 600);
    EXPECT_EQ(instance->value(kTrim), before);
    EXPECT_NEAR(second->value(kTrim), before + 0.1, 0.011);
    dragTrim(-20);
    EXPECT_NEAR(instance->value(kTrim), before - 0.1, 0.011);
    EXPECT_NEAR(second->value(kTrim), before + 0.1, 0.011);
    detach(other);
    XDestroyWindow(display, beside);
}

TEST_F(Vst3Editor, OutlivesItsInstanceAndItsParent) {
    ASSERT_TRUE(open());
    motion(83, 200);
    button(true);
    instance.reset(); // in the middle of a drag
    pump(5);
    button(false);
    v3_view_rect rect{0, 0, 100, 100};
    EXPECT_NE(v3_cpp_obj(view)->get_size(view, &rect), V3_OK);
    EXPECT_NE(v3_cpp_obj(view)->on_size(view, &rect), V3_OK);
    EXPECT_EQ(childOf(parent), 0U);
    close();
    instance = std::make_unique<Vst3Instance>(host);
    ASSERT_TRUE(open());
    XDestroyWindow(display, parent);
    XSync(display, False);
    pump(10);
    EXPECT_EQ(v3_cpp_obj(view)->removed(view), V3_OK);
    EXPECT_NE(v3_cpp_obj(view)->removed(view), V3_OK);
    v3_cpp_obj_unref(std::exchange(view, nullptr));
}

TEST_F(Vst3Editor, HasOneViewAtATimeAndTheNewestOneHasTheHostsEar) {
    v3_plugin_view** const first = instance->createView();
    v3_plugin_view** const second = instance->createView(); // the first one is not shown
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(v3_cpp_obj_unref(second), 0U);
    EXPECT_EQ(v3_cpp_obj_unref(first), 0U);
    ASSERT_TRUE(open());
    EXPECT_EQ(instance->createView(), nullptr);
    EXPECT_NE(attachTo(view, parent), V3_OK);
    dragTrim(10);
    expectGesture(host.edits, kTrim);
}

TEST_F(Vst3Editor, RefusesAParentThatIsNotThere) {
    EXPECT_EQ(attach(*instance, 0x7FFFFFF0), nullptr);
    ASSERT_TRUE(open());
}

TEST_F(Vst3Editor, WorksWithoutMessagesOfTheHost) {
    host.offersMessages = false;
    ASSERT_TRUE(open());
    dragTrim(10);
    expectGesture(host.edits, kTrim);
}

TEST_F(Vst3Editor, MovesByItselfWhereTheHostHasNoRunLoop) {
    host.offersRunLoop = false;
    ASSERT_TRUE(open()); // shown and drawn by the service thread
    EXPECT_TRUE(host.timers.empty());
    const double before = instance->value(kTrim);
    dragTrim(30);
    EXPECT_TRUE(pumpUntil([&] { return instance->value(kTrim) > before + 0.1; }));
    pump(20);
    close(); // from here on nobody else writes to the host's list
    expectGesture(host.edits, kTrim);
}

TEST_F(Vst3Editor, TakesTheRunLoopOfAFrameThatComesLate) {
    parent = makeParent();
    view = instance->createView();
    ASSERT_NE(view, nullptr);
    setScale(view, 1.0F);
    ASSERT_EQ(attachTo(view, parent), V3_OK);
    EXPECT_TRUE(host.timers.empty());
    v3_cpp_obj(view)->set_frame(view, host.frame());
    EXPECT_EQ(host.timers.size(), 1U);
    ASSERT_TRUE(pumpUntil([this] { return childOf(parent) != 0 && isShown(childOf(parent)); }));
    dragTrim(10);
    expectGesture(host.edits, kTrim);
    v3_cpp_obj(view)->set_frame(view, nullptr);
    EXPECT_TRUE(host.timers.empty());
}

// QOR_OPENINGS makes it longer.
TEST_F(Vst3Editor, OpenedAndClosedOftenItLeavesTheMemoryLevel) {
    const char* const wanted = std::getenv("QOR_OPENINGS"); // NOLINT(concurrency-mt-unsafe)
    const int openings = wanted != nullptr ? std::atoi(wanted) : 1000;
    instance->activate();
    const auto openAndClose = [&](int times) {
        for (int i = 0; i < times; ++i) {
            parent = makeParent();
            view = attach(*instance, parent);
            ASSERT_NE(view, nullptr) << i;
            host.runTimers();
            instance->process(kSilence);
            host.runTimers();
            close();
            ASSERT_TRUE(host.timers.empty());
        }
    };
    openAndClose(50);
    // Less than a hundred bytes an opening: what Xlib itself keeps for a display's input method.
    constexpr int kRounds = 4;
    const int times = openings / kRounds;
    const auto level = ::test::staysLevel(
        static_cast<std::size_t>(times) * 100, [&] { openAndClose(times); }, kRounds);
    EXPECT_TRUE(level);
    std::printf("rounds of %d openings: %s\n", times, level.message());
}
