// The editor as an LV2 host shows it, in a real window. Needs a display.
#include "Lv2UiHost.h"

#include <algorithm>
#include <limits>

using namespace qor;
using namespace qor::lv2;

namespace {

constexpr std::uint32_t kTrimPort = kFirstParameter + kLimiterTrim;
constexpr std::uint32_t kAttackPort = kFirstParameter + kLimiterAttack;

class Lv2Ui : public test::UiTest {
protected:
    bool open(Window in) { return ui.open(in); }
    void idle(int times) { ui.idle(times); }
    void motion(int x, int y) {
        moveTo(x, y);
        idle(6);
    }
    void press(bool down) {
        button(1, down);
        idle(6);
    }
    /// One step of the wheel, upwards.
    void wheel() {
        button(4, true);
        button(4, false);
    }

    test::UiHost ui;
};

} // namespace

TEST_F(Lv2Ui, OpensInItsParentAndAsksForItsSize) {
    ASSERT_NE(test::uiDescriptor(), nullptr);
    EXPECT_STREQ(test::uiDescriptor()->URI, kUiUri);
    ASSERT_TRUE(open(makeParent()));
    EXPECT_NE(ui.window(), 0U);
    EXPECT_EQ(ui.asked, (std::pair<int, int>{512, 392}));
}

TEST_F(Lv2Ui, HasTheScaleOfTheHostsOptionsFromItsFirstPictureOn) {
    for (const auto& [scale, size] : {std::pair{2.0F, std::pair{1024, 784}}, {1.5F, {768, 588}}}) {
        ASSERT_TRUE(ui.open(makeParent(), scale));
        EXPECT_EQ(ui.asked, size);
        XWindowAttributes attributes{};
        XGetWindowAttributes(display, ui.window(), &attributes);
        EXPECT_EQ((std::pair{attributes.width, attributes.height}), size);
        ui.close();
    }
    // No scale of any use: the desktop's.
    for (const float scale : {-1.0F, 100.0F, std::numeric_limits<float>::quiet_NaN()}) {
        ASSERT_TRUE(ui.open(makeParent(), scale));
        EXPECT_EQ(ui.asked, (std::pair{512, 392})) << scale;
        ui.close();
    }
}

TEST_F(Lv2Ui, AKnobIsDraggedInPointsAtEveryScale) {
    ASSERT_TRUE(ui.open(makeParent(), 2.0F));
    idle(30);
    motion(2 * 84, 2 * 93);
    press(true);
    motion(2 * 84, 2 * 83);
    motion(2 * 84, 2 * 73);
    press(false);
    ASSERT_FALSE(ui.written.empty());
    EXPECT_EQ(ui.written.back().first, kAttackPort);
    EXPECT_NEAR(ui.written.back().second, 0.2F, 1e-5F) << "twenty points are a tenth of the range";
}

TEST_F(Lv2Ui, ADragWritesThePortWithinATouch) {
    ASSERT_TRUE(open(makeParent()));
    idle(30);
    motion(83, 200);
    press(true);
    motion(83, 185);
    motion(83, 170);
    press(false);
    ASSERT_FALSE(ui.written.empty());
    for (const auto& [index, value] : ui.written) {
        EXPECT_EQ(index, kTrimPort);
    }
    EXPECT_GT(ui.written.back().second, 0.6F);
    EXPECT_EQ(ui.touched,
              (std::vector<std::pair<std::uint32_t, bool>>{{kTrimPort, true}, {kTrimPort, false}}));
}

TEST_F(Lv2Ui, FollowsItsPortsWithoutWritingBack) {
    ASSERT_TRUE(open(makeParent()));
    for (std::uint32_t index = 0; index < kPortCount + 3; ++index) {
        ui.port(index, 0.75F);
    }
    ui.port(kFirstParameter, std::numeric_limits<float>::quiet_NaN());
    idle(20);
    EXPECT_TRUE(ui.written.empty());
    // The knob has moved: a drag goes on from the port's value.
    motion(83, 200);
    press(true);
    motion(83, 190);
    press(false);
    ASSERT_FALSE(ui.written.empty());
    EXPECT_NEAR(ui.written.back().second, 0.80F, 0.011F);
}

TEST_F(Lv2Ui, AutomationMovesTheKnobsOnTheScreenWhileAnotherIsHeld) {
    ASSERT_TRUE(open(makeParent()));
    idle(30);
    motion(83, 200);
    press(true);
    motion(83, 195);
    ui.written.clear();
    auto shown = picture(ui.window());
    for (int step = 1; step <= 10; ++step) {
        ui.port(kAttackPort, 0.1F + 0.08F * static_cast<float>(step));
        idle(8);
        const auto now = picture(ui.window());
        ASSERT_EQ(now.size(), 512U * 392U);
        EXPECT_NE(now, shown) << step;
        // Nothing but that knob has moved: it lies in the upper left corner.
        for (std::size_t i = 0; i < now.size(); ++i) {
            ASSERT_TRUE(now[i] == shown[i] || (i % 512 < 130 && i / 512 < 145)) << step << ": " << i;
        }
        shown = now;
    }
    EXPECT_TRUE(ui.written.empty()) << "what the host sets is never written back";
    motion(83, 185);
    press(false);
    ASSERT_FALSE(ui.written.empty());
    for (const auto& [index, value] : ui.written) {
        EXPECT_EQ(index, kTrimPort);
    }
}

TEST_F(Lv2Ui, TwoEditorsAtOnceGoTheirOwnWays) {
    ASSERT_TRUE(open(makeParent()));
    test::UiHost other;
    ASSERT_TRUE(other.open(makeParent(600, 0)));
    const auto both = [&](int times) {
        for (int i = 0; i < times; ++i) {
            ui.idle(1);
            other.idle(1);
        }
    };
    both(30);
    const auto before = picture(other.window());
    ui.port(kAttackPort, 0.9F);
    ui.port(kFirstMeter, 0.3F);
    both(20);
    EXPECT_EQ(picture(other.window()), before);
    EXPECT_NE(picture(ui.window()), before);
    moveTo(600 + 84, 93);
    wheel();
    both(10);
    EXPECT_EQ(other.written.size(), 1U);
    EXPECT_NEAR(other.written.front().second, 0.11F, 1e-6F);
    EXPECT_TRUE(ui.written.empty());
    moveTo(84, 93);
    wheel();
    both(10);
    ASSERT_EQ(ui.written.size(), 1U);
    EXPECT_NEAR(ui.written.front().second, 0.91F, 1e-6F);
    other.close();
    wheel();
    idle(10);
    EXPECT_EQ(ui.written.size(), 2U) << "the one works on without the other";
}

TEST_F(Lv2Ui, OpensAgainAndAgain) {
    for (int i = 0; i < 10; ++i) {
        const Window parent = makeParent();
        ASSERT_TRUE(open(parent)) << i;
        idle(2);
        ui.close();
        XDestroyWindow(display, parent);
    }
}

TEST_F(Lv2Ui, RefusesAnotherPluginAndAParentThatIsNotThere) {
    const auto* descriptor = test::uiDescriptor();
    LV2UI_Widget widget = nullptr;
    EXPECT_EQ(descriptor->instantiate(descriptor, "urn:other", "/", nullptr, nullptr, &widget, nullptr),
              nullptr);
    EXPECT_FALSE(open(0x7FFFFFF0));
    EXPECT_EQ(descriptor->extension_data("urn:nothing"), nullptr);
}
