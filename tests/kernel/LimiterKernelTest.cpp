#include "kernel/KernelHarness.h"
#include "support/CapturedLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <string_view>

#include <sys/mman.h>

namespace {

using namespace qor; // the parameter addresses
using test::KernelHarness;
using test::Samples;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

class LimiterKernel : public testing::Test {
protected:
    test::CapturedLog log;
    KernelHarness h;

    QOR_Limiter_Extension_DSPKernel& kernel() { return *h.kernel; }

    /// True if the filters have worked since they were last clean.
    bool filtersHaveRun() { return kernel().bandSplit.highFilters[0].band1 != 0.0F; }
};

TEST_F(LimiterKernel, FieldsStartWithTheirDefaults) {
    const QOR_Limiter_Extension_DSPKernel& k = kernel();
    EXPECT_EQ(k.channelCount, 2);
    EXPECT_EQ(k.samplerate, 48000.0F);
    for (AUParameterAddress address = 0; address < 15; ++address) {
        EXPECT_EQ(k.getParameter(address), 0.0F);
    }
    EXPECT_EQ(k.getParameter(15), 48000.0F);
    EXPECT_FALSE(k.bypassed);
    EXPECT_FALSE(k.midiThrough);
    EXPECT_EQ(k.maximumFramesToRender, 4096);
    EXPECT_EQ(k.bandSplit.cutoff1, 0.333F);
    const auto detached = std::make_unique<QOR_Limiter_Extension_DSPKernel>();
    EXPECT_EQ(detached->inBufferList, nullptr);
    EXPECT_EQ(detached->outBufferList, nullptr);
}

TEST_F(LimiterKernel, AFreshKernelTakesTheFilteredPathInModeZero) {
    h.process();
    EXPECT_TRUE(filtersHaveRun());
    // At full mix the output is the limited band, not the limited input.
    Samples expected(h.kernel->bandSplit.bandLeft, h.kernel->bandSplit.bandLeft + h.in[0].size());
    Limiter1 element = std::make_unique<Limiter2>()->limiters[0];
    element.processBuffer(expected.data(), static_cast<int>(expected.size()));
    EXPECT_EQ(h.out[0], expected);
}

TEST_F(LimiterKernel, OpenSlotsTakeTheFilterOutOfTheWay) {
    h.makePlain();
    h.process();
    EXPECT_FALSE(filtersHaveRun());
    Samples expected = h.in[0];
    Limiter1 element = std::make_unique<Limiter2>()->limiters[0];
    element.processBuffer(expected.data(), static_cast<int>(expected.size()));
    EXPECT_EQ(h.out[0], expected);
}

TEST_F(LimiterKernel, ANearlyOpenFilterIsStillTheFilteredPath) {
    h.makePlain();
    kernel().setParameter(kLimiterInputFilterLP, 0.999F);
    h.process();
    EXPECT_TRUE(filtersHaveRun());
}

TEST_F(LimiterKernel, TheSlotDecidesThePathAlsoWhereTheFilterDroppedTheValue) {
    h.makePlain();
    kernel().setParameter(kLimiterInputFilterHP, 7.0F);
    EXPECT_EQ(kernel().getParameter(kLimiterInputFilterHP), 7.0F);
    EXPECT_NE(kernel().bandSplit.cutoff1, 7.0F);
    h.process();
    EXPECT_TRUE(filtersHaveRun());
}

TEST_F(LimiterKernel, TheSlotsAreComparedAsFloats) {
    h.makePlain();
    kernel().setParameter(kLimiterInputFilterHP, -0.0F); // a zero all the same
    kernel().setParameter(kLimiterBypass, -0.0F);
    h.process();
    EXPECT_FALSE(filtersHaveRun());
    EXPECT_NE(h.out[0], h.in[0]);
    kernel().setParameter(kLimiterInputFilterLP, kNaN); // not 1.0
    h.process();
    EXPECT_TRUE(filtersHaveRun());
    kernel().setParameter(kLimiterBypass, kNaN); // not 0.0
    h.process();
    EXPECT_EQ(h.out[0], h.in[0]);
}

TEST_F(LimiterKernel, TheModeIsTruncatedTowardZero) {
    const auto outputInMode = [](float mode) {
        KernelHarness other;
        other.makePlain();
        other.kernel->setParameter(kLimiterMode, mode);
        other.process();
        return other.out;
    };
    EXPECT_EQ(outputInMode(1.9F), outputInMode(1.0F));
    EXPECT_EQ(outputInMode(-0.5F), outputInMode(0.0F));
    EXPECT_EQ(outputInMode(kNaN), outputInMode(0.0F));
    EXPECT_NE(outputInMode(1.0F), outputInMode(0.0F));
    EXPECT_NE(outputInMode(2.0F), outputInMode(0.0F));
    EXPECT_NE(outputInMode(3.0F), outputInMode(2.0F));
}

TEST_F(LimiterKernel, AModeOutOfRangeLeavesTheSignalDryAndTheMetersRunning) {
    for (const float mode : {-1.0F, 4.0F, 1e30F, -std::numeric_limits<float>::infinity()}) {
        KernelHarness other;
        other.makePlain();
        other.kernel->setParameter(kLimiterMode, mode);
        other.process();
        EXPECT_EQ(other.out[0], other.in[0]);
        EXPECT_EQ(other.out[1], other.in[1]);
        EXPECT_EQ(other.kernel->limiter.limiters[0].gain, 1.0F);
        EXPECT_GT(other.kernel->getPeakValue1(), 0.0F);
        EXPECT_GT(other.kernel->getPeakValue2(), 0.0F);
    }
}

TEST_F(LimiterKernel, AModeOutOfRangeStillRunsTheFilter) {
    kernel().setParameter(kLimiterMode, 4.0F);
    h.process();
    EXPECT_TRUE(filtersHaveRun());
    EXPECT_EQ(h.out[0], h.in[0]);
}

TEST_F(LimiterKernel, AnyNonZeroBypassSlotSkipsTheLimiterAndMetersTheDrySignal) {
    for (const float bypass : {1.0F, 0.001F, -1.0F}) {
        KernelHarness other;
        other.kernel->setParameter(kLimiterBypass, bypass);
        other.process();
        EXPECT_EQ(other.out[0], other.in[0]);
        EXPECT_EQ(other.out[1], other.in[1]);
        EXPECT_EQ(other.kernel->bandSplit.highFilters[0].band1, 0.0F);
        Follower dry;
        dry.processBuffer(other.in[0].data(), static_cast<long>(other.in[0].size()));
        EXPECT_EQ(other.kernel->followers[0].value, dry.value);
        EXPECT_GT(dry.value, 0.0);
    }
}

TEST_F(LimiterKernel, TheBypassFlagStopsTheMetersToo) {
    h.process();
    const double value = kernel().followers[0].value;
    const float gain = kernel().limiter.limiters[0].gain;
    ASSERT_GT(value, 0.0);
    kernel().setBypassed(true);
    EXPECT_TRUE(kernel().getBypassed());
    h.process();
    EXPECT_EQ(h.out[0], h.in[0]);
    EXPECT_EQ(kernel().followers[0].value, value);
    EXPECT_EQ(kernel().limiter.limiters[0].gain, gain);
}

TEST_F(LimiterKernel, OneOrThreeChannelsAreCopiedAndNothingElse) {
    for (const int channels : {1, 3}) {
        KernelHarness other;
        other.kernel->init(channels, 48000.0);
        other.process();
        for (std::size_t c = 0; c < 3; ++c) {
            const bool copied = static_cast<int>(c) < channels;
            EXPECT_EQ(other.out[c], copied ? other.in[c] : Samples(other.in[c].size(), 0.0F));
        }
        EXPECT_EQ(other.kernel->followers[0].value, 0.0);
        EXPECT_EQ(other.kernel->limiter.limiters[0].gain, 1.0F);
    }
}

TEST_F(LimiterKernel, AddressSixteenPrintsNothingAndChangesNothing) {
    kernel().setParameter(16, 0.5F);
    kernel().setParameter(std::numeric_limits<AUParameterAddress>::max(), 0.5F);
    EXPECT_THAT(log.lines(), IsEmpty());
    EXPECT_EQ(kernel().getParameter(16), 0.0F);
    EXPECT_EQ(kernel().getParameter(std::numeric_limits<AUParameterAddress>::max()), 0.0F);
    for (AUParameterAddress address = 0; address < 15; ++address) {
        EXPECT_EQ(kernel().getParameter(address), 0.0F);
    }
    EXPECT_EQ(kernel().followers[0].samplerate, 48000.0F);
}

TEST_F(LimiterKernel, AddressFifteenIsTheFirstFollowersSampleRate) {
    h.makePlain();
    log.clear();
    kernel().setParameter(15, 480000.0F);
    EXPECT_THAT(log.lines(), ElementsAre("unit received parameter : address:15, value:480000.000000"));
    EXPECT_EQ(kernel().getParameter(15), 480000.0F);
    EXPECT_EQ(kernel().getSamplerate(), 48000.0F);
    EXPECT_EQ(kernel().followers[0].attackStep, 1.0 / 480.0);
    EXPECT_EQ(kernel().followers[0].releaseStep, 1.0 / 24000.0);
    kernel().setParameter(kLimiterBypass, 1.0F);
    std::fill(h.in[0].begin(), h.in[0].end(), 5.0F);
    std::fill(h.in[1].begin(), h.in[1].end(), 5.0F);
    h.process();
    EXPECT_EQ(kernel().followers[0].holdCounter, 48);
    EXPECT_EQ(kernel().followers[1].holdCounter, 4);
    kernel().setSamplerate(44100.0F);
    EXPECT_EQ(kernel().getParameter(15), 44100.0F);
}

TEST_F(LimiterKernel, EveryParameterWriteIsPrintedInFull) {
    using Limits = std::numeric_limits<float>;
    kernel().setParameter(2, 0.9F);
    kernel().setParameter(12, -0.5F);
    kernel().setParameterAutomated(6, 3.0F, 99);
    kernel().setParameter(13, Limits::quiet_NaN());
    kernel().setParameter(13, -Limits::infinity());
    kernel().setParameter(14, -Limits::max());
    EXPECT_THAT(log.lines(), ElementsAre("unit received parameter : address:2, value:0.900000",
                                         "unit received parameter : address:12, value:-0.500000",
                                         "unit received parameter : address:6, value:3.000000",
                                         "unit received parameter : address:13, value:nan",
                                         "unit received parameter : address:13, value:-inf",
                                         "unit received parameter : address:14, "
                                         "value:-340282346638528859811704183484516925440.000000"));
}

TEST_F(LimiterKernel, TheLineIsWrittenBetweenTheStoreAndTheRouting) {
    struct LookingSink final : LogSink {
        const QOR_Limiter_Extension_DSPKernel* kernel = nullptr;
        float slot = 0.0F;
        float trim = 0.0F;
        void writeLine(std::string_view /*line*/) noexcept override {
            slot = kernel->getParameter(kLimiterTrim);
            trim = kernel->limiter.limiters[0].trim;
        }
    };
    LookingSink sink;
    sink.kernel = &kernel();
    LogSink& before = setLogSink(sink);
    kernel().setParameter(kLimiterTrim, 0.25F);
    setLogSink(before);
    EXPECT_EQ(sink.slot, 0.25F);
    EXPECT_EQ(sink.trim, 0.6F);
    EXPECT_EQ(kernel().limiter.limiters[0].trim, 0.25F);
}

TEST_F(LimiterKernel, ParametersReachBothElements) {
    kernel().setParameter(kLimiterAttack, 0.5F);
    kernel().setParameter(kLimiterRelease, 0.25F);
    kernel().setParameter(kLimiterThreshold, 0.25F);
    kernel().setParameter(kLimiterTrim, 1.0F);
    kernel().setParameter(kLimiterMix, 0.125F);
    kernel().setParameter(kLimiterAudition, 1.0F);
    kernel().setParameter(kLimiterKnee, 0.0F);
    for (const Limiter1& element : kernel().limiter.limiters) {
        EXPECT_FLOAT_EQ(element.attackCoefficient, 0.1F);
        EXPECT_FLOAT_EQ(element.releaseCoefficient, 0.0017782794F);
        EXPECT_FLOAT_EQ(element.thresholdCoefficient,
                        3.1622777F); // the hyperbolic law's, set before the knee
        EXPECT_EQ(element.trimCoefficient, 10.0F);
        EXPECT_EQ(element.mix, 0.125F);
        EXPECT_EQ(element.audition, 1.0F);
        EXPECT_EQ(element.knee, 0.0F);
    }
    EXPECT_EQ(kernel().getParameter(kLimiterTrim), 1.0F);
}

TEST_F(LimiterKernel, FilterEdgesReachTheFilter) {
    kernel().setParameter(kLimiterInputFilterLP, 0.9F);
    kernel().setParameter(kLimiterInputFilterHP, 0.4F);
    EXPECT_EQ(kernel().bandSplit.cutoff1, 0.4F);
    EXPECT_EQ(kernel().bandSplit.cutoff2, 0.9F);
}

TEST_F(LimiterKernel, TheFinalLimitersSlotAndTheInertOnesAreStoredAndUnheard) {
    h.makePlain();
    h.process();
    KernelHarness other;
    other.makePlain();
    for (AUParameterAddress address = kLimiterFinalLimiter; address < 15; ++address) {
        other.kernel->setParameter(address, 1.0F);
        EXPECT_EQ(other.kernel->getParameter(address), 1.0F);
    }
    other.process();
    EXPECT_EQ(other.out, h.out);
    EXPECT_EQ(other.kernel->followers[0].value, kernel().followers[0].value);
}

TEST_F(LimiterKernel, ResetKeepsTheSlotsAndOpensTheFilter) {
    kernel().setParameter(kLimiterInputFilterLP, 0.9F);
    kernel().setParameter(kLimiterInputFilterHP, 0.4F);
    h.process();
    const float gain = kernel().limiter.limiters[0].gain;
    ASSERT_NE(gain, 1.0F);
    kernel().reset();
    EXPECT_EQ(kernel().getParameter(kLimiterInputFilterHP), 0.4F);
    EXPECT_EQ(kernel().bandSplit.cutoff1, 0.0F);
    EXPECT_EQ(kernel().bandSplit.cutoff2, 1.0F);
    EXPECT_EQ(kernel().bandSplit.highFilters[0].cutoff, 1.0F);
    EXPECT_FALSE(filtersHaveRun());
    EXPECT_EQ(kernel().limiter.limiters[0].gain, gain);
    EXPECT_EQ(kernel().getPeakValue1(), 0.0F);
}

TEST_F(LimiterKernel, InitSetsRateAndChannels) {
    kernel().init(1, 44100.0);
    EXPECT_EQ(kernel().channelCount, 1);
    EXPECT_EQ(kernel().getSamplerate(), 44100.0F);
    EXPECT_EQ(kernel().followers[1].samplerate, 44100.0F);
    EXPECT_EQ(kernel().bandSplit.lowFilters[0].samplerate, 44100.0F);
    EXPECT_EQ(kernel().limiter.samplerate, 44100.0F);
    EXPECT_EQ(kernel().bandSplit.cutoff2, 1.0F);
}

TEST_F(LimiterKernel, InPlaceRenderingGivesWhatSeparateBuffersGive) {
    h.process();
    KernelHarness inPlace;
    inPlace.kernel->setBuffers(&inPlace.inList.list, &inPlace.inList.list);
    inPlace.process();
    EXPECT_EQ(inPlace.in[0], h.out[0]);
    EXPECT_EQ(inPlace.in[1], h.out[1]);
    EXPECT_EQ(inPlace.out[0], Samples(h.out[0].size(), 0.0F));
}

TEST_F(LimiterKernel, EqualPointersMeanNoCopy) {
    // Memory that only can be read: one store, even of the value that is there, ends the process.
    constexpr std::size_t kBytes = 64 * sizeof(float);
    void* readOnly = mmap(nullptr, kBytes, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(readOnly, MAP_FAILED);
    kernel().init(1, 48000.0);
    h.inList.list.mBuffers[0].mData = h.outList.list.mBuffers[0].mData = readOnly;
    kernel().process(64, 0);
    EXPECT_EQ(static_cast<float*>(readOnly)[63], 0.0F);
    munmap(readOnly, kBytes);
}

TEST_F(LimiterKernel, TheCopyRunsForwardWhateverOverlaps) {
    kernel().init(1, 48000.0);
    const auto copied = [&](std::size_t from, std::size_t to) {
        Samples shared = {1.0F, 2.0F, 3.0F, 4.0F, 5.0F, 6.0F};
        h.inList.list.mBuffers[0].mData = shared.data() + from;
        h.outList.list.mBuffers[0].mData = shared.data() + to;
        kernel().process(3, 0);
        return shared;
    };
    EXPECT_THAT(copied(0, 1), ElementsAre(1.0F, 1.0F, 1.0F, 1.0F, 5.0F, 6.0F));
    EXPECT_THAT(copied(0, 2), ElementsAre(1.0F, 2.0F, 1.0F, 2.0F, 1.0F, 6.0F));
    EXPECT_THAT(copied(0, 3), ElementsAre(1.0F, 2.0F, 3.0F, 1.0F, 2.0F, 3.0F));
    EXPECT_THAT(copied(1, 0), ElementsAre(2.0F, 3.0F, 4.0F, 4.0F, 5.0F, 6.0F));
    EXPECT_THAT(copied(3, 0), ElementsAre(4.0F, 5.0F, 6.0F, 4.0F, 5.0F, 6.0F));
}

TEST_F(LimiterKernel, AnOffsetLeavesTheFramesBeforeItAlone) {
    kernel().process(100, 200);
    EXPECT_EQ(h.out[0][199], 0.0F);
    EXPECT_NE(h.out[0][201], 0.0F);
    EXPECT_EQ(h.out[0][300], 0.0F);
    KernelHarness other;
    std::rotate(other.in[0].begin(), other.in[0].begin() + 200, other.in[0].end());
    std::rotate(other.in[1].begin(), other.in[1].begin() + 200, other.in[1].end());
    other.kernel->process(100, 0);
    EXPECT_TRUE(std::equal(other.out[0].begin(), other.out[0].begin() + 100, h.out[0].begin() + 200));
}

TEST_F(LimiterKernel, TheSecondRenderEntryTouchesNothing) {
    kernel().process2(512, 0);
    kernel().process2(1U << 31, 77);
    EXPECT_EQ(h.out[0], Samples(h.out[0].size(), 0.0F));
    EXPECT_EQ(kernel().followers[0].value, 0.0);
}

TEST_F(LimiterKernel, TheMetersReadTheElementsAndTheOutput) {
    kernel().limiter.limiters[0].gain = 0.5F;
    kernel().limiter.limiters[1].gain = 0.25F;
    EXPECT_EQ(kernel().getDynamicsValue1(), kernel().limiter.limiters[0].getCompression());
    EXPECT_EQ(kernel().getDynamicsValue2(), kernel().limiter.limiters[1].getCompression());
    EXPECT_LT(kernel().getDynamicsValue2(), kernel().getDynamicsValue1());
    kernel().followers[0].value = 0.5;
    kernel().followers[1].value = 2.0;
    EXPECT_EQ(kernel().getPeakValue1(), 0.5F);
    EXPECT_EQ(kernel().getPeakValue2(), 1.0F);
}

TEST_F(LimiterKernel, InModeThreeTheSecondMeterTellsOfTheSecondPassOverMid) {
    h.makePlain();
    kernel().setParameter(kLimiterMode, 3.0F);
    h.in[1] = h.in[0]; // side is silent: a side value would stay at 1.0
    h.attach();
    h.process();
    EXPECT_LT(kernel().getDynamicsValue2(), 1.0F);
}

TEST_F(LimiterKernel, TheMaximumOfFramesIsStoredUnchecked) {
    kernel().setMaximumFramesToRender(-3);
    EXPECT_EQ(kernel().getMaximumFramesToRender(), -3);
}

TEST_F(LimiterKernel, ABlockCutAnywhereGivesTheSameSamplesInEveryMode) {
    for (const bool filtered : {false, true}) {
        for (int mode = 0; mode < 4; ++mode) {
            const auto prepare = [&](KernelHarness& harness) {
                harness.makePlain();
                harness.kernel->setParameter(kLimiterInputFilterLP, filtered ? 0.8F : 1.0F);
                harness.kernel->setParameter(kLimiterMode, static_cast<float>(mode));
            };
            KernelHarness whole;
            prepare(whole);
            whole.process();
            for (const unsigned cut : {1U, 7U, 64U, 480U, 511U}) {
                KernelHarness parts;
                prepare(parts);
                for (unsigned done = 0; done < 512; done += cut) {
                    parts.kernel->process(std::min(cut, 512 - done), done);
                }
                EXPECT_EQ(parts.out[0], whole.out[0]) << mode << ' ' << cut;
                EXPECT_EQ(parts.out[1], whole.out[1]) << mode << ' ' << cut;
            }
        }
    }
}

/// What a MIDI output was called with, as "time cable length status".
struct MIDIRecorder {
    std::vector<std::string> calls;
    const std::uint8_t* lastBytes = nullptr;
    AUMIDIOutputEventBlock block() {
        return [this](AUEventSampleTime time, std::uint8_t cable, long length, const std::uint8_t* bytes) {
            lastBytes = bytes;
            calls.push_back(std::to_string(time) + ' ' + std::to_string(cable) + ' ' +
                            std::to_string(length) + ' ' + std::to_string(bytes[0]));
            return noErr;
        };
    }
};

AUMIDIEvent midiEvent(std::uint16_t length, std::uint8_t status) {
    return {nullptr, 77, AURenderEventMIDI, 0, length, 5, {status, 1, 2}};
}

TEST_F(LimiterKernel, MIDIIsNotForwardedWhileTheGateIsShut) {
    MIDIRecorder recorder;
    kernel().midiOut = recorder.block();
    kernel().handleMIDIEvent(midiEvent(3, 0x90));
    EXPECT_THAT(recorder.calls, IsEmpty());
}

TEST_F(LimiterKernel, BehindAnOpenGateMIDIGoesOutOnCableZeroWithoutRealTimeMessages) {
    MIDIRecorder recorder;
    kernel().midiThrough = true;
    kernel().handleMIDIEvent(midiEvent(3, 0x90)); // no output attached yet
    kernel().midiOut = recorder.block();
    for (const std::uint8_t status : {0xF8, 0xFA, 0xFB, 0xFC, 0xFF}) {
        kernel().handleMIDIEvent(midiEvent(1, status));
    }
    EXPECT_THAT(recorder.calls, IsEmpty());
    kernel().handleMIDIEvent(midiEvent(3, 0x90));
    kernel().handleMIDIEvent(midiEvent(1, 0xF9));
    const AUMIDIEvent empty = midiEvent(0, 0xF8); // no byte to look at
    kernel().handleMIDIEvent(empty);
    EXPECT_EQ(recorder.lastBytes, empty.data); // handed on in place
    EXPECT_THAT(recorder.calls, ElementsAre("77 0 3 144", "77 0 1 249", "77 0 0 248"));
}

} // namespace
