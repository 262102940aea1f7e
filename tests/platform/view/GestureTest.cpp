#include "platform/view/HeadlessWindow.h"
#include "platform/view/View.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

using namespace platform; // NOLINT(google-build-using-namespace): the library under test

namespace {

using State = UIGestureRecognizerState;

/// Writes down what it sees.
class Witness : public UIView {
public:
    using UIView::UIView;
    std::vector<std::string> seen;
    bool lets = true;

    void touchesBegan(const UITouchSet& /*touches*/, UIEvent* /*event*/) override {
        seen.emplace_back("began");
    }
    void touchesMoved(const UITouchSet& /*touches*/, UIEvent* /*event*/) override {
        seen.emplace_back("moved");
    }
    void touchesEnded(const UITouchSet& /*touches*/, UIEvent* /*event*/) override {
        seen.emplace_back("ended");
    }
    void touchesCancelled(const UITouchSet& /*touches*/, UIEvent* /*event*/) override {
        seen.emplace_back("cancelled");
    }
    bool gestureRecognizerShouldBegin(const UIGestureRecognizer& /*recognizer*/) const override {
        return lets;
    }
};

template <class Recognizer>
class Gesture : public testing::Test {
protected:
    Gesture() {
        root->addSubview(view);
        headless.show(root);
        root->addGestureRecognizer(recognizer);
        recognizer->cancelsTouchesInView = false;
        recognizer->addAction([this](UIGestureRecognizer& sender) {
            EXPECT_EQ(&sender, recognizer.get());
            states.push_back(static_cast<int>(sender.state()));
        });
    }
    HeadlessWindow headless{{.width = 200.0, .height = 200.0}};
    Ref<UIView> root = makeRef<UIView>();
    Ref<Witness> view = makeRef<Witness>(CGRectMake(0.0, 0.0, 100.0, 100.0));
    Ref<Recognizer> recognizer = makeRef<Recognizer>();
    std::vector<int> states;
};

using Pan = Gesture<UIPanGestureRecognizer>;
using Pinch = Gesture<UIPinchGestureRecognizer>;
using Tap = Gesture<UITapGestureRecognizer>;
using LongPress = Gesture<UILongPressGestureRecognizer>;

} // namespace

TEST(UIGestureRecognizerState, HasThePlatformsNumbers) {
    EXPECT_EQ(static_cast<int>(State::began), 1);
    EXPECT_EQ(static_cast<int>(State::changed), 2);
    EXPECT_EQ(static_cast<int>(State::ended), 3);
    EXPECT_EQ(static_cast<int>(State::cancelled), 4);
}

TEST_F(Pan, BeginsChangesAndEndsWithItsTranslation) {
    headless.down({.x = 10.0, .y = 10.0});
    headless.move({.x = 14.0, .y = 10.0});
    EXPECT_TRUE(states.empty());
    headless.move({.x = 30.0, .y = 15.0});
    EXPECT_EQ(states, (std::vector<int>{1, 2}));
    EXPECT_EQ(recognizer->translationInView(root.get()), (CGPoint{.x = 20.0, .y = 5.0}));
    headless.move({.x = 40.0, .y = 15.0});
    headless.up({.x = 40.0, .y = 15.0});
    EXPECT_EQ(states, (std::vector<int>{1, 2, 2, 3}));
    EXPECT_EQ(recognizer->state(), State::possible);
    EXPECT_EQ(view->seen, (std::vector<std::string>{"began", "moved", "moved", "moved", "ended"}));
}

TEST_F(Pan, IsCancelledWithTheTouches) {
    headless.down({.x = 10.0, .y = 10.0});
    headless.move({.x = 50.0, .y = 10.0});
    headless.cancel();
    EXPECT_EQ(states, (std::vector<int>{1, 2, 4}));
    EXPECT_EQ(view->seen.back(), "cancelled");
}

TEST_F(Pan, TakesTheTouchAwayFromTheViewWhereAsked) {
    recognizer->cancelsTouchesInView = true;
    headless.drag({.x = 10.0, .y = 10.0}, {.x = 90.0, .y = 10.0}, 2);
    EXPECT_EQ(view->seen, (std::vector<std::string>{"began", "cancelled"}));
}

TEST_F(Pan, LeavesAViewAloneThatKeepsItsTouches) {
    view->lets = false;
    headless.drag({.x = 10.0, .y = 10.0}, {.x = 90.0, .y = 10.0});
    EXPECT_TRUE(states.empty());
    view->lets = true;
    headless.drag({.x = 10.0, .y = 10.0}, {.x = 90.0, .y = 10.0}, 1);
    EXPECT_EQ(states, (std::vector<int>{1, 2, 3}));
}

TEST_F(Pan, SwitchedOffSeesNothing) {
    recognizer->setEnabled(false);
    headless.drag({.x = 10.0, .y = 10.0}, {.x = 90.0, .y = 10.0});
    EXPECT_TRUE(states.empty());
}

TEST_F(Pinch, ScalesByTheFingersDistance) {
    headless.down({.x = 50.0, .y = 50.0}, 1);
    headless.down({.x = 60.0, .y = 50.0}, 2);
    headless.move({.x = 70.0, .y = 50.0}, 2);
    EXPECT_EQ(states, (std::vector<int>{1, 2}));
    EXPECT_EQ(recognizer->scale(), 2.0);
    headless.move({.x = 55.0, .y = 50.0}, 2);
    EXPECT_EQ(recognizer->scale(), 0.5);
    headless.up({.x = 55.0, .y = 50.0}, 2);
    headless.up({.x = 50.0, .y = 50.0}, 1);
    EXPECT_EQ(states, (std::vector<int>{1, 2, 2, 3}));
}

TEST_F(Pinch, IsAlsoTheWheelWithTheControlKeyUntilItRests) {
    EXPECT_FALSE(headless.wheel({.x = 50.0, .y = 50.0}, 1.0));
    EXPECT_TRUE(headless.wheel({.x = 50.0, .y = 50.0}, 1.0, UIKeyModifierControl));
    EXPECT_EQ(recognizer->scale(), 1.1);
    EXPECT_TRUE(headless.wheel({.x = 50.0, .y = 50.0}, 1.0, UIKeyModifierControl));
    EXPECT_EQ(states, (std::vector<int>{1, 2, 2}));
    headless.run(0.3);
    EXPECT_EQ(states, (std::vector<int>{1, 2, 2, 3}));
    headless.wheel({.x = 50.0, .y = 50.0}, -1.0, UIKeyModifierControl);
    EXPECT_EQ(recognizer->scale(), std::pow(1.1, -1.0));
}

TEST_F(Tap, IsRecognisedWhenTheTouchGoesUp) {
    headless.down({.x = 50.0, .y = 50.0});
    EXPECT_TRUE(states.empty());
    headless.up({.x = 50.0, .y = 50.0});
    EXPECT_EQ(states, std::vector<int>{3});
    EXPECT_EQ(recognizer->state(), State::possible);
}

TEST_F(Tap, CountsTwoInQuickSuccession) {
    recognizer->numberOfTapsRequired = 2;
    headless.click({.x = 50.0, .y = 50.0});
    EXPECT_TRUE(states.empty());
    headless.run(1.0);
    headless.click({.x = 50.0, .y = 50.0});
    EXPECT_TRUE(states.empty()); // too late
    headless.run(0.1);
    headless.click({.x = 51.0, .y = 50.0});
    EXPECT_EQ(states, std::vector<int>{3});
    headless.run(0.1);
    headless.click({.x = 90.0, .y = 50.0});
    EXPECT_EQ(states.size(), 1u); // elsewhere
}

TEST_F(Tap, IsNoDragAndNoLongPress) {
    headless.drag({.x = 10.0, .y = 10.0}, {.x = 90.0, .y = 10.0});
    headless.down({.x = 50.0, .y = 50.0});
    headless.run(1.0);
    headless.up({.x = 50.0, .y = 50.0});
    EXPECT_TRUE(states.empty());
}

TEST_F(Tap, LeavesButtonsTheirTaps) {
    const auto button = makeRef<UIButton>(CGRectMake(100.0, 100.0, 50.0, 50.0));
    root->addSubview(button);
    int pressed = 0;
    button->addAction(UIControlEventTouchUpInside, [&](UIControl&) { ++pressed; });
    headless.click({.x = 120.0, .y = 120.0});
    EXPECT_EQ(pressed, 1);
    EXPECT_TRUE(states.empty());
}

TEST_F(LongPress, BeginsAfterItsTimeAndEndsWithTheTouch) {
    headless.down({.x = 50.0, .y = 50.0});
    headless.run(0.49);
    EXPECT_TRUE(states.empty());
    headless.run(0.02);
    EXPECT_EQ(states, std::vector<int>{1});
    headless.move({.x = 80.0, .y = 50.0});
    headless.up({.x = 80.0, .y = 50.0});
    EXPECT_EQ(states, (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(headless.loop().timerCount(), 0u);
}

TEST_F(LongPress, FailsWhenTheFingerMovesBefore) {
    headless.down({.x = 50.0, .y = 50.0});
    headless.move({.x = 70.0, .y = 50.0});
    headless.run(1.0);
    headless.up({.x = 70.0, .y = 50.0});
    EXPECT_TRUE(states.empty());
}

TEST_F(LongPress, LeavesNoTimerWhenItsViewGoes) {
    headless.down({.x = 50.0, .y = 50.0});
    root->removeGestureRecognizer(recognizer);
    recognizer.reset();
    headless.cancel();
    EXPECT_EQ(headless.loop().timerCount(), 0u);
}
