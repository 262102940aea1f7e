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
            const float start = animator._action(0, source, destination - source, frames);
            ASSERT_NEAR(static_cast<double>(start),
                        static_cast<double>(source) +
                            amount * test::EasingReference::value(name.form, name.kind, 0, frames),
                        4e-6 * std::max(1.0, std::abs(amount)))
                << name.form << name.kind << " frame 0 of " << frames;
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

TEST(EnumEasing, NumbersItsNamesInOrder) {
    using E = EnumEasing;
    const std::vector<E> names = {
        E::EASING_easeNone,        E::EASING_easeInQuad,       E::EASING_easeOutQuad,
        E::EASING_easeInOutQuad,   E::EASING_easeOutInQuad,    E::EASING_easeInCubic,
        E::EASING_easeOutCubic,    E::EASING_easeInOutCubic,   E::EASING_easeOutInCubic,
        E::EASING_easeInQuart,     E::EASING_easeOutQuart,     E::EASING_easeInOutQuart,
        E::EASING_easeOutInQuart,  E::EASING_easeInQuint,      E::EASING_easeOutQuint,
        E::EASING_easeInOutQuint,  E::EASING_easeOutInQuint,   E::EASING_easeInSine,
        E::EASING_easeOutSine,     E::EASING_easeInOutSine,    E::EASING_easeOutInSine,
        E::EASING_easeInExpo,      E::EASING_easeOutExpo,      E::EASING_easeInOutExpo,
        E::EASING_easeOutInExpo,   E::EASING_easeInCirc,       E::EASING_easeOutCirc,
        E::EASING_easeInOutCirc,   E::EASING_easeOutInCirc,    E::EASING_easeInElastic,
        E::EASING_easeOutElastic,  E::EASING_easeInOutElastic, E::EASING_easeOutInElastic,
        E::EASING_easeInBack,      E::EASING_easeOutBack,      E::EASING_easeInOutBack,
        E::EASING_easeOutInBack,   E::EASING_easeInBounce,     E::EASING_easeOutBounce,
        E::EASING_easeInOutBounce, E::EASING_easeOutInBounce,  E::EASING_easeLast,
    };
    ASSERT_EQ(names.size(), 42u);
    for (std::size_t raw = 0; raw < names.size(); ++raw) {
        EXPECT_EQ(static_cast<std::size_t>(names[raw]), raw);
        EXPECT_EQ(qor::initRawValue(static_cast<std::int64_t>(raw)), names[raw]);
    }
}

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

TEST(Easing, RoundsEachOperationToSinglePrecision) {
    // Worked out with every operation rounded on its own; in double precision each ends in other bits.
    const Animator animator;
    EXPECT_EQ(animator.easeNone(2, 0.1f, 1.7f, 7), 0x1.2be2c0p-1f);
    EXPECT_EQ(animator.easeOutQuad(2, 0.1f, 1.7f, 7), 0x1.dd84b6p-1f);
    EXPECT_EQ(animator.easeInBack(4, 0.1f, 1.7f, 7), 0x1.961eb0p-7f);
    EXPECT_EQ(animator.easeOutBack(1, 0.1f, 1.7f, 11), 0x1.7aedfap-1f);
    EXPECT_EQ(animator.easeOutBounce(1, 0.1f, 1.7f, 7), 0x1.7311c6p-2f);
    EXPECT_EQ(animator.easeOutBounce(6, 0.1f, 1.7f, 11), 0x1.600002p+0f);
    EXPECT_EQ(animator.easeOutBounce(6, 0.1f, 1.7f, 7), 0x1.b69890p+0f);
    EXPECT_EQ(animator.easeOutBounce(10, 0.1f, 1.7f, 11), 0x1.ccccccp+0f);
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
