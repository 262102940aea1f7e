// What fingers on the surface do.
#include "SurfaceFixture.h"

#include <cmath>

namespace {

using namespace test; // NOLINT(google-build-using-namespace): the fixture and the system under test
using Peer = QORLimiterViewPeer;

} // namespace

TEST_F(Surface, DownAndUpWithoutMovingGivesOneExtraCallWithTheSavedValue) {
    view->baseClass->valueThreshold = 0.3;
    headless.click(kThreshold);
    EXPECT_EQ(delegate->calls, (std::vector<Call>{{2, 0.3F}}));
    EXPECT_EQ(sent, (std::vector<UIControlEvents>{UIControlEventTouchDown, UIControlEventValueChanged,
                                                  UIControlEventTouchUpInside}));
}

TEST_F(Surface, EveryKnobDragsByTheLawAndSendsItsAddress) {
    for (std::size_t i = 0; i < 6; ++i) {
        const LimiterElement& element = kLimiterElements[i];
        (*view->baseClass).*element.value = 0.25;
        const CGPoint from = middleOf(*view->baseClass, element);
        delegate->calls.clear();
        headless.down(from);
        EXPECT_TRUE((*view->baseClass).*element.active);
        EXPECT_TRUE(controller->touchesLocked);
        headless.move({.x = from.x, .y = from.y - 50.0});
        EXPECT_EQ(delegate->calls.back(), (Call{element.address, 0.5F})) << element.mode;
        EXPECT_EQ((*view->baseClass).*element.value, 0.5);
        headless.move({.x = from.x + 50.0, .y = from.y - 50.0});
        EXPECT_EQ(delegate->calls.back(), (Call{element.address, 0.75F})) << element.mode;
        headless.up({.x = from.x + 50.0, .y = from.y - 50.0});
        EXPECT_FALSE((*view->baseClass).*element.active);
        EXPECT_FALSE(controller->touchesLocked);
        EXPECT_EQ(Peer::mode(*view), "");
    }
    EXPECT_EQ(delegate->options, 0);
}

TEST_F(Surface, TwoHundredPointsUpAreTheFullRangeAtScaleOne) {
    view->baseClass->valueThreshold = 0.0;
    headless.down({.x = 329.0, .y = 140.0});
    headless.move({.x = 329.0, .y = -59.0});
    EXPECT_NEAR(view->baseClass->valueThreshold, 0.995, 1e-6);
    headless.move({.x = 329.0, .y = -60.0});
    EXPECT_EQ(view->baseClass->valueThreshold, 1.0);
    headless.up({.x = 329.0, .y = -60.0});
}

TEST_F(DoubleSurface, EightHundredPointsUpAreTheFullRangeAtScaleTwo) {
    EXPECT_EQ(view->baseClass->viewScale, (CGSize{.width = 2.0, .height = 2.0}));
    view->baseClass->valueThreshold = 0.0;
    headless.down({.x = 658.0, .y = 280.0});
    EXPECT_EQ(Peer::start(*view), (CGPoint{.x = 329.0, .y = 140.0}));
    headless.move({.x = 658.0, .y = 280.0 - 400.0});
    EXPECT_EQ(view->baseClass->valueThreshold, 0.5);
    headless.move({.x = 658.0, .y = 280.0 - 800.0});
    EXPECT_EQ(view->baseClass->valueThreshold, 1.0);
    headless.up({.x = 658.0, .y = 280.0});
    EXPECT_EQ(view->baseClass->valueThreshold, 0.0);
}

TEST_F(Surface, AKnobAtItsEndKeepsSendingAndFallsAgainBelowTheDeltaOfTouchDown) {
    view->baseClass->valueThreshold = 0.9;
    const auto movedTo = [&](double up) {
        headless.move({.x = kThreshold.x, .y = kThreshold.y - up});
        return delegate->calls.back().second;
    };
    headless.down(kThreshold);
    EXPECT_EQ(movedTo(100.0), 1.0F);
    EXPECT_EQ(movedTo(60.0), 1.0F);
    EXPECT_EQ(movedTo(21.0), 1.0F);
    EXPECT_EQ(delegate->calls.size(), 3u);
    EXPECT_LT(movedTo(19.0), 1.0F);
    EXPECT_EQ(movedTo(10.0), static_cast<float>(0.9 - static_cast<double>(-10.0F / 2.0F / 100.0F)));
}

TEST_F(Surface, ADragChangesAValueByAtMostOneBeforeItIsHeldToItsRange) {
    view->setParameter(2, 1.75F); // nobody checks what comes from outside
    headless.down(kThreshold);
    headless.move({.x = kThreshold.x, .y = kThreshold.y + 300.0}); // one and a half ranges down
    EXPECT_EQ(view->baseClass->valueThreshold, 0.75);
    headless.move({.x = kThreshold.x, .y = kThreshold.y - 300.0});
    EXPECT_EQ(view->baseClass->valueThreshold, 1.0);
    view->setParameter(2, -0.75F);
    headless.up(kThreshold);
    view->setParameter(2, -0.75F);
    headless.down(kThreshold);
    headless.move({.x = kThreshold.x, .y = kThreshold.y - 300.0});
    EXPECT_EQ(view->baseClass->valueThreshold, 0.25);
}

TEST_F(Surface, AKnobDraggedRightAndEquallyDownStaysAtItsValue) {
    view->baseClass->valueThreshold = 0.4;
    headless.down(kThreshold);
    headless.move({.x = kThreshold.x + 60.0, .y = kThreshold.y + 60.0});
    EXPECT_EQ(view->baseClass->valueThreshold, 0.4);
}

TEST_F(Surface, RoundsTheDistanceOnceToSinglePrecisionAndDividesTwice) {
    view->baseClass->valueThreshold = 0.5;
    headless.down(kThreshold);
    headless.move({.x = kThreshold.x + 0.7, .y = kThreshold.y - 7.3});
    const double dx = (kThreshold.x + 0.7) - kThreshold.x;
    const double dy = (kThreshold.y - 7.3) - kThreshold.y;
    float d = static_cast<float>(dy - dx);
    d = d / 2.0F;
    d = d / 100.0F;
    EXPECT_EQ(view->baseClass->valueThreshold, 0.5 - static_cast<double>(d));
}

TEST_F(Surface, APressOnBypassSendsOneAndAFurtherPressZeroAndMovesDoNotToggle) {
    headless.down(kBypass);
    EXPECT_EQ(delegate->calls, (std::vector<Call>{{7, 1.0F}})); // on touch down
    headless.move({.x = kBypass.x + 4.0, .y = kBypass.y});
    headless.move({.x = kBypass.x - 4.0, .y = kBypass.y});
    EXPECT_TRUE(view->baseClass->isBypassSelected);
    EXPECT_TRUE(view->baseClass->isBypassActive);
    headless.up(kBypass);
    EXPECT_FALSE(view->baseClass->isBypassActive);
    headless.click(kBypass);
    EXPECT_EQ(delegate->calls, (std::vector<Call>{{7, 1.0F}, {7, 0.0F}}));
}

TEST_F(Surface, AuditionTogglesLikewise) {
    headless.click(middleOf(*view->baseClass, kLimiterElements[7]));
    EXPECT_TRUE(view->baseClass->isAuditioSelected);
    EXPECT_EQ(delegate->calls, (std::vector<Call>{{8, 1.0F}}));
}

TEST_F(Surface, InertAreasLockTheGesturesAndSendTheTouchEvents) {
    for (std::size_t i = 8; i < 11; ++i) {
        sent.clear();
        const CGPoint at = middleOf(*view->baseClass, kLimiterElements[i]);
        headless.down(at);
        EXPECT_TRUE(controller->touchesLocked);
        headless.up(at);
        EXPECT_FALSE(controller->touchesLocked);
        EXPECT_EQ(sent, (std::vector<UIControlEvents>{UIControlEventTouchDown, UIControlEventValueChanged,
                                                      UIControlEventTouchUpInside}));
    }
    EXPECT_TRUE(delegate->calls.empty());
}

TEST_F(Surface, ATouchOnNothingUnlocksAndSendsOnlyItsEnd) {
    controller->touchesLocked = true;
    headless.down(kNothing);
    EXPECT_FALSE(controller->touchesLocked);
    EXPECT_TRUE(sent.empty());
    headless.up(kNothing);
    EXPECT_EQ(sent, std::vector<UIControlEvents>{UIControlEventTouchUpInside});
}

TEST_F(DoubleSurface, TheUpEventComparesTheCanvasPointOfTouchDownWithTheBounds) {
    // Down inside, up far outside: still inside, as the point of release plays no part.
    headless.down({.x = 658.0, .y = 188.0});
    headless.up({.x = 5000.0, .y = 5000.0});
    EXPECT_EQ(sent.back(), UIControlEventTouchUpInside);
}

TEST_F(DoubleSurface, ATouchBesideTheViewCountsAsInsideWhereItsCanvasPointIs) {
    // 1200 points across lie outside the view's 1024; as 600 canvas units they lie inside.
    UITouchSet touches{makeRef<UITouch>(CGPoint{.x = 1200.0, .y = 94.0}, view)};
    view->touchesBegan(touches, nullptr);
    EXPECT_EQ(Peer::start(*view), (CGPoint{.x = 600.0, .y = 47.0}));
    view->touchesEnded(touches, nullptr);
    EXPECT_EQ(sent, std::vector<UIControlEvents>{UIControlEventTouchUpInside});
}

TEST_F(Surface, ATouchThatBeganOutsideTheBoundsEndsOutside) {
    UITouchSet touches{makeRef<UITouch>(CGPoint{.x = 600.0, .y = 94.0}, view)};
    view->touchesBegan(touches, nullptr);
    view->touchesEnded(touches, nullptr);
    EXPECT_EQ(sent, std::vector<UIControlEvents>{UIControlEventTouchUpOutside});
}

TEST_F(Surface, ACancelLeavesModeAndValueWhereTheyWere) {
    view->baseClass->valueThreshold = 0.5;
    headless.down(kThreshold);
    headless.move({.x = kThreshold.x, .y = kThreshold.y - 20.0});
    const auto calls = delegate->calls.size();
    headless.cancel();
    EXPECT_EQ(delegate->calls.size(), calls);
    EXPECT_EQ(Peer::mode(*view), "threshold");
    EXPECT_FALSE(view->baseClass->isThresholdActive);
    EXPECT_FALSE(controller->touchesLocked);
    EXPECT_NEAR(view->baseClass->valueThreshold, 0.6, 1e-6);
    EXPECT_EQ(sent.back(), UIControlEventTouchCancel);
    headless.down(kNothing);
    EXPECT_EQ(Peer::mode(*view), "");
}

TEST_F(Surface, ASecondFingerTakesTheDragOver) {
    view->baseClass->valueThreshold = 0.5;
    view->baseClass->valueAttack = 0.5;
    headless.down(kThreshold, 1);
    headless.down({.x = 83.0, .y = 94.0}, 2);
    headless.move({.x = kThreshold.x, .y = 94.0}, 1); // no move at all
    headless.move({.x = kThreshold.x, .y = 93.0}, 1); // the first finger now moves the second's knob
    EXPECT_EQ(delegate->calls.back().first, 0);
    EXPECT_EQ(view->baseClass->valueThreshold, 0.5);
}

TEST_F(Surface, AutomationDuringADragIsOverwrittenByTheNextMove) {
    view->baseClass->valueThreshold = 0.5;
    headless.down(kThreshold);
    view->setParameter(2, 0.9F);
    EXPECT_EQ(view->baseClass->valueThreshold, static_cast<double>(0.9F));
    EXPECT_EQ(Peer::saved(*view), 0.5);
    headless.move({.x = kThreshold.x, .y = kThreshold.y - 20.0});
    EXPECT_NEAR(view->baseClass->valueThreshold, 0.6, 1e-6);
}

TEST_F(Surface, WithoutControllerOrDelegateTouchesStopAtTheFirstGuard) {
    view->delegate = nullptr;
    headless.click(kThreshold);
    EXPECT_EQ(sent,
              std::vector<UIControlEvents>{UIControlEventTouchUpInside}); // the end asks for no delegate
    sent.clear();
    view->delegate = delegate;
    view->setViewController(nullptr);
    headless.click(kThreshold);
    headless.down(kThreshold);
    headless.cancel();
    EXPECT_TRUE(sent.empty());
    EXPECT_TRUE(delegate->calls.empty());
    view->setParameter(2, 0.75F);
    EXPECT_EQ(view->baseClass->valueThreshold, 0.75);
}

using SurfaceDeathTest = Surface;

TEST_F(SurfaceDeathTest, AnEmptySetOfTouchesEndsTheProcess) {
    EXPECT_DEATH(view->touchesBegan({}, nullptr),
                 "Unexpectedly found nil while unwrapping an Optional value");
    headless.down(kThreshold);
    EXPECT_DEATH(view->touchesMoved({}, nullptr),
                 "Unexpectedly found nil while unwrapping an Optional value");
}
