#include "interface/PluginFrameBaseEx.h"
#include "interface/QORDynamicsDisplayViewBase.h"
#include "interface/QORLimiterViewBase.h"

#include <gtest/gtest.h>

using namespace qor;

namespace {

constexpr CGRect kCanvas = CGRectMake(0, 0, 512, 340);

// The three drawing classes have fitting rules of their own; each is held to the same table.
template <class Owner>
struct Fitting;

template <>
struct Fitting<QORLimiterViewBase> {
    using Behaviour = QORLimiterViewBase::ResizingBehavior0;
    QORLimiterViewBase owner;
    CGSize scale() const { return owner.viewScale; }
};
template <>
struct Fitting<QORDynamicsDisplayViewBase> {
    using Behaviour = QORDynamicsDisplayViewBase::ResizingBehavior0;
    QORDynamicsDisplayViewBase owner;
    CGSize scale() const { return owner.viewScale; }
};

template <class Owner>
class FittingRule : public testing::Test {
public:
    using Behaviour = typename Fitting<Owner>::Behaviour;
    Fitting<Owner> fitting;
    CGRect apply(Behaviour behaviour, const CGRect& target) {
        return behaviour.apply(kCanvas, target, fitting.owner);
    }
};

using Owners = testing::Types<QORLimiterViewBase, QORDynamicsDisplayViewBase>;
TYPED_TEST_SUITE(FittingRule, Owners);

TYPED_TEST(FittingRule, AFrameThatIsTheCanvasIsKeptAndSoIsTheScale) {
    EXPECT_EQ(this->apply(TypeParam::ResizingBehavior0::aspectFit, kCanvas), kCanvas);
    EXPECT_EQ(this->fitting.scale(), CGSizeZero);
    this->apply(TypeParam::ResizingBehavior0::aspectFit, CGRectMake(0, 0, 1024, 680));
    this->apply(TypeParam::ResizingBehavior0::aspectFit, kCanvas);
    EXPECT_EQ(this->fitting.scale(), CGSizeMake(2, 2));
}

TYPED_TEST(FittingRule, AnAllZeroFrameGivesTheCanvas) {
    EXPECT_EQ(this->apply(TypeParam::ResizingBehavior0::aspectFit, CGRectZero), kCanvas);
    EXPECT_EQ(this->fitting.scale(), CGSizeZero);
}

TYPED_TEST(FittingRule, AspectFitTakesTheSmallerFactorAndCentres) {
    EXPECT_EQ(this->apply(TypeParam::ResizingBehavior0::aspectFit, CGRectMake(0, 0, 1024, 340)),
              CGRectMake(256, 0, 512, 340));
    EXPECT_EQ(this->fitting.scale(), CGSizeMake(1, 1));
    EXPECT_EQ(this->apply(TypeParam::ResizingBehavior0::aspectFit, CGRectMake(10, 20, 256, 680)),
              CGRectMake(10, 20 + (680 - 170) / 2.0, 256, 170));
    EXPECT_EQ(this->fitting.scale(), CGSizeMake(0.5, 0.5));
}

TYPED_TEST(FittingRule, AspectFillTakesTheLargerFactorAndOverhangsEqually) {
    EXPECT_EQ(this->apply(TypeParam::ResizingBehavior0::aspectFill, CGRectMake(0, 0, 1024, 340)),
              CGRectMake(0, -170, 1024, 680));
    EXPECT_EQ(this->fitting.scale(), CGSizeMake(2, 2));
}

TYPED_TEST(FittingRule, StretchKeepsEachAxisItsOwnFactor) {
    EXPECT_EQ(this->apply(TypeParam::ResizingBehavior0::stretch, CGRectMake(5, 6, 1024, 170)),
              CGRectMake(5, 6, 1024, 170));
    EXPECT_EQ(this->fitting.scale(), CGSizeMake(2, 0.5));
}

TYPED_TEST(FittingRule, CenterDoesNotScale) {
    EXPECT_EQ(this->apply(TypeParam::ResizingBehavior0::center, CGRectMake(0, 0, 612, 240)),
              CGRectMake(50, -50, 512, 340));
    EXPECT_EQ(this->fitting.scale(), CGSizeMake(1, 1));
}

TYPED_TEST(FittingRule, ANegativeTargetCountsByItsArea) {
    EXPECT_EQ(this->apply(TypeParam::ResizingBehavior0::aspectFit, CGRectMake(1024, 680, -1024, -680)),
              CGRectMake(0, 0, 1024, 680));
    EXPECT_EQ(this->fitting.scale(), CGSizeMake(2, 2));
}

TYPED_TEST(FittingRule, RawValuesAreZeroToThreeAndNoOthers) {
    using Symbol = typename TypeParam::ResizingBehavior;
    for (std::int64_t raw = 0; raw < 4; ++raw) {
        ASSERT_TRUE(TypeParam::ResizingBehavior0::initRawValue(raw));
        EXPECT_EQ(TypeParam::ResizingBehavior0::initRawValue(raw)->rawValue, raw);
        ASSERT_TRUE(Symbol::initRawValue(raw));
        EXPECT_EQ(Symbol::initRawValue(raw)->rawValue, raw);
    }
    for (const std::int64_t raw : {std::int64_t{-1}, std::int64_t{4}, std::int64_t{1} << 40}) {
        EXPECT_FALSE(TypeParam::ResizingBehavior0::initRawValue(raw));
        EXPECT_FALSE(Symbol::initRawValue(raw));
    }
}

TYPED_TEST(FittingRule, SymbolsFollowTheSameTableWithoutStoringAScale) {
    using Symbol = typename TypeParam::ResizingBehavior;
    const CGRect canvas = CGRectMake(0, 0, 90, 90);
    const CGRect target = CGRectMake(0, 0, 180, 90);
    EXPECT_EQ(Symbol(Symbol::aspectFit).apply(canvas, target), CGRectMake(45, 0, 90, 90));
    EXPECT_EQ(Symbol(Symbol::aspectFill).apply(canvas, target), CGRectMake(0, -45, 180, 180));
    EXPECT_EQ(Symbol(Symbol::stretch).apply(canvas, target), target);
    EXPECT_EQ(Symbol(Symbol::center).apply(canvas, target), CGRectMake(45, 0, 90, 90));
    EXPECT_EQ(Symbol(Symbol::stretch).apply(canvas, CGRectZero), canvas);
    EXPECT_EQ(this->fitting.scale(), CGSizeZero);
}

} // namespace
