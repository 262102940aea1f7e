// The editor as an LV2 host shows it, in a real window. Needs a display.
#include "hosts/lv2/Lv2Ports.h"
#include "support/CapturedLog.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <lv2/ui/ui.h>

#include <chrono>
#include <limits>
#include <string>
#include <thread>
#include <vector>

// Behind the others, as they define common words.
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>

using namespace qor;
using namespace qor::lv2;

namespace {

const LV2UI_Descriptor* descriptor() {
    static void* object = dlopen(QOR_LV2_UI_OBJECT, RTLD_NOW | RTLD_LOCAL);
    static const auto entry = reinterpret_cast<LV2UI_DescriptorFunction>(
        object == nullptr ? nullptr : dlsym(object, "lv2ui_descriptor"));
    return entry == nullptr ? nullptr : entry(0);
}

class Lv2Ui : public ::testing::Test {
protected:
    Lv2Ui() : display(XOpenDisplay(nullptr)) {}
    ~Lv2Ui() override {
        close();
        XCloseDisplay(display);
    }

    Window makeParent() {
        const Window made = XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, 512, 392, 0, 0, 0);
        XSetWindowAttributes attributes{};
        attributes.override_redirect = True; // no window manager is asked: it lies at 0, 0
        XChangeWindowAttributes(display, made, CWOverrideRedirect, &attributes);
        XMapRaised(display, made);
        XSync(display, False);
        return made;
    }
    bool open(Window in) {
        const LV2UI_Write_Function write = [](LV2UI_Controller self, std::uint32_t port, std::uint32_t size,
                                              std::uint32_t format, const void* value) {
            EXPECT_EQ(size, sizeof(float));
            EXPECT_EQ(format, 0U);
            static_cast<Lv2Ui*>(self)->written.emplace_back(port, *static_cast<const float*>(value));
        };
        LV2UI_Touch touch{this, [](LV2UI_Feature_Handle self, std::uint32_t port, bool grabbed) {
                              static_cast<Lv2Ui*>(self)->touched.emplace_back(port, grabbed);
                          }};
        touchFeature = touch;
        const LV2UI_Resize resize{this, [](LV2UI_Feature_Handle self, int width, int height) {
                                      static_cast<Lv2Ui*>(self)->asked = {width, height};
                                      return 0;
                                  }};
        const LV2_Feature parentFeature{LV2_UI__parent, reinterpret_cast<void*>(in)};
        const LV2_Feature touchEntry{LV2_UI__touch, &touchFeature};
        const LV2_Feature resizeEntry{LV2_UI__resize, const_cast<LV2UI_Resize*>(&resize)};
        const LV2_Feature* const features[] = {&parentFeature, &touchEntry, &resizeEntry, nullptr};
        handle = descriptor()->instantiate(descriptor(), kPluginUri, "/", write, this, &widget, features);
        return handle != nullptr;
    }
    void close() {
        if (handle != nullptr) {
            descriptor()->cleanup(handle);
            handle = nullptr;
        }
    }
    void idle(int times) {
        const auto* interface =
            static_cast<const LV2UI_Idle_Interface*>(descriptor()->extension_data(LV2_UI__idleInterface));
        for (int i = 0; i < times; ++i) {
            interface->idle(handle);
            std::this_thread::sleep_for(std::chrono::milliseconds(5)); // the display's side of things
        }
    }
    void motion(int x, int y) {
        XTestFakeMotionEvent(display, -1, x, y, 0);
        XSync(display, False);
        idle(6);
    }
    void button(bool down) {
        XTestFakeButtonEvent(display, 1, down ? True : False, 0);
        XSync(display, False);
        idle(6);
    }
    void port(std::uint32_t index, float value) {
        descriptor()->port_event(handle, index, sizeof value, 0, &value);
    }

    test::CapturedLog log;
    Display* display;
    LV2UI_Handle handle = nullptr;
    LV2UI_Widget widget = nullptr;
    LV2UI_Touch touchFeature{};
    std::vector<std::pair<std::uint32_t, float>> written;
    std::vector<std::pair<std::uint32_t, bool>> touched;
    std::pair<int, int> asked;
};

} // namespace

TEST_F(Lv2Ui, OpensInItsParentAndAsksForItsSize) {
    ASSERT_NE(descriptor(), nullptr);
    EXPECT_STREQ(descriptor()->URI, kUiUri);
    ASSERT_TRUE(open(makeParent()));
    EXPECT_NE(widget, nullptr);
    EXPECT_EQ(asked.first, 512);
    EXPECT_GT(asked.second, 340);
}

TEST_F(Lv2Ui, ADragWritesThePortWithinATouch) {
    ASSERT_TRUE(open(makeParent()));
    idle(30);
    constexpr std::uint32_t kTrimPort = kFirstParameter + kLimiterTrim;
    motion(83, 200);
    button(true);
    motion(83, 185);
    motion(83, 170);
    button(false);
    ASSERT_FALSE(written.empty());
    for (const auto& [index, value] : written) {
        EXPECT_EQ(index, kTrimPort);
    }
    EXPECT_GT(written.back().second, 0.6F);
    EXPECT_EQ(touched, (std::vector<std::pair<std::uint32_t, bool>>{{kTrimPort, true}, {kTrimPort, false}}));
}

TEST_F(Lv2Ui, FollowsItsPortsWithoutWritingBack) {
    ASSERT_TRUE(open(makeParent()));
    for (std::uint32_t index = 0; index < kPortCount + 3; ++index) {
        port(index, 0.75F);
    }
    port(kFirstParameter, std::numeric_limits<float>::quiet_NaN());
    idle(20);
    EXPECT_TRUE(written.empty());
    // The knob has moved: a drag goes on from the port's value.
    motion(83, 200);
    button(true);
    motion(83, 190);
    button(false);
    ASSERT_FALSE(written.empty());
    EXPECT_NEAR(written.back().second, 0.80F, 0.011F);
}

TEST_F(Lv2Ui, OpensAgainAndAgain) {
    for (int i = 0; i < 10; ++i) {
        const Window parent = makeParent();
        ASSERT_TRUE(open(parent)) << i;
        idle(2);
        close();
        XDestroyWindow(display, parent);
    }
}

TEST_F(Lv2Ui, RefusesAnotherPluginAndAParentThatIsNotThere) {
    EXPECT_EQ(descriptor()->instantiate(descriptor(), "urn:other", "/", nullptr, nullptr, &widget, nullptr),
              nullptr);
    EXPECT_FALSE(open(0x7FFFFFF0));
    EXPECT_EQ(descriptor()->extension_data("urn:nothing"), nullptr);
}
