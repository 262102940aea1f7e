#include "interface/QORDynamicsDisplayView.h"
#include "platform/draw/RecordingContext.h"
#include "support/Pixels.h"

#include <gtest/gtest.h>
#include <numbers>

using namespace qor;

namespace {

// A view in a window that has been displayed, so that every further draw is one that was asked for.
class DynamicsDisplay : public testing::Test {
protected:
    void SetUp() override {
        window->addSubview(view);
        EXPECT_EQ(drawsOf([] {}), 1U);
    }
    template <class Change>
    std::uint64_t drawsOf(Change change) {
        const std::uint64_t before = view->drawCount();
        change();
        window->display();
        return view->drawCount() - before;
    }
    std::vector<std::string> picture() {
        RecordingContext context;
        const GraphicsScope scope(context);
        view->draw(view->bounds());
        return context.lines();
    }

    Ref<UIWindow> window = makeRef<UIWindow>(CGSizeMake(600, 400));
    Ref<QORDynamicsDisplayView> view = makeRef<QORDynamicsDisplayView>(CGRectMake(0, 0, 600, 400));
};

TEST_F(DynamicsDisplay, StartsWithNeedlesAtRestAndDotsAtZero) {
    const QORDynamicsDisplayViewBase& base = *view->baseClass;
    EXPECT_EQ(base.colorContrast, UIColor(0, 0, 0, 1));
    EXPECT_EQ(base.colorContrastInverted, UIColor(1, 1, 1, 1));
    EXPECT_EQ(base.colorMain, UIColor(0.753, 0.753, 0.753, 1));
    EXPECT_EQ(base.colorSelected1, UIColor(0.76, 0.29, 0.29, 1));
    EXPECT_EQ(base.colorSelected2, UIColor(0.195, 0.479, 0.75, 1));
    EXPECT_EQ(base.value1, 1.0);
    EXPECT_EQ(base.value2, 1.0);
    EXPECT_EQ(base.value3, 0.0);
    EXPECT_EQ(base.value4, 0.0);
    EXPECT_EQ(base.valueThreshold, 0.5);
    EXPECT_EQ(QORDynamicsDisplayViewBase().viewScale, CGSizeZero);
}

TEST_F(DynamicsDisplay, CompressionValuesThatAreStoredAlreadyCauseNoRedraw) {
    EXPECT_EQ(drawsOf([&] { view->setCompressionValues(1.0F, 1.0F); }), 0U);
    EXPECT_EQ(drawsOf([&] { view->setCompressionValues(1.0F, 0.75F); }), 1U);
    EXPECT_EQ(drawsOf([&] { view->setCompressionValues(1.0F, 0.75F); }), 0U);
    EXPECT_EQ(drawsOf([&] { view->setCompressionValues(0.1F, 0.75F); }), 1U);
    EXPECT_EQ(view->baseClass->value1, static_cast<double>(0.1F));
    EXPECT_EQ(view->baseClass->value2, 0.75);
}

TEST_F(DynamicsDisplay, OutputValuesThatAreStoredAlreadyCauseNoRedraw) {
    EXPECT_EQ(drawsOf([&] { view->setOutputValues(0.0F, 0.0F); }), 0U);
    EXPECT_EQ(drawsOf([&] { view->setOutputValues(0.3F, 0.0F); }), 1U);
    EXPECT_EQ(drawsOf([&] { view->setOutputValues(0.3F, 0.0F); }), 0U);
    EXPECT_EQ(drawsOf([&] { view->setOutputValues(0.3F, 0.4F); }), 1U);
    EXPECT_EQ(view->baseClass->value3, static_cast<double>(0.3F));
    EXPECT_EQ(view->baseClass->value4, static_cast<double>(0.4F));
}

TEST_F(DynamicsDisplay, TheThresholdIsStoredWithoutRedrawAndWithoutEffect) {
    const auto before = picture();
    EXPECT_EQ(drawsOf([&] { view->setThresholdValue(0.9F); }), 0U);
    EXPECT_EQ(view->baseClass->valueThreshold, static_cast<double>(0.9F));
    EXPECT_EQ(drawsOf([&] { view->setNeedsDisplay(); }), 1U);
    EXPECT_EQ(picture(), before);
}

TEST_F(DynamicsDisplay, FocusOnAndOffBehaveAlike) {
    const auto before = picture();
    EXPECT_EQ(drawsOf([&] { view->setFocus(true); }), 1U);
    EXPECT_EQ(picture(), before);
    EXPECT_EQ(drawsOf([&] { view->setFocus(false); }), 1U);
    EXPECT_EQ(picture(), before);
}

TEST_F(DynamicsDisplay, AResetBringsTheNeedlesBackAndLeavesTheDotsAtTheTop) {
    view->setOutputValues(0.5F, 0.5F);
    view->setCompressionValues(0.2F, 0.3F);
    EXPECT_EQ(drawsOf([&] { view->resetDisplay(); }), 1U);
    EXPECT_EQ(view->baseClass->value1, 1.0);
    EXPECT_EQ(view->baseClass->value2, 1.0);
    EXPECT_EQ(view->baseClass->value3, 0.5);
    EXPECT_EQ(view->baseClass->value4, 0.5);
    const UIImage image = test::drawn({512, 340}, 2.0, [&](CGContext&) { view->baseClass->drawMain(); });
    EXPECT_GT(test::pixelAt(image, {256.5, 146.5}).alpha, 150); // 87 units above the dots' pivot
}

TEST_F(DynamicsDisplay, AHiddenViewDrawsNothing) {
    view->setHidden(true);
    EXPECT_TRUE(picture().empty());
    view->setHidden(false);
    EXPECT_FALSE(picture().empty());
}

TEST_F(DynamicsDisplay, DrawsItsBoundsByAspectFit) {
    picture();
    const double factor = std::min(600.0 / 512.0, 400.0 / 340.0);
    EXPECT_EQ(view->baseClass->viewScale, CGSizeMake(factor, factor));
}

TEST_F(DynamicsDisplay, ContrastSetsThreeColoursAndRedraws) {
    EXPECT_EQ(drawsOf([&] { view->setContrast(0.25); }), 1U);
    EXPECT_EQ(view->baseClass->colorContrast, UIColor(0.75, 0.75, 0.75, 1));
    EXPECT_EQ(view->baseClass->colorContrastInverted, UIColor(0.25, 0.25, 0.25, 1));
    EXPECT_EQ(view->baseClass->colorMain, view->baseClass->colorContrast);
    const auto before = picture();
    view->setContrast(0.9);
    EXPECT_EQ(picture(), before); // no indicator is drawn in any of the three
}

TEST(DynamicsDisplayBase, AFrameOfTheCanvasLeavesTheScaleAsItWas) {
    QORDynamicsDisplayViewBase base;
    test::drawn({512, 340}, 1.0, [&](CGContext&) { base.drawMain(CGRectMake(0, 0, 512, 340)); });
    EXPECT_EQ(base.viewScale, CGSizeZero);
    test::drawn({512, 340}, 1.0, [&](CGContext&) { base.drawMain(CGRectMake(0, 0, 256, 170)); });
    EXPECT_EQ(base.viewScale, CGSizeMake(0.5, 0.5));
}

// The angle of each indicator in degrees, in the order of drawing: dot 4, dot 3, needle 2, needle 1.
std::vector<double> anglesOf(double value1, double value2, double value3, double value4) {
    QORDynamicsDisplayViewBase base;
    RecordingContext context;
    const GraphicsScope scope(context);
    base.drawSymbolMeter(CGRectMake(0, 0, 206, 106), QORDynamicsDisplayViewBase::ResizingBehavior::stretch,
                         value1, value2, value3, value4);
    std::vector<double> angles;
    for (const std::string& line : context.lines()) {
        double radians = 0.0;
        if (line.starts_with("rotate ") && parseDouble(line.substr(7), radians)) {
            angles.push_back(radians * 180.0 / std::numbers::pi);
        }
    }
    return angles;
}

TEST(DynamicsDisplayBase, ValuesTurnTheIndicatorsLinearlyWithoutAClamp) {
    EXPECT_EQ(anglesOf(0.75, 0.0, 0.5, 1.0), (std::vector<double>{90, 0, -90, 45}));
    EXPECT_EQ(anglesOf(1.5, -0.5, 0.25, 2.0), (std::vector<double>{270, -45, -180, 180}));
}

TEST(DynamicsDisplayBaseDeathTest, DrawingWithoutAContextEndsTheProcess) {
    QORDynamicsDisplayViewBase base;
    const char* message = "Unexpectedly found nil while unwrapping an Optional value";
    EXPECT_DEATH(base.drawMain(), message);
    EXPECT_DEATH(base.drawSymbolMeter(), message);
}

} // namespace
