#include "EditorFixture.h"

#include "interface/LimiterElements.h"
#include "platform/draw/RecordingContext.h"

#include <cmath>
#include <tuple>

namespace qor {

struct QORLimiterViewPeer {
    static const std::string& mode(const QORLimiterView& view) { return view.hotspotMode; }
    static const CGPoint& start(const QORLimiterView& view) { return view.startLocation; }
    static double saved(const QORLimiterView& view) { return view.savedValue; }
    static double startValue(const QORLimiterView& view) { return view.startValue; }
    static double scaler(const QORLimiterView& view) { return view.scaler; }
    static std::int64_t lastIndex(const QORLimiterView& view) { return view.lastIndex; }
};

} // namespace qor

namespace {

using namespace qor; // NOLINT(google-build-using-namespace): the system under test
using Peer = QORLimiterViewPeer;
using Call = std::pair<std::int64_t, float>;

class Delegate : public QORLimiterViewDelegate {
public:
    void onQORLimiterViewParameter(std::int64_t address, float value) override {
        calls.emplace_back(address, value);
    }
    void onQORLimiterViewOption(std::int64_t /*address*/, float /*value*/) override { ++options; }
    std::vector<Call> calls;
    int options = 0;
};

/// The surface alone in a window, with a delegate that writes down.
class Surface : public testing::Test {
protected:
    explicit Surface(double scale = 1.0)
        : headless({.width = 512.0 * scale, .height = 340.0 * scale + 0.001}) {
        headless.show(view);
        view->delegate = delegate;
        view->setViewController(controller);
        view->addAction(UIControlEventAllEvents, [this](UIControl&) { ++events; });
        for (const UIControlEvents event :
             {UIControlEventTouchDown, UIControlEventValueChanged, UIControlEventTouchUpInside,
              UIControlEventTouchUpOutside, UIControlEventTouchCancel}) {
            view->addAction(event, [this, event](UIControl&) { sent.push_back(event); });
        }
        log.clear();
    }
    ~Surface() override { view->setViewController(nullptr); }

    test::CapturedLog log;
    HeadlessWindow headless;
    RunLoop::Scope scope{headless.loop()};
    Ref<QORLimiterView> view = makeRef<QORLimiterView>();
    Ref<Delegate> delegate = makeRef<Delegate>();
    Ref<AudioUnitViewController> controller = makeRef<AudioUnitViewController>();
    std::vector<UIControlEvents> sent;
    int events = 0;
};

class DoubleSurface : public Surface {
protected:
    DoubleSurface() : Surface(2.0) {}
};

constexpr CGPoint kThreshold{.x = 329.0, .y = 94.0};
constexpr CGPoint kBypass{.x = 88.0, .y = 284.0};
constexpr CGPoint kNothing{.x = 5.0, .y = 5.0};

/// The middle of an element's area.
CGPoint middleOf(const QORLimiterViewBase& base, const LimiterElement& element) {
    const CGRect area = (base.*element.path).bounds();
    return {.x = CGRectGetMidX(area), .y = CGRectGetMidY(area)};
}

} // namespace

TEST_F(Surface, StartsWithTheInitialValuesOfItsFields) {
    const QORLimiterView fresh;
    EXPECT_EQ(Peer::mode(fresh), "");
    EXPECT_EQ(Peer::start(fresh), CGPointZero);
    EXPECT_EQ(Peer::startValue(fresh), 0.0);
    EXPECT_EQ(Peer::scaler(fresh), 1.0);
    EXPECT_EQ(Peer::saved(fresh), 0.0);
    EXPECT_EQ(Peer::lastIndex(fresh), 0);
    EXPECT_EQ(fresh.viewController(), nullptr);
    EXPECT_EQ(fresh.delegate, nullptr);
    EXPECT_EQ(fresh.audioUnit(), nullptr);
}

TEST_F(Surface, GivesItsControllerToTheDrawingHalf) {
    EXPECT_EQ(view->baseClass->viewController, controller);
    EXPECT_EQ(view->audioUnit(), nullptr);
    view->setViewController(nullptr);
    EXPECT_EQ(view->baseClass->viewController, nullptr);
}

TEST_F(Surface, HitsTheElementsInTheirOrderAndLogsEachMode) {
    const std::vector<std::string> modes = {"attack", "release",  "threshold", "ratio", "trim", "mix",
                                            "bypass", "audition", "caption",   "meter", "mode"};
    for (std::size_t i = 0; i < kLimiterElements.size(); ++i) {
        log.clear();
        view->setHotspotMode(middleOf(*view->baseClass, kLimiterElements[i]));
        EXPECT_EQ(Peer::mode(*view), modes[i]);
        EXPECT_EQ(log.lines(), std::vector<std::string>{modes[i]});
    }
    log.clear();
    view->setHotspotMode(kNothing);
    EXPECT_EQ(log.lines(), std::vector<std::string>{""});
    // Areas overlap: release ends at 227 + 0, mode begins at 227; meter and caption come after the knobs.
    view->setHotspotMode({.x = 226.5, .y = 70.0});
    EXPECT_EQ(Peer::mode(*view), "release");
}

TEST_F(Surface, HitsNothingBeforeTheFirstDrawing) {
    QORLimiterView fresh;
    fresh.setHotspotMode(kThreshold);
    EXPECT_EQ(Peer::mode(fresh), "");
}

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

TEST_F(Surface, ParameterSevenAtOneHalfLeavesTheButtonOff) {
    view->setParameter(7, 0.5F);
    EXPECT_FALSE(view->baseClass->isBypassSelected);
    view->setParameter(7, 1.0F);
    EXPECT_TRUE(view->baseClass->isBypassSelected);
    view->setParameter(8, 1.0F);
    EXPECT_TRUE(view->baseClass->isAuditioSelected);
}

TEST_F(Surface, ParameterSixRedrawsAndLogsAndChangesNoField) {
    const std::vector<std::string> before = headless.recordedOperations();
    const auto drawn = view->drawCount();
    view->setParameter(6, 2.0F);
    EXPECT_TRUE(view->needsDisplay());
    headless.settle();
    EXPECT_EQ(view->drawCount(), drawn + 1);
    EXPECT_EQ(headless.recordedOperations(), before);
    EXPECT_EQ(log.lines(), std::vector<std::string>{"editor received parameter : address: 6, value: 2.0"});
}

TEST_F(Surface, StoresAndLogsEveryParameter) {
    for (std::int64_t address = 0; address < 16; ++address) {
        view->setParameter(address, 0.125F);
    }
    EXPECT_EQ(view->baseClass->valueAttack, 0.125);
    EXPECT_EQ(view->baseClass->valueRelease, 0.125);
    EXPECT_EQ(view->baseClass->valueThreshold, 0.125);
    EXPECT_EQ(view->baseClass->valueRatio, 0.125);
    EXPECT_EQ(view->baseClass->valueGain, 0.125);
    EXPECT_EQ(view->baseClass->valueMix, 0.125);
    ASSERT_EQ(log.lines().size(), 16u);
    EXPECT_EQ(log.lines()[15], "editor received parameter : address: 15, value: 0.125");
}

TEST_F(Surface, ContrastTurnsTheColoursAndFocusOnlyRedraws) {
    view->setContrast(0.25);
    EXPECT_EQ(view->baseClass->colorContrast, UIColor(0.75, 0.75, 0.75, 1.0));
    EXPECT_EQ(view->baseClass->colorContrastInverted, UIColor(0.25, 0.25, 0.25, 1.0));
    EXPECT_EQ(view->baseClass->colorMain, view->baseClass->colorContrast);
    headless.settle();
    const auto before = headless.recordedOperations();
    view->setFocus(true);
    EXPECT_TRUE(view->needsDisplay());
    EXPECT_EQ(headless.recordedOperations(), before);
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

TEST_F(Surface, AHiddenSurfaceDrawsNothing) {
    RecordingContext record;
    view->setHidden(true);
    const GraphicsScope drawing(record);
    view->draw(view->bounds());
    EXPECT_TRUE(record.lines().empty());
}

using SurfaceDeathTest = Surface;

TEST_F(SurfaceDeathTest, AnEmptySetOfTouchesEndsTheProcess) {
    EXPECT_DEATH(view->touchesBegan({}, nullptr),
                 "Unexpectedly found nil while unwrapping an Optional value");
    headless.down(kThreshold);
    EXPECT_DEATH(view->touchesMoved({}, nullptr),
                 "Unexpectedly found nil while unwrapping an Optional value");
}
