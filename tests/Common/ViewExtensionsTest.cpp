#include "Common/ViewExtensions.h"

#include "platform/view/View.h"

#include <gtest/gtest.h>

using namespace platform;

TEST(PinToSuperviewEdges, WithoutASuperviewLeavesTheTranslationFlagAlone) {
    const auto view = makeRef<UIView>();
    qor::pinToSuperviewEdges(*view);
    EXPECT_TRUE(view->translatesAutoresizingMaskIntoConstraints);
    EXPECT_TRUE(view->constraints().empty());
}

TEST(PinToSuperviewEdges, FillsTheSuperviewAtEverySize) {
    const auto superview = makeRef<UIView>(CGRect{{0, 0}, {100, 60}});
    const auto view = makeRef<UIView>(CGRect{{10, 10}, {5, 5}});
    superview->addSubview(view);
    qor::pinToSuperviewEdges(*view);
    EXPECT_FALSE(view->translatesAutoresizingMaskIntoConstraints);
    superview->layoutIfNeeded();
    EXPECT_EQ(view->frame(), (CGRect{{0, 0}, {100, 60}}));
    superview->setFrame({{7, 8}, {300, 200}});
    superview->layoutIfNeeded();
    EXPECT_EQ(view->frame(), (CGRect{{0, 0}, {300, 200}}));
}

TEST(PinToSuperviewEdges, ActivatesTopLeadingBottomAndTrailingInThisOrderWithoutAConstant) {
    const auto superview = makeRef<UIView>(CGRect{{0, 0}, {100, 60}});
    const auto view = makeRef<UIView>();
    superview->addSubview(view);
    qor::pinToSuperviewEdges(*view);
    std::vector<Ref<NSLayoutConstraint>> constraints = superview->constraints();
    if (constraints.empty()) {
        constraints = view->constraints(); // whichever of the two keeps them
    }
    const std::vector<NSLayoutAttribute> order = {NSLayoutAttribute::top, NSLayoutAttribute::leading,
                                                  NSLayoutAttribute::bottom, NSLayoutAttribute::trailing};
    ASSERT_EQ(constraints.size(), order.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        EXPECT_TRUE(constraints[i]->isActive());
        EXPECT_EQ(constraints[i]->firstItem.lock(), view);
        EXPECT_EQ(constraints[i]->secondItem.lock(), superview);
        EXPECT_EQ(constraints[i]->firstAttribute, order[i]);
        EXPECT_EQ(constraints[i]->secondAttribute, order[i]);
        EXPECT_EQ(constraints[i]->constant, 0.0);
    }
}

TEST(ColorValues, AreTheComponents) {
    const UIColor color(0.25, 0.5, 0.75, 0.125);
    EXPECT_EQ(qor::redValue(color), 0.25);
    EXPECT_EQ(qor::greenValue(color), 0.5);
    EXPECT_EQ(qor::blueValue(color), 0.75);
    EXPECT_EQ(qor::alphaValue(color), 0.125);
    EXPECT_EQ(qor::redValue(UIColor::whiteColor()), 1.0);
    EXPECT_EQ(qor::alphaValue(UIColor::clearColor()), 0.0);
}
