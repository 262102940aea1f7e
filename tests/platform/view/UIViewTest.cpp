#include "platform/view/View.h"

#include "platform/draw/BitmapContext.h"
#include "platform/draw/RecordingContext.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace platform; // NOLINT(google-build-using-namespace): the library under test

namespace {

/// Fills itself with one colour.
class Plate : public UIView {
public:
    Plate(const CGRect& frame, const UIColor& fill) : UIView(frame), color(fill) {}
    void draw(const CGRect& rect) override {
        color.setFill();
        UIBezierPath::bezierPathWithRect(CGRectInset(rect, inset, inset)).fill();
    }
    UIColor color;
    double inset = 0.0;
};

constexpr UIColor kRed(1.0, 0.0, 0.0, 1.0);
constexpr UIColor kBlue(0.0, 0.0, 1.0, 1.0);

std::uint32_t at(const UIWindow& window, int x, int y) {
    const ViewCompositor& picture = window.picture();
    return picture.pixels()[static_cast<std::size_t>(y * picture.width() + x)];
}

} // namespace

TEST(UIView, KeepsAFrameToTheLastBit) {
    const auto view = makeRef<UIView>();
    const CGRect frame = CGRectMake(124.70588235294117, 0.0, 150.58823529411765, 100.0);
    view->setFrame(frame);
    EXPECT_EQ(view->frame(), frame);
    EXPECT_EQ(view->bounds(), CGRectMake(0.0, 0.0, 150.58823529411765, 100.0));
}

TEST(UIView, TransformsAboutItsCentre) {
    const auto view = makeRef<UIView>(CGRectMake(10.0, 20.0, 100.0, 50.0));
    view->setTransform(CGAffineTransformMakeScale(2.0, 2.0));
    EXPECT_EQ(view->frame(), CGRectMake(-40.0, -5.0, 200.0, 100.0));
    EXPECT_EQ(view->center(), (CGPoint{.x = 60.0, .y = 45.0}));
    view->setTransform(CGAffineTransformIdentity);
    EXPECT_EQ(view->frame(), CGRectMake(10.0, 20.0, 100.0, 50.0));
}

TEST(UIView, ConvertsPointsThroughTheTree) {
    const auto window = makeRef<UIWindow>(CGSizeMake(400.0, 300.0));
    const auto outer = makeRef<UIView>(CGRectMake(100.0, 100.0, 100.0, 100.0));
    const auto inner = makeRef<UIView>(CGRectMake(10.0, 10.0, 20.0, 20.0));
    window->addSubview(outer);
    outer->addSubview(inner);
    EXPECT_EQ(inner->convertPointToWindow({.x = 1.0, .y = 2.0}), (CGPoint{.x = 111.0, .y = 112.0}));
    EXPECT_EQ(inner->convertPointFromWindow({.x = 111.0, .y = 112.0}), (CGPoint{.x = 1.0, .y = 2.0}));
    outer->setTransform(CGAffineTransformMakeScale(2.0, 2.0));
    EXPECT_EQ(inner->convertPointToWindow({.x = 0.0, .y = 0.0}), (CGPoint{.x = 70.0, .y = 70.0}));
}

TEST(UIView, KnowsItsSuperviewAndWindow) {
    const auto window = makeRef<UIWindow>(CGSizeMake(40.0, 30.0));
    const auto view = makeRef<UIView>();
    EXPECT_EQ(view->window(), nullptr);
    window->addSubview(view);
    EXPECT_EQ(view->superview(), window.get());
    EXPECT_EQ(view->window(), window.get());
    EXPECT_EQ(window->window(), window.get());
    view->removeFromSuperview();
    EXPECT_EQ(view->superview(), nullptr);
    EXPECT_EQ(view->window(), nullptr);
}

TEST(UIView, NeverBecomesItsOwnAncestor) {
    const auto outer = makeRef<UIView>();
    const auto inner = makeRef<UIView>();
    outer->addSubview(inner);
    inner->addSubview(outer);
    outer->addSubview(outer);
    EXPECT_EQ(outer->superview(), nullptr);
    EXPECT_EQ(inner->subviews().size(), 0u);
}

TEST(UIView, HitsTheTopmostVisibleViewThatTakesTouches) {
    const auto window = makeRef<UIWindow>(CGSizeMake(100.0, 100.0));
    const auto low = makeRef<UIView>(CGRectMake(0.0, 0.0, 50.0, 50.0));
    const auto high = makeRef<UIView>(CGRectMake(25.0, 25.0, 50.0, 50.0));
    window->addSubview(low);
    window->addSubview(high);
    const CGPoint shared{.x = 30.0, .y = 30.0};
    EXPECT_EQ(window->hitTest(shared, nullptr), high.get());
    high->setHidden(true);
    EXPECT_EQ(window->hitTest(shared, nullptr), low.get());
    high->setHidden(false);
    high->userInteractionEnabled = false;
    EXPECT_EQ(window->hitTest(shared, nullptr), low.get());
    high->userInteractionEnabled = true;
    high->setAlpha(0.0);
    EXPECT_EQ(window->hitTest(shared, nullptr), low.get());
    EXPECT_EQ(window->hitTest({.x = 90.0, .y = 90.0}, nullptr), window.get());
    EXPECT_EQ(window->hitTest({.x = 190.0, .y = 90.0}, nullptr), nullptr);
}

TEST(NSLayoutConstraint, PinsEdgesAcrossLayoutPasses) {
    const auto outer = makeRef<UIView>(CGRectMake(0.0, 0.0, 200.0, 100.0));
    const auto inner = makeRef<UIView>();
    outer->addSubview(inner);
    inner->translatesAutoresizingMaskIntoConstraints = false;
    NSLayoutConstraint::activateConstraints(
        {inner->topAnchor().constraintEqualToAnchor(outer->topAnchor()),
         inner->leadingAnchor().constraintEqualToAnchor(outer->leadingAnchor()),
         inner->bottomAnchor().constraintEqualToAnchor(outer->bottomAnchor()),
         inner->trailingAnchor().constraintEqualToAnchor(outer->trailingAnchor())});
    outer->layoutIfNeeded();
    EXPECT_EQ(inner->frame(), CGRectMake(0.0, 0.0, 200.0, 100.0));
    outer->setFrame(CGRectMake(5.0, 5.0, 60.0, 70.0));
    outer->layoutIfNeeded();
    EXPECT_EQ(inner->frame(), CGRectMake(0.0, 0.0, 60.0, 70.0));
}

TEST(NSLayoutConstraint, FixesLengthsAndKeepsToAnEdge) {
    const auto outer = makeRef<UIView>(CGRectMake(0.0, 0.0, 200.0, 100.0));
    const auto inner = makeRef<UIView>();
    outer->addSubview(inner);
    NSLayoutConstraint::activateConstraints(
        {inner->widthAnchor().constraintEqualToConstant(30.0),
         inner->heightAnchor().constraintEqualToConstant(20.0),
         inner->trailingAnchor().constraintEqualToAnchor(outer->trailingAnchor(), -5.0),
         inner->centerYAnchor().constraintEqualToAnchor(outer->centerYAnchor())});
    outer->layoutIfNeeded();
    EXPECT_EQ(inner->frame(), CGRectMake(165.0, 40.0, 30.0, 20.0));
    inner->constraints()[2]->setConstant(-15.0);
    outer->layoutIfNeeded();
    EXPECT_EQ(inner->frame(), CGRectMake(155.0, 40.0, 30.0, 20.0));
}

TEST(UIWindow, DrawsOnlyTheViewsThatNeedIt) {
    const auto window = makeRef<UIWindow>(CGSizeMake(40.0, 30.0));
    const auto under = makeRef<Plate>(CGRectMake(0.0, 0.0, 40.0, 30.0), kRed);
    const auto over = makeRef<Plate>(CGRectMake(10.0, 10.0, 10.0, 10.0), kBlue);
    window->addSubview(under);
    window->addSubview(over);
    EXPECT_EQ(window->display(), (PixelRect{.x = 0, .y = 0, .width = 40, .height = 30}));
    EXPECT_EQ(at(*window, 5, 5), 0xFFFF0000U);
    EXPECT_EQ(at(*window, 15, 15), 0xFF0000FFU);
    EXPECT_FALSE(window->needsDisplayPass());
    over->setNeedsDisplay();
    EXPECT_TRUE(window->needsDisplayPass());
    EXPECT_TRUE(window->display().isEmpty()); // drawn, and no pixel is another one
    over->color = UIColor::whiteColor();
    over->inset = 3.0;
    over->setNeedsDisplay();
    EXPECT_EQ(window->display(), (PixelRect{.x = 10, .y = 10, .width = 10, .height = 10}));
    over->color = kBlue;
    over->setNeedsDisplay();
    EXPECT_EQ(window->display(), (PixelRect{.x = 13, .y = 13, .width = 4, .height = 4}));
    EXPECT_EQ(at(*window, 15, 15), 0xFF0000FFU);
    EXPECT_EQ(at(*window, 11, 11), 0xFFFF0000U);
    EXPECT_EQ(under->drawCount(), 1u);
    EXPECT_EQ(over->drawCount(), 4u);
}

TEST(UIWindow, MovesAViewByWholePixelsWithoutDrawingItAgain) {
    const auto window = makeRef<UIWindow>(CGSizeMake(40.0, 30.0));
    const auto plate = makeRef<Plate>(CGRectMake(0.0, 0.0, 10.0, 10.0), kRed);
    window->addSubview(plate);
    window->display();
    plate->setFrame(CGRectMake(20.0, 0.0, 10.0, 10.0));
    EXPECT_EQ(window->display(), (PixelRect{.x = 0, .y = 0, .width = 30, .height = 10}));
    EXPECT_EQ(plate->drawCount(), 1u);
    EXPECT_EQ(at(*window, 5, 5), 0U);
    EXPECT_EQ(at(*window, 25, 5), 0xFFFF0000U);
    plate->setFrame(CGRectMake(20.0, 0.0, 12.0, 10.0));
    window->display();
    EXPECT_EQ(plate->drawCount(), 2u);
}

TEST(UIWindow, FadesAndHidesViews) {
    const auto window = makeRef<UIWindow>(CGSizeMake(20.0, 20.0));
    window->setBackgroundColor(UIColor::whiteColor());
    const auto plate = makeRef<Plate>(CGRectMake(0.0, 0.0, 20.0, 20.0), UIColor::blackColor());
    window->addSubview(plate);
    plate->setAlpha(0.5);
    window->display();
    EXPECT_NEAR(static_cast<double>(at(*window, 5, 5) & 0xFFU), 127.5, 1.0);
    plate->setHidden(true);
    window->display();
    EXPECT_EQ(at(*window, 5, 5), 0xFFFFFFFFU);
    EXPECT_EQ(plate->drawCount(), 1u);
}

TEST(UIWindow, ClipsSubviewsOnlyWhereAsked) {
    const auto window = makeRef<UIWindow>(CGSizeMake(40.0, 40.0));
    const auto box = makeRef<UIView>(CGRectMake(0.0, 0.0, 10.0, 10.0));
    box->addSubview(makeRef<Plate>(CGRectMake(0.0, 0.0, 30.0, 30.0), kRed));
    window->addSubview(box);
    window->display();
    EXPECT_EQ(at(*window, 20, 20), 0xFFFF0000U);
    box->setClipsToBounds(true);
    window->display();
    EXPECT_EQ(at(*window, 20, 20), 0U);
    EXPECT_EQ(at(*window, 5, 5), 0xFFFF0000U);
}

TEST(UIWindow, ScalesForDenseScreens) {
    const auto window = makeRef<UIWindow>(CGSizeMake(20.0, 10.0), 2.0);
    window->addSubview(makeRef<Plate>(CGRectMake(5.0, 0.0, 5.0, 5.0), kRed));
    window->display();
    EXPECT_EQ(window->picture().width(), 40);
    EXPECT_EQ(at(*window, 9, 0), 0U);
    EXPECT_EQ(at(*window, 10, 0), 0xFFFF0000U);
    EXPECT_EQ(at(*window, 19, 9), 0xFFFF0000U);
    EXPECT_EQ(at(*window, 20, 9), 0U);
}

TEST(UIWindow, AsksForARedrawOncePerPass) {
    const auto window = makeRef<UIWindow>(CGSizeMake(20.0, 10.0));
    window->display();
    int asked = 0;
    window->onNeedsDisplay = [&] { ++asked; };
    window->setNeedsDisplay();
    window->setNeedsDisplay();
    EXPECT_EQ(asked, 1);
    window->display();
    window->setNeedsDisplay();
    EXPECT_EQ(asked, 2);
}

TEST(UIWindow, SurvivesSizesThatAreNone) {
    const auto window = makeRef<UIWindow>(CGSizeMake(0.0, 0.0));
    window->addSubview(
        makeRef<Plate>(CGRectMake(0.0, 0.0, 1e9, std::numeric_limits<double>::infinity()), kRed));
    EXPECT_TRUE(window->display().isEmpty());
    window->setSize(CGSizeMake(10.0, 10.0));
    window->display();
    EXPECT_EQ(window->picture().width(), 10);
}

TEST(UIView, RecordsItsHierarchyAsOperations) {
    const auto outer = makeRef<UIView>(CGRectMake(0.0, 0.0, 20.0, 20.0));
    outer->addSubview(makeRef<Plate>(CGRectMake(5.0, 5.0, 5.0, 5.0), kRed));
    const auto hidden = makeRef<Plate>(CGRectMake(5.0, 5.0, 5.0, 5.0), kBlue);
    hidden->setHidden(true);
    outer->addSubview(hidden);
    RecordingContext record;
    outer->drawHierarchy(record);
    const std::string text = record.text();
    EXPECT_NE(text.find("rect 0 0 5 5"), std::string::npos) << text;
    EXPECT_EQ(text.find("rect 0 0 5 5"), text.rfind("rect 0 0 5 5")) << text;
}

TEST(UIControl, SendsEventsToTheActionsOfTheirMask) {
    const auto control = makeRef<UIControl>();
    std::vector<int> calls;
    control->addAction(UIControlEventTouchDown, [&](UIControl&) { calls.push_back(1); });
    control->addAction(UIControlEventTouchDown | UIControlEventValueChanged,
                       [&](UIControl&) { calls.push_back(2); });
    control->sendActionsForControlEvents(UIControlEventTouchDown);
    control->sendActionsForControlEvents(UIControlEventValueChanged);
    control->sendActionsForControlEvents(UIControlEventTouchCancel);
    EXPECT_EQ(calls, (std::vector<int>{1, 2, 2}));
    EXPECT_EQ(UIControlEventTouchUpInside, 0x40U);
    EXPECT_EQ(UIControlEventTouchUpOutside, 0x80U);
    EXPECT_EQ(UIControlEventTouchCancel, 0x100U);
    EXPECT_EQ(UIControlEventValueChanged, 0x1000U);
}
