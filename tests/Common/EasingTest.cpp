#include "Common/Animator.h"
#include "EasingReference.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

using qor::Animator;
using qor::EnumEasing;
using qor::Ref;

namespace {

struct Named {
    std::string form;
    std::string kind;
};

/// Form and kind of a raw value, by the order of the enumeration.
Named named(int raw) {
    static const std::vector<std::string> kinds = {"Quad", "Cubic", "Quart",   "Quint", "Sine",
                                                   "Expo", "Circ",  "Elastic", "Back",  "Bounce"};
    static const std::vector<std::string> forms = {"In", "Out", "InOut", "OutIn"};
    if (raw == 0) {
        return {"None", ""};
    }
    return {forms[static_cast<std::size_t>(raw - 1) % 4], kinds[static_cast<std::size_t>(raw - 1) / 4]};
}

class EveryCurve : public testing::TestWithParam<int> {};

} // namespace

TEST_P(EveryCurve, FollowsItsTableFrameByFrame) {
    const Named name = named(GetParam());
    for (const int frames : {1, 2, 3, 7, 12, 64, 320}) {
        for (const auto& [source, destination] : {std::pair{0.0f, 1.0f}, {2.5f, -0.75f}, {-1.0f, 100.0f}}) {
            Animator animator(source, destination, frames, 0.01f, static_cast<EnumEasing>(GetParam()));
            const double amount = static_cast<double>(destination) - static_cast<double>(source);
            for (int frame = 1; frame <= frames; ++frame) {
                animator.animate();
                const double expected =
                    static_cast<double>(source) +
                    amount * test::EasingReference::value(name.form, name.kind, frame, frames);
                ASSERT_NEAR(static_cast<double>(animator.getValue()), expected,
                            4e-6 * std::max(1.0, std::abs(amount)))
                    << name.form << name.kind << " frame " << frame << " of " << frames;
            }
            EXPECT_FALSE(animator.isFinished());
            animator.animate();
            EXPECT_TRUE(animator.isFinished());
            EXPECT_EQ(animator.getValue(), destination);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Easing, EveryCurve, testing::Range(0, 41),
                         [](const testing::TestParamInfo<int>& curve) {
                             const Named name = named(curve.param);
                             return name.form + name.kind;
                         });

TEST(EnumEasing, IsAbsentForOtherRawValues) {
    EXPECT_EQ(qor::initRawValue(0), EnumEasing::EASING_easeNone);
    EXPECT_EQ(qor::initRawValue(22), EnumEasing::EASING_easeOutExpo);
    EXPECT_EQ(qor::initRawValue(41), EnumEasing::EASING_easeLast);
    EXPECT_FALSE(qor::initRawValue(42));
    EXPECT_FALSE(qor::initRawValue(-1));
}

TEST(Easing, OutQuartStartsAtTheSourcePlusTwiceTheAmount) {
    const Animator animator;
    EXPECT_EQ(animator.easeOutQuart(0, 1.0f, 3.0f, 10), 7.0f);
    EXPECT_EQ(animator.easeOutQuart(10, 1.0f, 3.0f, 10), 4.0f);
    EXPECT_EQ(animator.easeOutInQuart(0, 0.0f, 1.0f, 10), 1.0f); // the slip shows in the glued form
}

TEST(Easing, InOutQuartJumpsInTheMiddle) {
    const Animator animator;
    EXPECT_LT(animator.easeInOutQuart(49, 0.0f, 1.0f, 100), 0.5f);
    EXPECT_EQ(animator.easeInOutQuart(50, 0.0f, 1.0f, 100), 1.5f);
    EXPECT_EQ(animator.easeInOutQuart(100, 0.0f, 1.0f, 100), 1.0f);
}

TEST(Easing, InOutExpoCreepsUpToASixtyFourthBeforeTheLastFrame) {
    const Animator animator;
    EXPECT_NEAR(animator.easeInOutExpo(9999, 0.0f, 1.0f, 10000), 1.0f / 64.0f, 1e-4f);
    EXPECT_EQ(animator.easeInOutExpo(10000, 0.0f, 1.0f, 10000), 1.0f);
    EXPECT_EQ(animator.easeInOutExpo(0, 0.25f, 1.0f, 10000), 0.25f);
}

TEST(Easing, OutInDividesOddFrameCountsAsIntegers) {
    const Animator animator;
    // frame 1 of 3 is not below 3 / 2 = 1, so the second half sees frame -1
    EXPECT_EQ(animator.easeOutInQuad(1, 0.0f, 2.0f, 3), 1.0f + powf(-1.0f / 3.0f, 2.0f));
}

TEST(EasingDeathTest, AnOverflowingFrameNumberEndsTheProcess) {
    const Animator animator;
    constexpr auto kMost = std::numeric_limits<std::int64_t>::max();
    EXPECT_DEATH(animator.easeOutInQuad(kMost - 1, 0.0f, 1.0f, kMost), "overflow");
    EXPECT_DEATH(animator.easeOutInSine(kMost / 2, 0.0f, 1.0f, -kMost), "overflow");
    EXPECT_DEATH(animator.easeInOutBounce(kMost, 0.0f, 1.0f, 1), "cannot be converted");
    EXPECT_DEATH(animator.easeInBounce(-kMost, 0.0f, 1.0f, 1), "cannot be converted");
}
