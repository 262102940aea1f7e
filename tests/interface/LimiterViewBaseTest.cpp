#include "interface/ParameterDisplay.h"
#include "interface/QORLimiterViewBase.h"
#include "interface/TextInRect.h"
#include "platform/draw/RecordingContext.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>

using namespace qor;

namespace {

constexpr const char* kNoContext = "Unexpectedly found nil while unwrapping an Optional value";

std::vector<std::string> recorded(const std::function<void()>& draw) {
    RecordingContext context;
    const GraphicsScope scope(context);
    draw();
    EXPECT_EQ(context.stateDepth(), 0U);
    return context.lines();
}

std::vector<std::string> knobLines(double value, bool isSelected) {
    QORLimiterViewBase base;
    return recorded([&] {
        base.drawSymbolKnob(CGRectMake(0, 0, 90, 90), QORLimiterViewBase::ResizingBehavior::stretch, value,
                            "attack", isSelected);
    });
}

std::string firstWith(const std::vector<std::string>& lines, std::string_view word) {
    const auto found = std::ranges::find_if(lines, [&](const auto& line) { return line.starts_with(word); });
    return found == lines.end() ? "" : *found;
}

double pointerDegrees(double value) {
    const std::string line = firstWith(knobLines(value, false), "rotate ");
    double radians = 0.0;
    EXPECT_TRUE(parseDouble(line.substr(7), radians)) << line;
    return radians * 180.0 / std::numbers::pi;
}

std::string valueText(double value) {
    const auto lines = knobLines(value, false);
    const auto found = std::ranges::find_if(lines.rbegin(), lines.rend(),
                                            [](const auto& line) { return line.starts_with("text"); });
    return found->substr(0, found->find(" at"));
}

TEST(LimiterViewBase, StartsWithTheDefaultsOfItsTable) {
    const QORLimiterViewBase base;
    EXPECT_EQ(base.viewController, nullptr);
    EXPECT_EQ(base.colorContrast, UIColor(0, 0, 0, 1));
    EXPECT_EQ(base.colorContrastInverted, UIColor(1, 1, 1, 1));
    EXPECT_EQ(base.colorMain, UIColor(0.753, 0.753, 0.753, 1));
    EXPECT_EQ(base.colorSelected1, UIColor(0.76, 0.29, 0.29, 1));
    EXPECT_EQ(base.colorSelected2, UIColor(0.195, 0.479, 0.75, 1));
    EXPECT_EQ(base.colorHotspots, UIColor(0.652, 0.8, 0.32, 0.198));
    for (const double value : {base.valueAttack, base.valueRelease, base.valueThreshold, base.valueRatio,
                               base.valueGain, base.valueMix}) {
        EXPECT_EQ(value, 0.5);
    }
    for (const bool flag :
         {base.isAttackActive, base.isReleaseActive, base.isThresholdActive, base.isRatioActive,
          base.isGainActive, base.isMixActive, base.isBypassActive, base.isAuditionActive,
          base.isAttackSelected, base.isReleaseSelected, base.isThresholdSelected, base.isRatioSelected,
          base.isGainSelected, base.isMixSelected, base.isBypassSelected, base.isAuditioSelected}) {
        EXPECT_FALSE(flag);
    }
    EXPECT_EQ(base.value1, 1.0);
    EXPECT_EQ(base.value2, 1.0);
    EXPECT_EQ(base.viewScale, CGSizeZero);
    for (const UIBezierPath* path :
         {&base.hotspotAttackPath, &base.hotspotReleasePath, &base.hotspotThresholdPath,
          &base.hotspotRatioPath, &base.hotspotGainPath, &base.hotspotMixPath, &base.hotspotBypassPath,
          &base.hotspotAuditionPath, &base.hotspotCaptionPath, &base.hotspotModePath,
          &base.hotspotMeterPath}) {
        EXPECT_TRUE(path->isEmpty());
    }
}

TEST(LimiterViewBase, EveryDrawPublishesTheSameTouchAreas) {
    QORLimiterViewBase base;
    const auto expectAreas = [&] {
        EXPECT_EQ(base.hotspotAttackPath.description(), "rect 39 44 90 98");
        EXPECT_EQ(base.hotspotReleasePath.description(), "rect 137 44 90 98");
        EXPECT_EQ(base.hotspotThresholdPath.description(), "rect 284 45 90 98");
        EXPECT_EQ(base.hotspotRatioPath.description(), "rect 384 45 90 98");
        EXPECT_EQ(base.hotspotGainPath.description(), "rect 39 153 90 98");
        EXPECT_EQ(base.hotspotMixPath.description(), "rect 384 158 90 98");
        EXPECT_EQ(base.hotspotBypassPath.description(), "rect 44 266 90 36");
        EXPECT_EQ(base.hotspotAuditionPath.description(), "rect 380 264 90 36");
        EXPECT_EQ(base.hotspotCaptionPath.description(), "rect 166 264 180 36");
        EXPECT_EQ(base.hotspotModePath.description(), "rect 227 54 57 45");
        EXPECT_EQ(base.hotspotMeterPath.description(), "rect 166 151 180 90");
    };
    recorded([&] { base.drawMain(); });
    expectAreas();
    base.isAttackActive = true;
    base.hotspotMeterPath.removeAllPoints();
    recorded([&] { base.drawMain(CGRectMake(7, 9, 1024, 400)); });
    expectAreas();
}

TEST(LimiterViewBase, AFrameOfTheCanvasKeepsTheScaleAndDrawsAtFactorOne) {
    QORLimiterViewBase base;
    const auto lines = recorded([&] { base.drawMain(CGRectMake(0, 0, 512, 340)); });
    EXPECT_EQ(base.viewScale, CGSizeZero);
    EXPECT_EQ(lines[1], "translate 0 0");
    EXPECT_EQ(lines[2], "scale 1 1");
}

TEST(LimiterViewBase, AnAllZeroFrameDrawsAtFullCanvasSize) {
    QORLimiterViewBase base;
    const auto atCanvas = recorded([&] { base.drawMain(CGRectMake(0, 0, 512, 340)); });
    EXPECT_EQ(recorded([&] { base.drawMain(CGRectZero); }), atCanvas);
    EXPECT_EQ(base.viewScale, CGSizeZero);
}

TEST(LimiterViewBase, AWideFrameKeepsFactorOneAndLeaves256UnitsOnEachSide) {
    QORLimiterViewBase base;
    const auto lines = recorded([&] { base.drawMain(CGRectMake(0, 0, 1024, 340)); });
    EXPECT_EQ(base.viewScale, CGSizeMake(1, 1));
    EXPECT_EQ(lines[1], "translate 256 0");
    EXPECT_EQ(lines[2], "scale 1 1");
}

TEST(LimiterViewBase, ThePointerRunsFromMinusToPlus145DegreesWithoutAClamp) {
    EXPECT_DOUBLE_EQ(pointerDegrees(0.0), -145.0);
    EXPECT_DOUBLE_EQ(pointerDegrees(0.125), -108.75);
    EXPECT_DOUBLE_EQ(pointerDegrees(0.5), 0.0);
    EXPECT_DOUBLE_EQ(pointerDegrees(1.0), 145.0);
    EXPECT_DOUBLE_EQ(pointerDegrees(1.5), 290.0);
    EXPECT_DOUBLE_EQ(pointerDegrees(-1.0), -435.0);
}

TEST(LimiterViewBase, TheValueTextIsTheRoundedHundredfoldAlone) {
    EXPECT_EQ(valueText(0.125), "text \"13\"");
    EXPECT_EQ(valueText(1.5), "text \"150\"");
    EXPECT_EQ(valueText(0.0), "text \"0\"");
    EXPECT_EQ(valueText(1.0), "text \"100\"");
    EXPECT_EQ(valueText(-0.125), "text \"-13\"");
    EXPECT_EQ(valueText(0.004), "text \"0\"");
    EXPECT_EQ(valueText(-0.004), "text \"0\"");
    EXPECT_EQ(knobValueText(0.995), "100"); // 99.5 exactly: 0.995 is the double next to it
    EXPECT_EQ(knobValueText(92233720368547748.0), "9223372036854774784");
    EXPECT_EQ(knobValueText(-92233720368547758.08), "-9223372036854775808");
}

TEST(LimiterViewBase, SelectingAKnobColoursEverythingButItsValueText) {
    const std::string main = "color 0.753 0.753 0.753 1";
    const std::string selected = "color 0.76 0.29 0.29 1";
    const auto plain = knobLines(0.5, false);
    const auto marked = knobLines(0.5, true);
    ASSERT_EQ(plain.size(), marked.size());
    int coloured = 0;
    for (std::size_t index = 0; index < plain.size(); ++index) {
        if (plain[index].find("color") == std::string::npos) {
            EXPECT_EQ(plain[index], marked[index]);
            continue;
        }
        ++coloured;
        const std::string& wanted = plain[index].starts_with("text \"50\"") ? main : selected;
        EXPECT_TRUE(plain[index].ends_with(main)) << plain[index];
        EXPECT_TRUE(marked[index].ends_with(wanted)) << marked[index];
    }
    EXPECT_EQ(coloured, 6); // ring, pointer, two dots, label, value
}

TEST(LimiterViewBase, AnActiveThresholdKnobGrowsAndTheDialStaysAsItIs) {
    QORLimiterViewBase base;
    base.valueThreshold = 0.3;
    auto resting = recorded([&] { base.drawMain(); });
    base.isThresholdActive = true;
    const auto active = recorded([&] { base.drawMain(); });
    ASSERT_EQ(resting.size(), active.size());
    const auto knob = std::ranges::find(resting, "translate 329 94");
    ASSERT_NE(knob, resting.end());
    EXPECT_EQ(*(knob + 1), "scale 1.1 1.1");
    *(knob + 1) = "scale 1.5 1.5";
    EXPECT_EQ(resting, active); // nothing else differs
}

TEST(LimiterViewBase, EachActiveFlagEnlargesItsOwnElement) {
    struct Case {
        bool QORLimiterViewBase::*flag;
        const char* centre;
    };
    for (const auto& [flag, centre] :
         {Case{&QORLimiterViewBase::isAttackActive, "translate 83 94"},
          Case{&QORLimiterViewBase::isReleaseActive, "translate 182 94"},
          Case{&QORLimiterViewBase::isThresholdActive, "translate 329 94"},
          Case{&QORLimiterViewBase::isRatioActive, "translate 428 94"},
          Case{&QORLimiterViewBase::isGainActive, "translate 83.5 201.5"},
          Case{&QORLimiterViewBase::isMixActive, "translate 428.5 201.5"},
          Case{&QORLimiterViewBase::isBypassActive, "translate 87.9 283.86"},
          Case{&QORLimiterViewBase::isAuditionActive, "translate 423.9 281.86"}}) {
        QORLimiterViewBase base;
        base.*flag = true;
        const auto lines = recorded([&] { base.drawMain(); });
        EXPECT_EQ(std::ranges::count(lines, "scale 1.5 1.5"), 1);
        EXPECT_EQ(*(std::ranges::find(lines, centre) + 1), "scale 1.5 1.5") << centre;
        EXPECT_EQ(std::ranges::count(lines, "scale 1.1 1.1"), 7);
    }
}

TEST(LimiterViewBase, EachSelectedFlagColoursItsOwnElement) {
    struct Case {
        bool QORLimiterViewBase::*flag;
        const char* label;
    };
    for (const auto& [flag, label] :
         {Case{&QORLimiterViewBase::isAttackSelected, "attack"},
          Case{&QORLimiterViewBase::isReleaseSelected, "release"},
          Case{&QORLimiterViewBase::isThresholdSelected, "threshold"},
          Case{&QORLimiterViewBase::isRatioSelected, "knee"},
          Case{&QORLimiterViewBase::isGainSelected, "gain"}, Case{&QORLimiterViewBase::isMixSelected, "mix"},
          Case{&QORLimiterViewBase::isBypassSelected, "bypass"},
          Case{&QORLimiterViewBase::isAuditioSelected, "audition"}}) {
        QORLimiterViewBase base;
        base.*flag = true;
        std::vector<std::string> selected;
        for (const std::string& line : recorded([&] { base.drawMain(); })) {
            if (line.starts_with("text") && line.ends_with("color 0.76 0.29 0.29 1")) {
                selected.push_back(line.substr(6, line.find('"', 6) - 6));
            }
        }
        EXPECT_EQ(selected, std::vector<std::string>{label});
    }
}

TEST(LimiterViewBase, TheMeterValuesChangeNothing) {
    QORLimiterViewBase base;
    const auto before = recorded([&] { base.drawMain(); });
    for (const double value : {0.0, -7.0, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
        base.value1 = value;
        base.value2 = -value;
        EXPECT_EQ(recorded([&] { base.drawMain(); }), before);
    }
}

TEST(LimiterViewBase, HotspotAndContrastColoursAreNotDrawn) {
    QORLimiterViewBase base;
    const auto before = recorded([&] { base.drawMain(); });
    base.colorHotspots = base.colorContrast = base.colorContrastInverted = base.colorSelected2 =
        UIColor(0, 1, 0, 1);
    EXPECT_EQ(recorded([&] { base.drawMain(); }), before);
}

TEST(LimiterViewBaseDeathTest, DrawingWithoutAContextEndsTheProcess) {
    QORLimiterViewBase base;
    EXPECT_DEATH(base.drawMain(), kNoContext);
    EXPECT_DEATH(base.drawSymbolKnob(), kNoContext);
    EXPECT_DEATH(base.drawSymbolMeter(), kNoContext);
    EXPECT_DEATH(base.drawSymbolHistory(), kNoContext);
    EXPECT_DEATH(base.drawSymbolButton(), kNoContext);
}

TEST(LimiterViewBaseDeathTest, AnUnknownFontNameEndsTheProcess) {
    EXPECT_DEATH(unwrap(UIFont::fontWithName("HelveticaNeue-Thin", 10.0)), kNoContext);
}

TEST(LimiterViewBaseDeathTest, AKnobValueWithoutAWholeNumberEndsTheProcess) {
    EXPECT_DEATH(knobLines(std::numeric_limits<double>::quiet_NaN(), false), "infinite or NaN");
    EXPECT_DEATH(knobLines(std::numeric_limits<double>::infinity(), false), "infinite or NaN");
    EXPECT_DEATH(knobLines(1e307, false), "infinite or NaN"); // the hundredfold overflows
    EXPECT_DEATH(knobLines(92233720368547759.0, false), "greater than Int.max");
    EXPECT_DEATH(knobLines(-92233720368547800.0, false), "less than Int.min");
}

TEST(ParameterDisplay, StoresEachAddressInItsField) {
    QORLimiterViewBase base;
    for (std::int64_t address = 0; address < 6; ++address) {
        showParameter(base, address, 0.1F * static_cast<float>(address));
    }
    EXPECT_EQ(base.valueAttack, 0.0);
    EXPECT_EQ(base.valueRelease, static_cast<double>(0.1F));
    EXPECT_EQ(base.valueThreshold, static_cast<double>(0.1F * 2.0F));
    EXPECT_EQ(base.valueRatio, static_cast<double>(0.1F * 3.0F));
    EXPECT_EQ(base.valueGain, static_cast<double>(0.1F * 4.0F));
    EXPECT_EQ(base.valueMix, static_cast<double>(0.1F * 5.0F));
}

TEST(ParameterDisplay, AButtonIsOnAtExactlyOne) {
    QORLimiterViewBase base;
    showParameter(base, 7, 1.0F);
    showParameter(base, 8, 1.0F);
    EXPECT_TRUE(base.isBypassSelected);
    EXPECT_TRUE(base.isAuditioSelected);
    showParameter(base, 7, 0.5F);
    showParameter(base, 8, 2.0F);
    EXPECT_FALSE(base.isBypassSelected);
    EXPECT_FALSE(base.isAuditioSelected);
}

TEST(ParameterDisplay, OtherAddressesChangeNothing) {
    QORLimiterViewBase base;
    const auto before = recorded([&] { base.drawMain(); });
    for (const std::int64_t address : {-1, 6, 9, 10, 11, 12, 13, 14, 15, 1000}) {
        showParameter(base, address, 1.0F);
    }
    EXPECT_EQ(recorded([&] { base.drawMain(); }), before);
}

} // namespace
