// Whether everything that the editor shows can be read, and each meter shows what is its own.
#include "EditorHostFixture.h"

#include "hosts/shared/ChoiceMenu.h"
#include "hosts/shared/ParameterUnits.h"
#include "platform/draw/NSStringDrawing.h"
#include "platform/view/ViewStyle.h"
#include "support/Pixels.h"

namespace {

using namespace qor;       // NOLINT(google-build-using-namespace): the system under test
using namespace qor::host; // NOLINT(google-build-using-namespace)

class Looks : public test::HostedEditor {
protected:
    static double widthOf(const std::string& text) {
        const NSStringAttributes attributes{
            .font = UIFont::systemFontOfSize(style::kFontSize), .foregroundColor = {}, .paragraphStyle = {}};
        return boundingRectWithSize(text, {.width = 1e6, .height = 0.0}, 0, attributes).size.width;
    }
    double roomOf(const std::string& identifier) {
        constexpr double kButtonMargin = 6.0; // at each side
        UIView& view = find(identifier);
        const double margins = dynamic_cast<UIButton*>(&view) != nullptr ? 2.0 * kButtonMargin : 0.0;
        return view.bounds().size.width - margins;
    }
    CGRect placeOf(const std::string& identifier) {
        UIView& view = find(identifier);
        return view.convertRectToView(view.bounds(), headless->window());
    }
};

} // namespace

TEST_F(Looks, NoTextOfTheStripIsCut) {
    open();
    for (const ParameterRow& row : kParameterTable) {
        for (const float value : {row.minimum, row.maximum, row.defaultValue}) {
            EXPECT_LE(widthOf(labelledText(row, value)), roomOf("info")) << labelledText(row, value);
        }
        EXPECT_LE(widthOf(std::string(row.hostName) + ": type 0 to 100"), roomOf("info")) << row.hostName;
        for (const std::string name : row.valueNames) {
            if (row.address == kLimiterMode) {
                EXPECT_LE(widthOf(name), roomOf("mode")) << name;
            }
        }
    }
    for (const PresetEntry& preset : listPresets()) {
        EXPECT_LE(widthOf(preset.name + " *"), roomOf("preset")) << preset.name;
        EXPECT_LE(widthOf("Preset  " + preset.name), roomOf("info")) << preset.name;
    }
    EXPECT_LE(widthOf("Final Limiter"), roomOf("final"));
    EXPECT_LE(widthOf("100.0 %"), roomOf("highPassValue"));
}

TEST_F(Looks, TheStripsRowsEndAtTheSameMargins) {
    open();
    const double left = 17.0;
    const double right = EditorHost::kPreferredSize.width - left;
    EXPECT_EQ(CGRectGetMinX(placeOf("preset")), left);
    EXPECT_EQ(CGRectGetMaxX(placeOf("info")), right);
    EXPECT_EQ(CGRectGetMaxX(placeOf("lowPassValue")), right);
    EXPECT_EQ(placeOf("highPass").size, placeOf("lowPass").size);
    const std::vector<std::string> rows[] = {{"preset", "mode", "final", "info"},
                                             {"highPass", "highPassValue", "lowPass", "lowPassValue"}};
    for (const auto& row : rows) {
        for (std::size_t i = 1; i < row.size(); ++i) {
            EXPECT_LT(CGRectGetMaxX(placeOf(row[i - 1])), CGRectGetMinX(placeOf(row[i]))) << row[i];
            EXPECT_EQ(placeOf(row[i - 1]).origin.y, placeOf(row[i]).origin.y) << row[i];
        }
    }
}

TEST_F(Looks, TheFieldOverAKnobsNumberGrowsWithThePanel) {
    open();
    for (const double scale : {1.0, 2.0, 0.5}) {
        headless->resize(CGSizeMake(512.0 * scale, EditorHost::kPreferredSize.height * scale));
        headless->click({.x = 329.0 * scale, .y = 132.0 * scale});
        const CGRect field = placeOf("valueEntry");
        EXPECT_NEAR(CGRectGetMidX(field), 329.0 * scale, 1e-6);
        EXPECT_NEAR(CGRectGetMidY(field), 132.0 * scale, 1e-6);
        EXPECT_NEAR(field.size.width, 56.0 * scale, 1e-6);
        EXPECT_NEAR(field.size.height, 18.0 * scale, 1e-6);
        headless->key(UIKey::escape);
        run(1.0);
    }
}

TEST_F(Looks, AListThatDoesNotFitShowsWhichPartIsSeen) {
    open();
    const auto inkAtTheEdge = [&](const CGRect& list) {
        const UIImage image = headless->picture();
        std::vector<bool> ink;
        for (double y = CGRectGetMinY(list) + 4.0; y < CGRectGetMaxY(list) - 4.0; y += 1.0) {
            ink.push_back(test::pixelAt(image, {CGRectGetMaxX(list) - 4.5, y}).red > 60);
        }
        return ink;
    };
    click("mode");
    const std::vector<bool> few = inkAtTheEdge(placeOf("choices"));
    EXPECT_EQ(std::count(few.begin(), few.end(), true), 0);
    headless->key(UIKey::escape);
    turn();
    click("preset");
    const std::vector<bool> top = inkAtTheEdge(placeOf("choices"));
    EXPECT_TRUE(top.front());
    EXPECT_FALSE(top.back());
    headless->key(UIKey::end);
    turn();
    const std::vector<bool> bottom = inkAtTheEdge(placeOf("choices"));
    EXPECT_FALSE(bottom.front());
    EXPECT_TRUE(bottom.back());
    const auto seen = static_cast<double>(std::count(top.begin(), top.end(), true));
    const auto items = static_cast<double>(listPresets().size() + 1);
    EXPECT_NEAR(seen / static_cast<double>(top.size()),
                placeOf("choices").size.height / (items * ChoiceListView::kRow), 0.03);
}

TEST_F(Looks, ALongListOpensWhereTheCurrentRowIs) {
    open();
    const auto lastWholeRowIsCurrent = [&] {
        const CGRect list = placeOf("choices");
        return test::pixelAt(headless->picture(), {CGRectGetMidX(list), CGRectGetMaxY(list) - 26.0}).blue >
               80;
    };
    click("preset");
    EXPECT_FALSE(lastWholeRowIsCurrent());
    headless->key(UIKey::end);
    headless->key(UIKey::up); // above "Save as..."
    headless->key(UIKey::enter);
    turn();
    run(1.0);
    click("preset");
    EXPECT_TRUE(lastWholeRowIsCurrent());
}

TEST_F(Looks, EachMeterShowsItsOwnChannel) {
    open();
    constexpr std::uint32_t kFrames = 480;
    for (const bool leftIsLoud : {true, false}) {
        std::array<std::vector<float>, 4> buffers;
        buffers.fill(std::vector<float>(kFrames));
        for (int block = 0; block < 100; ++block) {
            for (std::uint32_t i = 0; i < kFrames; ++i) {
                phase += 2.0 * M_PI * 440.0 / 48000.0;
                buffers[leftIsLoud ? 0 : 1][i] = 0.95F * static_cast<float>(std::sin(phase));
            }
            const float* input[2] = {buffers[0].data(), buffers[1].data()};
            float* output[2] = {buffers[2].data(), buffers[3].data()};
            units->render(input, output, kFrames, SpanEvents({}));
        }
        run(0.1);
        const QORDynamicsDisplayViewBase& needles = *controller().displayView->baseClass;
        const double loudNeedle = leftIsLoud ? needles.value1 : needles.value2;
        const double quietNeedle = leftIsLoud ? needles.value2 : needles.value1;
        const double loudDot = leftIsLoud ? needles.value3 : needles.value4;
        const double quietDot = leftIsLoud ? needles.value4 : needles.value3;
        EXPECT_LT(loudNeedle, 0.9);
        EXPECT_EQ(quietNeedle, 1.0);
        EXPECT_GT(loudDot, 0.5);
        EXPECT_LT(quietDot, 0.1);
    }
}
