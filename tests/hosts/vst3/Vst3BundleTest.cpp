// The built bundle as a host without a display sees it.
#include "Vst3TestHost.h"

#include "hosts/shared/UnitHost.h"
#include "kernel/ParameterTable.h"
#include "support/GermanLocale.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdlib>
#include <numeric>

using namespace qor;
using namespace test;

namespace {

constexpr v3_param_id kHostBypass = kParameterCount;

/// A loud tone, different in the two channels.
std::vector<float> tone(std::size_t frames) {
    std::vector<float> samples(2 * frames);
    for (std::size_t i = 0; i < frames; ++i) {
        const double phase = static_cast<double>(i) * 0.05;
        samples[2 * i] = static_cast<float>(1.7 * std::sin(phase));
        samples[2 * i + 1] = static_cast<float>(1.1 * std::cos(phase * 1.3));
    }
    return samples;
}

/// Values that no short number text holds.
float oddValue(std::size_t address) {
    const ParameterRow& row = kParameterTable[address];
    return row.isStepped() ? row.maximum : 0.1F + 0.8F * std::sqrt(static_cast<float>(address + 1)) / 4.0F;
}

class Vst3Bundle : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_NE(vst3Factory(), nullptr); }

    /// Moves all parameters to odd values by a block's automation.
    static void moveAll(Vst3Instance& instance) {
        std::vector<HostChange> changes;
        for (const ParameterRow& row : kParameterTable) {
            const auto id = static_cast<v3_param_id>(row.address);
            const double plain = oddValue(row.address);
            changes.push_back({id, 0,
                               v3_cpp_obj(instance.controller)
                                   ->plain_parameter_to_normalised(instance.controller, id, plain)});
        }
        instance.process(tone(64), 64, changes);
    }
    static void expectOddValues(Vst3Instance& instance) {
        for (const ParameterRow& row : kParameterTable) {
            const auto id = static_cast<v3_param_id>(row.address);
            const double plain =
                v3_cpp_obj(instance.controller)
                    ->normalised_parameter_to_plain(instance.controller, id, instance.value(id));
            EXPECT_NEAR(plain, static_cast<double>(oddValue(row.address)), 1e-6) << row.hostName;
        }
    }

    static void forgetDisplay() {
        ::unsetenv("DISPLAY"); // NOLINT(concurrency-mt-unsafe): nobody else reads it meanwhile
    }

    Vst3TestHost host;
};

} // namespace

TEST_F(Vst3Bundle, HasOneParameterForEachAddressAndTheHostsBypass) {
    const Vst3Instance instance(host);
    ASSERT_EQ(v3_cpp_obj(instance.controller)->get_parameter_count(instance.controller),
              static_cast<std::int32_t>(kParameterCount) + 1);
    for (std::int32_t i = 0; i <= static_cast<std::int32_t>(kParameterCount); ++i) {
        v3_param_info info{};
        ASSERT_EQ(v3_cpp_obj(instance.controller)->get_parameter_info(instance.controller, i, &info), V3_OK);
        EXPECT_EQ(info.param_id, static_cast<v3_param_id>(i));
        EXPECT_EQ((info.flags & V3_PARAM_IS_BYPASS) != 0, info.param_id == kHostBypass);
    }
}

TEST_F(Vst3Bundle, SaysThatItsHalvesCanNotBeKeptApart) {
    v3_plugin_factory_2** factory = nullptr;
    ASSERT_EQ(v3_cpp_obj_query_interface(vst3Factory(), v3_plugin_factory_2_iid, &factory), V3_OK);
    v3_class_info_2 info{};
    ASSERT_EQ(v3_cpp_obj(factory)->get_class_info_2(factory, 0, &info), V3_OK);
    EXPECT_EQ(info.class_flags & V3_DISTRIBUTABLE, 0U);
    EXPECT_STREQ(info.name, "QOR Limiter");
    v3_cpp_obj_unref(factory);
    EXPECT_EQ(v3_cpp_obj(vst3Factory())->num_classes(vst3Factory()), 1);
}

TEST_F(Vst3Bundle, RendersAsTheUnitDoes) {
    Vst3Instance instance(host);
    instance.activate();
    const std::vector<float> input = tone(5000);
    const std::vector<float> output = instance.process(input, 500);
    auto unit = host::UnitHost::create();
    ASSERT_TRUE(unit);
    ASSERT_TRUE(unit.value()->activate(48000.0));
    std::vector<float> left(5000);
    std::vector<float> right(5000);
    for (std::size_t i = 0; i < left.size(); ++i) {
        left[i] = input[2 * i];
        right[i] = input[2 * i + 1];
    }
    float* channels[2] = {left.data(), right.data()};
    unit.value()->render(channels, channels, 5000, host::SpanEvents({}));
    for (std::size_t i = 0; i < left.size(); ++i) {
        ASSERT_EQ(std::bit_cast<std::uint32_t>(output[2 * i]), std::bit_cast<std::uint32_t>(left[i])) << i;
        ASSERT_EQ(std::bit_cast<std::uint32_t>(output[2 * i + 1]), std::bit_cast<std::uint32_t>(right[i]))
            << i;
    }
    instance.deactivate();
}

TEST_F(Vst3Bundle, TakesChangesThatComeWithoutFrames) {
    Vst3Instance byFlush(host);
    Vst3Instance byBlock(host);
    byFlush.activate();
    byBlock.activate();
    constexpr auto kTrim = static_cast<v3_param_id>(kLimiterTrim);
    byFlush.flush({{kTrim, 0, 0.9}, {kTrim, 0, 0.25}, {kHostBypass + 1, 0, 0.5}, {kTrim + 1, 0, 2.0}});
    EXPECT_EQ(byFlush.value(kTrim), 0.25);
    EXPECT_EQ(byFlush.process(tone(1000)), byBlock.process(tone(1000), 1000, {{kTrim, 0, 0.25}}));
    EXPECT_EQ(byFlush.state(), byBlock.state());
}

TEST_F(Vst3Bundle, SavesAndRestoresEveryValueToTheBit) {
    Vst3Instance first(host);
    first.activate();
    moveAll(first);
    const std::vector<char> saved = first.state();
    ASSERT_FALSE(saved.empty());
    Vst3Instance second(host);
    ASSERT_TRUE(second.restore(saved));
    EXPECT_EQ(second.state(), saved);
    second.activate();
    first.deactivate();
    first.activate();
    EXPECT_EQ(second.process(tone(3000)), first.process(tone(3000)));
    EXPECT_EQ(second.state(), saved);
    expectOddValues(second);
}

TEST_F(Vst3Bundle, KeepsItsStateInALocaleWithADecimalComma) {
    Vst3Instance first(host);
    first.activate();
    moveAll(first);
    const std::vector<char> saved = first.state();
    const GermanLocale german;
    EXPECT_EQ(first.state(), saved);
    Vst3Instance second(host);
    ASSERT_TRUE(second.restore(saved));
    EXPECT_EQ(second.state(), saved);
    expectOddValues(second);
}

TEST_F(Vst3Bundle, KeepsItsStateThroughStreamsThatTakeAndGiveItInParts) {
    Vst3Instance first(host);
    first.activate();
    moveAll(first);
    const std::vector<char> saved = first.state();
    for (const std::int32_t most : {1, 2, 7, 100, 511, 512}) {
        EXPECT_EQ(first.state(most), saved) << most;
        Vst3Instance second(host);
        ASSERT_TRUE(second.restore(saved, most)) << most;
        EXPECT_EQ(second.state(), saved) << most;
    }
}

TEST_F(Vst3Bundle, RefusesAStreamThatTakesNothingAndAStateThatBreaksOff) {
    Vst3Instance instance(host);
    EXPECT_TRUE(instance.state(0).empty());
    const std::vector<char> saved = instance.state();
    EXPECT_FALSE(instance.restore({}));
    EXPECT_FALSE(instance.restore({saved.begin(), saved.begin() + 100}));
    EXPECT_EQ(v3_cpp_obj(instance.component)->get_state(instance.component, nullptr), V3_INVALID_ARG);
    EXPECT_EQ(v3_cpp_obj(instance.component)->set_state(instance.component, nullptr), V3_INVALID_ARG);
}

TEST_F(Vst3Bundle, TellsTheEditorsSizeAtEachScaleBeforeItIsAttached) {
    forgetDisplay();
    const Vst3Instance instance(host);
    v3_plugin_view** const view = instance.createView();
    ASSERT_NE(view, nullptr);
    v3_view_rect rect{};
    ASSERT_EQ(v3_cpp_obj(view)->get_size(view, &rect), V3_OK);
    EXPECT_EQ(rect.right - rect.left, 512);
    const std::int32_t single = rect.bottom - rect.top;
    EXPECT_GT(single, 340);
    v3_plugin_view_content_scale** scaling = nullptr;
    ASSERT_EQ(v3_cpp_obj_query_interface(view, v3_plugin_view_content_scale_iid, &scaling), V3_OK);
    EXPECT_EQ(v3_cpp_obj(scaling)->set_content_scale_factor(scaling, 2.0F), V3_OK);
    ASSERT_EQ(v3_cpp_obj(view)->get_size(view, &rect), V3_OK);
    EXPECT_EQ(rect.right, 1024);
    EXPECT_EQ(rect.bottom, 2 * single);
    EXPECT_EQ(v3_cpp_obj(scaling)->set_content_scale_factor(scaling, 0.0F), V3_INVALID_ARG);
    EXPECT_EQ(v3_cpp_obj(scaling)->set_content_scale_factor(scaling, std::nanf("")), V3_INVALID_ARG);
    v3_cpp_obj_unref(scaling);
    EXPECT_EQ(v3_cpp_obj_unref(view), 0U);
}

TEST_F(Vst3Bundle, HoldsTheEditorsSizesToItsAspectAndRange) {
    forgetDisplay();
    const Vst3Instance instance(host);
    v3_plugin_view** const view = instance.createView();
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(v3_cpp_obj(view)->can_resize(view), V3_TRUE);
    v3_view_rect own{};
    v3_cpp_obj(view)->get_size(view, &own);
    const auto constrained = [view](std::int32_t width, std::int32_t height) {
        v3_view_rect rect{10, 20, 10 + width, 20 + height};
        EXPECT_EQ(v3_cpp_obj(view)->check_size_constraint(view, &rect), V3_TRUE);
        EXPECT_EQ(rect.left, 10);
        EXPECT_EQ(rect.top, 20);
        return std::pair(rect.right - rect.left, rect.bottom - rect.top);
    };
    EXPECT_EQ(constrained(own.right, own.bottom), std::pair(own.right, own.bottom));
    // One edge takes the other with it; both fit the smaller one.
    EXPECT_EQ(constrained(1024, own.bottom), std::pair(1024, 2 * own.bottom));
    EXPECT_EQ(constrained(own.right, 2 * own.bottom), std::pair(1024, 2 * own.bottom));
    EXPECT_EQ(constrained(1024, 5000), std::pair(1024, 2 * own.bottom));
    EXPECT_EQ(constrained(1, 2), std::pair(256, own.bottom / 2));
    EXPECT_EQ(constrained(30000, 30001), std::pair(2048, 4 * own.bottom));
    EXPECT_EQ(v3_cpp_obj(view)->check_size_constraint(view, nullptr), V3_INVALID_ARG);
    v3_cpp_obj_unref(view);
}

TEST_F(Vst3Bundle, RefusesToShowTheEditorWithoutADisplayAndOnOtherPlatforms) {
    forgetDisplay();
    const Vst3Instance instance(host);
    v3_plugin_view** const view = instance.createView();
    ASSERT_NE(view, nullptr);
    v3_cpp_obj(view)->set_frame(view, host.frame());
    EXPECT_EQ(v3_cpp_obj(view)->is_platform_type_supported(view, V3_VIEW_PLATFORM_TYPE_X11), V3_TRUE);
    EXPECT_NE(v3_cpp_obj(view)->is_platform_type_supported(view, V3_VIEW_PLATFORM_TYPE_HWND), V3_TRUE);
    constexpr std::uintptr_t kParent = 77;
    EXPECT_NE(attachTo(view, kParent, V3_VIEW_PLATFORM_TYPE_X11), V3_OK);
    EXPECT_NE(attachTo(view, kParent, V3_VIEW_PLATFORM_TYPE_NSVIEW), V3_OK);
    EXPECT_NE(attachTo(view, 0, V3_VIEW_PLATFORM_TYPE_X11), V3_OK);
    EXPECT_NE(v3_cpp_obj(view)->removed(view), V3_OK);
    EXPECT_TRUE(host.timers.empty());
    EXPECT_EQ(host.runLoopReferences, 0);
    EXPECT_EQ(v3_cpp_obj_unref(view), 0U);
    EXPECT_EQ(host.messages, 0);
}
