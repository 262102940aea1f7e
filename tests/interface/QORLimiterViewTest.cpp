#include "SurfaceFixture.h"

#include "platform/draw/RecordingContext.h"

#include <array>

namespace {

using namespace test; // NOLINT(google-build-using-namespace): the fixture and the system under test
using Peer = QORLimiterViewPeer;

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

TEST_F(Surface, EachElementHasItsAreaItsFieldsAndItsParameter) {
    using Base = QORLimiterViewBase;
    using Kind = LimiterElementKind;
    const std::array<LimiterElement, 11> expected{{
        {"attack", &Base::hotspotAttackPath, Kind::knob, &Base::valueAttack, nullptr, &Base::isAttackActive,
         0},
        {"release", &Base::hotspotReleasePath, Kind::knob, &Base::valueRelease, nullptr,
         &Base::isReleaseActive, 1},
        {"threshold", &Base::hotspotThresholdPath, Kind::knob, &Base::valueThreshold, nullptr,
         &Base::isThresholdActive, 2},
        {"ratio", &Base::hotspotRatioPath, Kind::knob, &Base::valueRatio, nullptr, &Base::isRatioActive, 3},
        {"trim", &Base::hotspotGainPath, Kind::knob, &Base::valueGain, nullptr, &Base::isGainActive, 4},
        {"mix", &Base::hotspotMixPath, Kind::knob, &Base::valueMix, nullptr, &Base::isMixActive, 5},
        {"bypass", &Base::hotspotBypassPath, Kind::button, nullptr, &Base::isBypassSelected,
         &Base::isBypassActive, 7},
        {"audition", &Base::hotspotAuditionPath, Kind::button, nullptr, &Base::isAuditioSelected,
         &Base::isAuditionActive, 8},
        {"caption", &Base::hotspotCaptionPath, Kind::inert, nullptr, nullptr, nullptr, -1},
        {"meter", &Base::hotspotMeterPath, Kind::inert, nullptr, nullptr, nullptr, -1},
        {"mode", &Base::hotspotModePath, Kind::inert, nullptr, nullptr, nullptr, -1},
    }};
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const LimiterElement& element = kLimiterElements[i];
        EXPECT_EQ(element.mode, expected[i].mode);
        EXPECT_TRUE(element.path == expected[i].path) << element.mode;
        EXPECT_TRUE(element.kind == expected[i].kind) << element.mode;
        EXPECT_TRUE(element.value == expected[i].value) << element.mode;
        EXPECT_TRUE(element.selected == expected[i].selected) << element.mode;
        EXPECT_TRUE(element.active == expected[i].active) << element.mode;
        EXPECT_EQ(element.address, expected[i].address) << element.mode;
    }
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

TEST_F(Surface, AHiddenSurfaceDrawsNothing) {
    RecordingContext record;
    view->setHidden(true);
    const GraphicsScope drawing(record);
    view->draw(view->bounds());
    EXPECT_TRUE(record.lines().empty());
}
