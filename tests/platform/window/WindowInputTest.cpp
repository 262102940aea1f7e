// How input reaches the views.
#include <gmock/gmock.h>

#include "DisplayFixture.h"

namespace platform {
namespace {

using ::testing::ElementsAre;

class WindowInputTest : public DisplayTest {
protected:
    std::vector<std::string> phases() const {
        std::vector<std::string> found;
        for (const ProbeView::Touch& touch : probe->touches) {
            found.push_back(touch.phase);
        }
        return found;
    }
};

TEST_F(WindowInputTest, TakesTheLeftButtonForAFinger) {
    open({.size = {.width = 300.0, .height = 200.0}, .scale = 1.0});
    moveTo(20, 30);
    moveTo(25, 30);
    button(1, true);
    moveTo(40, 60);
    button(1, false);
    moveTo(50, 60);
    ASSERT_TRUE(pumpUntil([&] { return probe->touches.size() >= 3; }));
    settle();
    ASSERT_THAT(phases(), ElementsAre("began", "moved", "ended"));
    EXPECT_EQ(probe->touches[0].at, (CGPoint{25.0, 30.0}));
    EXPECT_EQ(probe->touches[1].at, (CGPoint{40.0, 60.0}));
    EXPECT_EQ(probe->touches[2].at, (CGPoint{40.0, 60.0}));
}

TEST_F(WindowInputTest, CountsPointsNotPixels) {
    open({.size = {.width = 300.0, .height = 200.0}, .scale = 2.0});
    moveTo(41, 60);
    button(1, true);
    button(1, false);
    ASSERT_TRUE(pumpUntil([&] { return probe->touches.size() >= 2; }));
    EXPECT_EQ(probe->touches[0].at, (CGPoint{20.5, 30.0}));
}

TEST_F(WindowInputTest, FollowsADragBeyondItsEdges) {
    open({.size = {.width = 300.0, .height = 200.0}, .scale = 1.0});
    moveTo(20, 30);
    button(1, true);
    moveTo(-100, 300);
    button(1, false);
    ASSERT_TRUE(pumpUntil([&] { return probe->touches.size() >= 3; }));
    ASSERT_THAT(phases(), ElementsAre("began", "moved", "ended"));
    EXPECT_EQ(probe->touches[1].at, (CGPoint{-100.0, 300.0}));
}

TEST_F(WindowInputTest, LeavesOtherButtonsAlone) {
    open({.size = {.width = 300.0, .height = 200.0}, .scale = 1.0});
    moveTo(20, 30);
    for (const unsigned number : {2U, 3U, 8U, 9U}) {
        button(number, true);
        moveTo(60, 30 + static_cast<int>(number));
        button(number, false);
    }
    settle();
    EXPECT_TRUE(probe->touches.empty());
}

TEST_F(WindowInputTest, LeavesTwoQuickPressesToTheDoubleClickOfTheViews) {
    open({.size = {.width = 300.0, .height = 200.0}, .scale = 1.0});
    moveTo(20, 30);
    for (int i = 0; i < 2; ++i) {
        button(1, true);
        button(1, false);
    }
    ASSERT_TRUE(pumpUntil([&] { return probe->touches.size() >= 4; }));
    EXPECT_EQ(probe->touches[0].tapCount, 1);
    EXPECT_EQ(probe->touches[2].tapCount, 2);
}

TEST_F(WindowInputTest, GivesTheWheelWithItsModifiers) {
    open({.size = {.width = 300.0, .height = 200.0}, .scale = 2.0});
    moveTo(40, 60);
    button(4, true);
    button(4, false);
    const auto control = XKeysymToKeycode(display, XK_Control_L);
    XTestFakeKeyEvent(display, control, True, CurrentTime);
    button(5, true);
    button(5, false);
    XTestFakeKeyEvent(display, control, False, CurrentTime);
    XSync(display, False);
    ASSERT_TRUE(pumpUntil([&] { return probe->wheels.size() >= 2; }));
    EXPECT_EQ(probe->wheels[0].deltaY, 1.0);
    EXPECT_EQ(probe->wheels[0].locationInWindow, (CGPoint{20.0, 30.0}));
    EXPECT_FALSE(probe->wheels[0].has(UIKeyModifierControl));
    EXPECT_EQ(probe->wheels[1].deltaY, -1.0);
    EXPECT_TRUE(probe->wheels[1].has(UIKeyModifierControl));
    EXPECT_TRUE(probe->touches.empty());
}

TEST_F(WindowInputTest, GivesKeysAndTextOnceEach) {
    probe->focusable = true;
    open({.size = {.width = 300.0, .height = 200.0}, .scale = 1.0});
    XSetInputFocus(display, window->nativeHandle(), RevertToPointerRoot, CurrentTime);
    press(XK_a);
    press(XK_a, XK_Shift_L);
    press(XK_5);
    press(XK_Return);
    press(XK_BackSpace);
    press(XK_Left);
    press(XK_Escape);
    ASSERT_TRUE(pumpUntil([&] { return probe->keys.size() >= 7; }));
    settle();
    ASSERT_EQ(probe->keys.size(), 7U);
    EXPECT_EQ(probe->keys[0].text, "a");
    EXPECT_EQ(probe->keys[1].text, "A");
    EXPECT_TRUE(probe->keys[1].has(UIKeyModifierShift));
    EXPECT_EQ(probe->keys[2].text, "5");
    EXPECT_EQ(probe->keys[3].key, UIKey::enter);
    EXPECT_EQ(probe->keys[4].key, UIKey::backspace);
    EXPECT_EQ(probe->keys[5].key, UIKey::left);
    EXPECT_EQ(probe->keys[6].key, UIKey::escape);
}

TEST_F(WindowInputTest, EndsADragWhenTheWindowGoes) {
    open({.size = {.width = 300.0, .height = 200.0}, .scale = 1.0});
    moveTo(20, 30);
    button(1, true);
    ASSERT_TRUE(pumpUntil([&] { return probe->touches.size() == 1; }));
    window->hide();
    ASSERT_TRUE(pumpUntil([&] { return probe->touches.size() == 2; }));
    EXPECT_EQ(probe->touches[1].phase, "cancelled");
    button(1, false);
}

TEST_F(WindowInputTest, EndsADragWhenTheWindowIsDestroyed) {
    open({.size = {.width = 300.0, .height = 200.0}, .scale = 1.0});
    moveTo(20, 30);
    button(1, true);
    ASSERT_TRUE(pumpUntil([&] { return probe->touches.size() == 1; }));
    window.reset();
    ASSERT_EQ(probe->touches.size(), 2U);
    EXPECT_EQ(probe->touches[1].phase, "cancelled");
    button(1, false);
}

} // namespace
} // namespace platform
