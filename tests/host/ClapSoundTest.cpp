// What the built object makes of sound and events, against a UnitHost of this program.
#include "ClapRendering.h"

#include "hosts/clap/ClapParameters.h"

#include <gtest/gtest.h>

#include <limits>
#include <xmmintrin.h>

using namespace test;
using qor::clap::kBypassId;

namespace {

constexpr std::uint32_t kFrames = 20000;

class ClapSound : public testing::Test {
protected:
    ClapSound() { EXPECT_TRUE(plugin.activate()); }

    ClapTestHost host;
    ClapPluginUnderTest plugin{host};
    Stereo input = noise(kFrames, 1.5F);
};

} // namespace

TEST_F(ClapSound, IsTheBareUnitsBitForBitAtTheDefaults) {
    EXPECT_TRUE(sameBits(renderClap(plugin, input, 512), renderBare(input)));
}

TEST_F(ClapSound, EventsActOnTheirOwnSampleWhateverTheBlockSize) {
    const std::vector<Move> moves = manyMoves(kFrames, 400, 3);
    const Stereo wanted = renderBare(input, moves, 777);
    for (const std::uint32_t block : {1U, 2U, 7U, 32U, 64U, 512U, 1000U, 4096U, 4097U, 8192U}) {
        ClapPluginUnderTest fresh(host);
        ASSERT_TRUE(fresh.activate());
        const Stereo made = renderClap(fresh, input, block, moves);
        EXPECT_EQ(firstDifference(made.left, wanted.left), kFrames) << block;
        EXPECT_EQ(firstDifference(made.right, wanted.right), kFrames) << block;
    }
}

TEST_F(ClapSound, AMoveChangesNothingAheadOfItsSample) {
    const Stereo still = renderBare(input);
    const Stereo moved = renderClap(plugin, input, 8192, {{1234, 4, 1.0}});
    EXPECT_EQ(firstDifference(moved.left, still.left), 1234U);
}

TEST_F(ClapSound, AHundredThousandFramesInOneBlockAreTheSameAsInSmallOnes) {
    const Stereo longer = noise(100000, 1.5F, 5);
    const std::vector<Move> moves = manyMoves(100000, 300, 8);
    EXPECT_TRUE(sameBits(renderClap(plugin, longer, 100000, moves), renderBare(longer, moves)));
}

TEST_F(ClapSound, EventsThatMeanNothingHereChangeNothing) {
    const std::vector<std::uint8_t> sysEx{0xF0, 0x7D, 1, 2, 3, 0xF7};
    ClapEventList events;
    events.absent();
    events.value(10, 12, 0.0);
    events.value(10, 999, 0.0);
    events.value(10, CLAP_INVALID_ID, 0.0);
    events.value(10, 2, std::nan(""));
    events.value(10, 2, std::numeric_limits<double>::infinity());
    events.value(10, 2, 0.0).header.space_id = 1;
    events.value(10, 2, 0.0).header.type = CLAP_EVENT_PARAM_MOD;
    events.value(10, 2, 0.0).header.type = CLAP_EVENT_TRANSPORT;
    events.value(10, 2, 0.0).header.type = 999;
    events.value(10, 2, 0.0).header.size = sizeof(clap_event_header_t);
    events.value(10, kBypassId, std::nan(""));
    events.midi(20, 0x90, 64, 100);
    events.midi(21, 0xC0, 5, 0);
    events.midi(22, 0x40, 5, 0);
    events.midi(23, 0xF8, 0, 0);
    events.sysEx(30, sysEx);
    events.sysEx(31, {}).size = 100; // without its bytes
    Stereo made = silence(kFrames);
    const float* const in[2] = {input.left.data(), input.right.data()};
    float* const out[2] = {made.left.data(), made.right.data()};
    EXPECT_EQ(plugin.process(in, out, kFrames, events.table()), CLAP_PROCESS_CONTINUE);
    EXPECT_TRUE(sameBits(made, renderBare(input)));
}

TEST_F(ClapSound, ValuesBeyondTheRangeAreHeldToItAndSteppedOnesCutToWholeNumbers) {
    ClapEventList events;
    events.value(0, 2, 1e300);
    events.value(0, 4, -5.0);
    events.value(0, 6, 2.9);
    events.value(0, 11, 0.99);
    const float* const none[2] = {nullptr, nullptr};
    float* const nowhere[2] = {nullptr, nullptr};
    plugin.process(none, nowhere, 1, events.table());
    EXPECT_EQ(plugin.value(2), 1.0);
    EXPECT_EQ(plugin.value(4), 0.0);
    EXPECT_EQ(plugin.value(6), 2.0);
    EXPECT_EQ(plugin.value(11), 0.0);
}

TEST_F(ClapSound, EventsOutOfOrderAndBehindTheBlocksEndAreNeverLost) {
    ClapEventList events;
    events.value(500, 2, 0.25);
    events.value(100, 3, 0.75);
    events.value(100000, 4, 0.6F);
    Stereo made = silence(1000);
    const float* const in[2] = {input.left.data(), input.right.data()};
    float* const out[2] = {made.left.data(), made.right.data()};
    plugin.process(in, out, 1000, events.table());
    Stereo start = silence(1000);
    std::copy_n(input.left.begin(), 1000, start.left.begin());
    std::copy_n(input.right.begin(), 1000, start.right.begin());
    EXPECT_TRUE(sameBits(made, renderBare(start, {{100, 3, 0.75}, {500, 2, 0.25}, {999, 4, 0.6F}}, 1000)));
}

TEST_F(ClapSound, TenThousandEventsInABlockAllAct) {
    const std::vector<Move> moves = manyMoves(512, 10000, 11);
    EXPECT_TRUE(sameBits(renderClap(plugin, input, 512, moves), renderBare(input, moves)));
    const std::vector<Move> bypassMoves(10000, Move{5, kBypassId, 1.0});
    renderClap(plugin, noise(512, 0.5F), 512, bypassMoves);
    EXPECT_EQ(plugin.value(kBypassId), 1.0);
}

TEST_F(ClapSound, WithoutFramesEventsActAtOnce) {
    ClapEventList events;
    events.value(0, 2, 0.25);
    events.value(77, kBypassId, 1.0);
    const float* const none[2] = {nullptr, nullptr};
    float* const nowhere[2] = {nullptr, nullptr};
    EXPECT_EQ(plugin.process(none, nowhere, 0, events.table()), CLAP_PROCESS_CONTINUE);
    EXPECT_EQ(plugin.value(2), 0.25);
    EXPECT_EQ(plugin.value(kBypassId), 1.0);
}

TEST_F(ClapSound, MissingChannelsPortsAndListsAreSilenceOrDropped) {
    Stereo left = silence(kFrames);
    left.left = input.left;
    const Stereo wanted = renderBare(left);
    Stereo made = silence(kFrames);
    const float* const in[2] = {input.left.data(), nullptr};
    float* const out[2] = {made.left.data(), made.right.data()};
    plugin.process(in, out, kFrames);
    EXPECT_TRUE(sameBits(made, wanted));

    clap_process_t block{};
    block.frames_count = 64;
    EXPECT_EQ(plugin->process(plugin.get(), &block), CLAP_PROCESS_CONTINUE); // no ports at all
    EXPECT_EQ(plugin->process(plugin.get(), nullptr), CLAP_PROCESS_ERROR);
    clap_audio_buffer_t empty{};
    block.audio_inputs = &empty;
    block.audio_outputs = &empty;
    block.audio_inputs_count = 1;
    block.audio_outputs_count = 1;
    EXPECT_EQ(plugin->process(plugin.get(), &block), CLAP_PROCESS_ERROR); // no samples to write to
    clap_input_events_t hollow{};
    block.in_events = &hollow;
    block.frames_count = 0;
    EXPECT_EQ(plugin->process(plugin.get(), &block), CLAP_PROCESS_CONTINUE);
}

TEST_F(ClapSound, AMonoPortAndSurplusChannelsGetSoundAndSilence) {
    std::vector<float> third(256, 9.0F);
    Stereo made = silence(256);
    float* in[2] = {input.left.data(), input.right.data()};
    float* out[3] = {made.left.data(), made.right.data(), third.data()};
    clap_audio_buffer_t inputs{in, nullptr, 2, 0, 0};
    clap_audio_buffer_t outputs{out, nullptr, 3, 0, 7};
    clap_process_t block{};
    block.frames_count = 256;
    block.audio_inputs = &inputs;
    block.audio_outputs = &outputs;
    block.audio_inputs_count = 1;
    block.audio_outputs_count = 1;
    EXPECT_EQ(plugin->process(plugin.get(), &block), CLAP_PROCESS_CONTINUE);
    EXPECT_EQ(third, std::vector<float>(256));
    EXPECT_EQ(outputs.constant_mask, 0U);
    EXPECT_GT(made.peak(), 0.0F);
    outputs.channel_count = 1;
    made.right.assign(256, 3.0F);
    plugin->process(plugin.get(), &block);
    EXPECT_EQ(made.right, std::vector<float>(256, 3.0F)); // not the host's to write to
}

TEST_F(ClapSound, InputAndOutputMayShareMemoryInEveryCombination) {
    const Stereo wanted = renderBare(input, {{300, 11, 0.0}}, 256);
    struct Places {
        int inLeft, inRight, outLeft, outRight;
    };
    // Places 0 and 1 hold the input; 2 and 3 are fresh.
    for (const Places p : {Places{0, 1, 0, 1}, Places{0, 1, 1, 0}, Places{0, 1, 2, 1}, Places{0, 1, 0, 3},
                           Places{0, 1, 1, 3}, Places{0, 1, 2, 0}, Places{0, 1, 2, 3}}) {
        ClapPluginUnderTest fresh(host);
        ASSERT_TRUE(fresh.activate());
        std::vector<float> places[4] = {input.left, input.right, std::vector<float>(kFrames),
                                        std::vector<float>(kFrames)};
        for (std::uint32_t start = 0; start < kFrames; start += 500) {
            ClapEventList events;
            if (start == 0) {
                events.value(300, 11, 0.0);
            }
            const float* const in[2] = {places[p.inLeft].data() + start, places[p.inRight].data() + start};
            float* const out[2] = {places[p.outLeft].data() + start, places[p.outRight].data() + start};
            fresh.process(in, out, 500, events.table());
        }
        EXPECT_EQ(firstDifference(places[p.outLeft], wanted.left), kFrames) << p.outLeft << p.outRight;
        EXPECT_EQ(firstDifference(places[p.outRight], wanted.right), kFrames) << p.outLeft << p.outRight;
    }
}

TEST_F(ClapSound, BothInputsAndBothOutputsMayBeOnePlace) {
    Stereo twice = silence(kFrames);
    twice.left = input.left;
    twice.right = input.left;
    const Stereo wanted = renderBare(twice);
    Stereo made = silence(kFrames);
    const float* const in[2] = {input.left.data(), input.left.data()};
    float* const out[2] = {made.left.data(), made.left.data()};
    plugin.process(in, out, kFrames);
    EXPECT_EQ(firstDifference(made.left, wanted.left), kFrames);
}

TEST_F(ClapSound, SamplesThatAreNotFiniteNeverComeOut) {
    const float bad[] = {std::nanf(""), std::numeric_limits<float>::infinity(),
                         -std::numeric_limits<float>::infinity(), std::numeric_limits<float>::max()};
    for (std::size_t i = 0; i < kFrames; i += 97) {
        input.left[i] = bad[i % 4];
        input.right[i] = bad[(i + 1) % 4];
    }
    const Stereo made = renderClap(plugin, input, 333, manyMoves(kFrames, 100, 4));
    EXPECT_TRUE(std::all_of(made.left.begin(), made.left.end(), [](float x) { return std::isfinite(x); }));
    EXPECT_TRUE(std::all_of(made.right.begin(), made.right.end(), [](float x) { return std::isfinite(x); }));
}

TEST_F(ClapSound, TheHostsFloatingPointSettingIsBackAfterACall) {
    for (const unsigned setting : {0x1F80U, 0x9FC0U, 0x1FA0U}) {
        _mm_setcsr(setting);
        renderClap(plugin, noise(64, 0.5F), 64);
        const unsigned after = _mm_getcsr();
        _mm_setcsr(0x1F80U);
        EXPECT_EQ(after & 0xFFC0U, setting & 0xFFC0U);
    }
}

TEST_F(ClapSound, ResetDoesToTheSoundWhatItDoesInTheBareUnit) {
    const std::vector<Move> moves{{0, 9, 0.2F}, {0, 10, 0.7F}, {0, 2, 0.3F}};
    renderClap(plugin, input, 512, moves);
    plugin->reset(plugin.get());
    const auto bare = makeHost();
    ASSERT_TRUE(bare->activate(48000.0).ok());
    render(*bare, input, 512, {parameterAt(0, 9, 0.2F), parameterAt(0, 10, 0.7F), parameterAt(0, 2, 0.3F)});
    bare->resetInRender();
    EXPECT_TRUE(sameBits(renderClap(plugin, input, 512), render(*bare, input, 512)));
    EXPECT_EQ(plugin.value(10), static_cast<double>(0.7F));
}

TEST(ClapRates, FromVeryLowToVeryHighSoundLikeTheBareUnit) {
    ClapTestHost host;
    const Stereo input = noise(4000, 1.5F, 2);
    for (const double rate : {8000.0, 22050.0, 44100.0, 48000.0, 96000.0, 192000.0, 384000.0, 44100.5}) {
        ClapPluginUnderTest plugin(host);
        ASSERT_TRUE(plugin.activate(rate)) << rate;
        EXPECT_TRUE(sameBits(renderClap(plugin, input, 512), renderBare(input, {}, 512, rate))) << rate;
    }
}

TEST(ClapRates, ThatMakeNoSenseAreRefusedAndLeaveThePluginUsable) {
    ClapTestHost host;
    ClapPluginUnderTest plugin(host);
    for (const double rate : {0.0, -48000.0, std::nan(""), std::numeric_limits<double>::infinity(), 1e30}) {
        EXPECT_FALSE(plugin.activate(rate)) << rate;
    }
    EXPECT_EQ(host.logged.size(), 5U);
    EXPECT_TRUE(plugin.activate(48000.0));
}

TEST(ClapActivation, BetweenCyclesValuesStayAndProcessingNeedsOne) {
    ClapTestHost host;
    ClapPluginUnderTest plugin(host);
    EXPECT_FALSE(plugin->start_processing(plugin.get()));
    const float* const none[2] = {nullptr, nullptr};
    float* const nowhere[2] = {nullptr, nullptr};
    EXPECT_EQ(plugin.process(none, nowhere, 64), CLAP_PROCESS_ERROR);
    plugin.setValue(2, 0.25);
    for (int cycle = 0; cycle < 50; ++cycle) {
        ASSERT_TRUE(plugin.activate(cycle % 2 == 0 ? 44100.0 : 96000.0));
        EXPECT_EQ(plugin.process(none, nowhere, 64), CLAP_PROCESS_CONTINUE);
        plugin.deactivate();
    }
    EXPECT_EQ(plugin.value(2), 0.25);
    EXPECT_EQ(plugin.process(none, nowhere, 64), CLAP_PROCESS_ERROR);
}

TEST(ClapActivation, AValueSetBeforeItIsHeardFromTheFirstSample) {
    ClapTestHost host;
    ClapPluginUnderTest plugin(host);
    plugin.setValue(2, 0.25);
    plugin.setValue(11, 0.0);
    ASSERT_TRUE(plugin.activate());
    const Stereo input = noise(5000, 1.5F);
    const auto bare = makeHost();
    ASSERT_TRUE(bare->setParameter(2, 0.25F).ok());
    ASSERT_TRUE(bare->setParameter(11, 0.0F).ok());
    ASSERT_TRUE(bare->activate(48000.0).ok());
    EXPECT_TRUE(sameBits(renderClap(plugin, input, 512), render(*bare, input, 512)));
}
