#include "HostRendering.h"
#include "kernel/ParameterTable.h"
#include "platform/audio/Audio.h"
#include "support/CapturedLog.h"

#include <gtest/gtest.h>

#include <limits>

using namespace qor;
using namespace qor::host;

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

class UnitHostAudioTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(host->activate(48000.0)); }

    test::CapturedLog log;
    std::unique_ptr<UnitHost> host = test::makeHost();
};

/// What the adapter makes of a signal without any host: the limiter alone.
test::Stereo renderByAdapter(const test::Stereo& input, std::uint32_t block,
                             const std::vector<std::pair<AUParameterAddress, float>>& settings) {
    QOR_Limiter_ExtensionDSPKernelAdapter adapter;
    const auto set = [&adapter](AUParameterAddress address, float value) {
        adapter.setParameterEx(static_cast<std::int32_t>(address), value);
    };
    for (const ParameterRow& row : kParameterTable) {
        set(row.address, row.defaultValue);
    }
    adapter.allocateRenderResources();
    set(kLimiterInputFilterHP, 0.0F);
    set(kLimiterInputFilterLP, 1.0F);
    for (const auto& [address, value] : settings) {
        set(address, value);
    }
    test::Stereo output = test::silence(input.frames());
    for (std::size_t start = 0; start < input.frames(); start += block) {
        const auto count = static_cast<std::uint32_t>(std::min<std::size_t>(block, input.frames() - start));
        const AURenderPullInputBlock pull = [&](AudioUnitRenderActionFlags*, const AudioTimeStamp*,
                                                std::uint32_t n, long, AudioBufferList* list) {
            std::copy_n(input.left.data() + start, n, static_cast<float*>(list->mBuffers[0].mData));
            std::copy_n(input.right.data() + start, n, static_cast<float*>(list->mBuffers[1].mData));
            return noErr;
        };
        AudioBufferListStorage<2> list;
        list.list.mBuffers[0] = {1, count * 4U, output.left.data() + start};
        list.list.mBuffers[1] = {1, count * 4U, output.right.data() + start};
        AudioUnitRenderActionFlags flags = 0;
        AudioTimeStamp time;
        time.mSampleTime = static_cast<double>(start);
        EXPECT_EQ(adapter.render(&flags, &time, count, 0, &list.list, nullptr, pull), noErr);
    }
    return output;
}

} // namespace

TEST_F(UnitHostAudioTest, WithTheFinalLimiterOffItIsTheAdapterBitForBitAtAnyBlockSize) {
    const test::Stereo input = test::noise(20000, 1.5F);
    const std::vector<std::pair<AUParameterAddress, float>> settings{{kLimiterThreshold, 0.4F},
                                                                     {kLimiterAttack, 0.3F},
                                                                     {kLimiterMode, 2.0F},
                                                                     {kLimiterFinalLimiter, 0.0F}};
    const test::Stereo expected = renderByAdapter(input, 512, settings);
    for (const std::uint32_t block : {1U, 7U, 64U, 480U, 4096U, 20000U}) {
        const auto each = test::makeHost();
        ASSERT_TRUE(each->activate(48000.0));
        for (const auto& [address, value] : settings) {
            ASSERT_TRUE(each->setParameter(address, value));
        }
        EXPECT_TRUE(test::sameBits(test::render(*each, input, block), expected)) << block;
    }
}

TEST_F(UnitHostAudioTest, TheFinalLimiterWorksOnWhatTheKernelMade) {
    const test::Stereo input = test::noise(8192, 0.9F);
    const auto other = test::makeHost();
    ASSERT_TRUE(other->activate(48000.0));
    ASSERT_TRUE(host->setParameter(kLimiterThreshold, 1.0F));
    ASSERT_TRUE(other->setParameter(kLimiterThreshold, 0.1F));
    const test::Stereo open = test::render(*host, input, 256);
    const test::Stereo limited = test::render(*other, input, 256);
    EXPECT_FALSE(test::sameBits(open, limited));
    // Once the gain has settled; the first samples meet it wide open.
    const auto settled = [](const test::Stereo& signal) {
        return test::Stereo{{signal.left.begin() + 4096, signal.left.end()},
                            {signal.right.begin() + 4096, signal.right.end()}}
            .peak();
    };
    EXPECT_LT(settled(limited), 0.6F * settled(open));
}

TEST_F(UnitHostAudioTest, HotInputNeverLeavesAboveFullScaleWithTheFinalLimiterOn) {
    for (const float threshold : {0.0F, 0.5F, 1.0F}) {
        for (const float mode : {0.0F, 1.0F, 2.0F, 3.0F}) {
            ASSERT_TRUE(host->setParameter(kLimiterThreshold, threshold));
            ASSERT_TRUE(host->setParameter(kLimiterMode, mode));
            ASSERT_TRUE(host->setParameter(kLimiterTrim, 1.0F));
            EXPECT_LE(test::render(*host, test::noise(20000, 15.85F), 333).peak(), 1.0F)
                << threshold << " " << mode;
        }
    }
}

TEST_F(UnitHostAudioTest, WithPlainPullTheOutputIsTheSystemLimitersOfTheDryInput) {
    UnitHostOptions options;
    options.plainPull = true;
    const auto plain = test::makeHost(options);
    ASSERT_TRUE(plain->activate(48000.0));
    ASSERT_TRUE(plain->setParameter(kLimiterThreshold, 0.1F));
    const test::Stereo input = test::noise(8192, 3.0F);

    // A system limiter on its own, with the settings that the unit gives it.
    AUPeakLimiter alone;
    const Ref<AUAudioUnit> unit = alone.auAudioUnit();
    ASSERT_TRUE((*unit->outputBusses())[0].setFormat(AVAudioFormat(48000.0, 2)));
    ASSERT_TRUE((*unit->inputBusses())[0].setFormat(AVAudioFormat(48000.0, 2)));
    ASSERT_TRUE(unit->allocateRenderResources());
    alone.setAttackTime(0.1);
    alone.setDecayTime(0.1);
    alone.setPreGain(-0.01);
    const AUInternalRenderBlock block = unit->internalRenderBlock();
    test::Stereo expected = test::silence(input.frames());
    for (std::size_t start = 0; start < input.frames(); start += 512) {
        const AURenderPullInputBlock pull = [&](AudioUnitRenderActionFlags*, const AudioTimeStamp*,
                                                std::uint32_t n, long, AudioBufferList* list) {
            std::copy_n(input.left.data() + start, n, static_cast<float*>(list->mBuffers[0].mData));
            std::copy_n(input.right.data() + start, n, static_cast<float*>(list->mBuffers[1].mData));
            return noErr;
        };
        AudioBufferListStorage<2> list;
        list.list.mBuffers[0] = {1, 2048, expected.left.data() + start};
        list.list.mBuffers[1] = {1, 2048, expected.right.data() + start};
        AudioUnitRenderActionFlags flags = 0;
        AudioTimeStamp time;
        time.mSampleTime = static_cast<double>(start);
        ASSERT_EQ(block(&flags, &time, 512, 0, &list.list, nullptr, pull), noErr);
    }
    EXPECT_TRUE(test::sameBits(test::render(*plain, input, 512), expected));
}

TEST_F(UnitHostAudioTest, OneHostileSampleNeitherMutesNorPoisonsWhatFollows) {
    for (const float hostile : {kInfinity, -kInfinity, kNaN, 1e38F}) {
        for (const float finalLimiter : {0.0F, 1.0F}) {
            const auto each = test::makeHost();
            ASSERT_TRUE(each->activate(48000.0));
            ASSERT_TRUE(each->setParameter(kLimiterFinalLimiter, finalLimiter));
            ASSERT_TRUE(each->setParameter(kLimiterInputFilterLP, 0.9F));
            test::Stereo input = test::noise(96000, 0.25F);
            input.left[1000] = hostile;
            const test::Stereo output = test::render(*each, input, 480);
            for (std::size_t i = 0; i < output.frames(); ++i) {
                ASSERT_TRUE(std::isfinite(output.left[i]) && std::isfinite(output.right[i])) << i;
            }
            const std::vector<float> tail(output.left.end() - 4800, output.left.end());
            const test::Stereo late{tail, tail};
            EXPECT_GT(late.peak(), 0.02F) << hostile << " " << finalLimiter;
            EXPECT_EQ(each->replacements(), 0U);
        }
    }
}

TEST_F(UnitHostAudioTest, AUnitWhoseStateBrokeIsReplacedAndKeepsItsParameters) {
    ASSERT_TRUE(host->setParameter(kLimiterTrim, 0.4F));
    ASSERT_TRUE(host->setParameter(kLimiterFinalLimiter, 0.0F));
    int replaced = 0;
    host->setOnUnitReplaced([&replaced] { ++replaced; });
    host->unit().kernelAdapter->setParameterEx(0, -1e30F); // an attack coefficient that no host could set
    const test::Stereo input = test::noise(4096, 2.0F);
    const test::Stereo during = test::render(*host, input, 256);
    for (std::size_t i = 0; i < during.frames(); ++i) {
        ASSERT_LE(std::fabs(during.left[i]), 256.0F);
    }
    ASSERT_EQ(host->replacements(), 1U);
    // Held down, not muted.
    EXPECT_EQ(during.left.back(), std::min(std::max(input.left.back(), -1.0F), 1.0F));
    host->pump();
    test::render(*host, test::silence(64), 64, {test::parameterAt(0, kLimiterMix, 0.5F)});
    host->pump();
    EXPECT_EQ(replaced, 1);
    EXPECT_EQ(host->parameter(kLimiterTrim), 0.4F);
    EXPECT_EQ(host->parameter(kLimiterMix), 0.5F);
    EXPECT_EQ(host->parameter(kLimiterAttack), 0.0F);
    const test::Stereo after = test::render(*host, test::noise(48000, 0.25F), 256);
    EXPECT_EQ(host->replacements(), 1U);
    EXPECT_GT(after.peak(), 0.1F);
}

TEST_F(UnitHostAudioTest, TellsNobodyOfAReplacementOnceItIsDestroyed) {
    int replaced = 0;
    {
        const auto each = test::makeHost();
        ASSERT_TRUE(each->activate(48000.0));
        each->setOnUnitReplaced([&replaced] { ++replaced; });
        ASSERT_TRUE(each->setParameter(kLimiterFinalLimiter, 0.0F));
        each->unit().kernelAdapter->setParameterEx(0, -1e30F);
        test::render(*each, test::noise(4096, 2.0F), 256);
        each->pump(); // a fresh unit waits for a render call that never comes
        ASSERT_EQ(each->replacements(), 1U);
    }
    EXPECT_EQ(replaced, 0);
}

TEST_F(UnitHostAudioTest, InputAndOutputMayBeTheSamePlacesInEveryCombination) {
    const test::Stereo input = test::noise(9000, 0.8F);
    const test::Stereo expected = test::render(*host, input, 9000);
    {
        const auto each = test::makeHost();
        ASSERT_TRUE(each->activate(48000.0));
        test::Stereo both = input;
        float* const places[2] = {both.left.data(), both.right.data()};
        each->render(places, places, 9000, SpanEvents({}));
        EXPECT_TRUE(test::sameBits(both, expected));
    }
    {
        const auto each = test::makeHost();
        ASSERT_TRUE(each->activate(48000.0));
        test::Stereo both = input;
        const float* const in[2] = {both.left.data(), both.right.data()};
        float* const crossed[2] = {both.right.data(), both.left.data()};
        each->render(in, crossed, 4096, SpanEvents({}));
        EXPECT_EQ(test::firstDifference(both.right, expected.left), 4096U);
        EXPECT_EQ(test::firstDifference(both.left, expected.right), 4096U);
    }
    {
        const auto each = test::makeHost();
        ASSERT_TRUE(each->activate(48000.0));
        std::vector<float> one(9000);
        const float* const in[2] = {input.left.data(), input.right.data()};
        float* const same[2] = {one.data(), one.data()};
        each->render(in, same, 9000, SpanEvents({}));
        EXPECT_EQ(test::firstDifference(one, expected.left), 9000U);
    }
}

TEST_F(UnitHostAudioTest, AbsentChannelsAreSilenceAndDropped) {
    std::vector<float> left(5000, 1.0F);
    const float* const in[2] = {nullptr, nullptr};
    float* const out[2] = {left.data(), nullptr};
    host->render(in, out, 5000, SpanEvents({}));
    EXPECT_EQ(left, std::vector<float>(5000, 0.0F));
}

TEST_F(UnitHostAudioTest, IsSilentBeforeActivation) {
    const auto idle = test::makeHost();
    EXPECT_EQ(test::render(*idle, test::noise(100, 1.0F), 100).peak(), 0.0F);
}

TEST_F(UnitHostAudioTest, ItsBypassLetsTheInputThroughWithoutAClick) {
    const test::Stereo input{std::vector<float>(4800, 0.9F), std::vector<float>(4800, 0.9F)};
    ASSERT_TRUE(host->setParameter(kLimiterThreshold, 0.0F));
    test::render(*host, input, 480);
    host->setBypassed(true);
    const test::Stereo fading = test::render(*host, input, 480);
    for (std::size_t i = 1; i < fading.frames(); ++i) {
        ASSERT_LT(std::fabs(fading.left[i] - fading.left[i - 1]), 0.01F) << i;
    }
    EXPECT_TRUE(test::sameBits(test::render(*host, input, 480), input));
}
