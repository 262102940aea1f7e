#include "kernel/dsp/DSPKernel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <sstream>
#include <string>
#include <vector>

namespace {

using platform::AUMIDIEvent;
using platform::AUMIDIOutputEventBlock;
using platform::AUParameterAddress;
using platform::AURenderEvent;
using testing::ElementsAre;
using testing::IsEmpty;

/// Writes down what the loop asks of it.
class RecordingKernel final : public qor::DSPKernel {
public:
    std::vector<std::string> calls;

    void process(unsigned frameCount, unsigned bufferOffset) override {
        note("process", frameCount, "at", bufferOffset);
    }
    void setParameterAutomated(AUParameterAddress address, float value, std::int64_t time) override {
        note("set", address, "to", value, "for", time);
    }
    void handleMIDIEvent(const AUMIDIEvent& event) override { note("midi", static_cast<int>(event.data[0])); }

private:
    template <class... Words>
    void note(const Words&... words) {
        std::ostringstream line;
        const char* gap = "";
        ((line << gap << words, gap = " "), ...);
        calls.push_back(line.str());
    }
};

/// A list of events, linked in the order of construction.
class EventList {
public:
    EventList& parameter(std::int64_t time, AUParameterAddress address, float value) {
        return add({.parameter = {nullptr, time, platform::AURenderEventParameter, {}, 0, address, value}});
    }
    EventList& ramp(std::int64_t time, std::uint32_t duration, AUParameterAddress address, float value) {
        return add({.parameter = {
                        nullptr, time, platform::AURenderEventParameterRamp, {}, duration, address, value}});
    }
    EventList& midi(std::int64_t time, std::uint8_t type, std::uint8_t status) {
        return add({.MIDI = {nullptr, time, type, 0, 3, 0, {status, 0, 0}}});
    }
    const AURenderEvent* head() {
        for (std::size_t i = 0; i + 1 < events_.size(); ++i) {
            events_[i].head.next = &events_[i + 1];
        }
        return events_.empty() ? nullptr : events_.data();
    }

private:
    EventList& add(const AURenderEvent& event) {
        events_.push_back(event);
        return *this;
    }
    std::vector<AURenderEvent> events_;
};

std::vector<std::string> callsOf(double sampleTime, unsigned frames, EventList events = {}) {
    RecordingKernel kernel;
    platform::AudioTimeStamp time;
    time.mSampleTime = sampleTime;
    kernel.processWithEvents(&time, frames, events.head(), nullptr);
    return kernel.calls;
}

AUMIDIOutputEventBlock countingOutput(int& calls) {
    return [&calls](std::int64_t, std::uint8_t, long, const std::uint8_t*) {
        ++calls;
        return platform::noErr;
    };
}

TEST(DSPKernel, NoFramesMeanNoProcessCallAndNoEvent) {
    EXPECT_THAT(callsOf(100, 0, EventList().parameter(100, 1, 0.5F)), IsEmpty());
}

TEST(DSPKernel, NoFramesStillReplaceTheMIDIOutput) {
    int calls = 0;
    RecordingKernel kernel;
    const platform::AudioTimeStamp time;
    kernel.processWithEvents(&time, 0, nullptr, countingOutput(calls));
    ASSERT_TRUE(kernel.midiOut);
    kernel.processWithEvents(&time, 0, nullptr, nullptr);
    EXPECT_FALSE(kernel.midiOut);
}

TEST(DSPKernel, TheMIDIOutputStartsAbsentAndIsHeldOnceUntilReplaced) {
    int calls = 0;
    RecordingKernel kernel;
    EXPECT_FALSE(kernel.midiOut);
    const AUMIDIOutputEventBlock first = countingOutput(calls);
    const AUMIDIOutputEventBlock second = countingOutput(calls);
    const platform::AudioTimeStamp time;
    kernel.processWithEvents(&time, 8, nullptr, first);
    EXPECT_EQ(first.useCount(), 2U);
    kernel.processWithEvents(&time, 8, nullptr, second);
    EXPECT_EQ(first.useCount(), 1U);
    EXPECT_EQ(second.useCount(), 2U);
}

TEST(DSPKernel, TheMIDIOutputIsReplacedBeforeAnythingElseHappens) {
    class LookingKernel final : public qor::DSPKernel {
    public:
        std::vector<bool> present;
        void process(unsigned /*frameCount*/, unsigned /*bufferOffset*/) override { look(); }
        void handleMIDIEvent(const AUMIDIEvent& /*event*/) override { look(); }

    private:
        void look() { present.push_back(static_cast<bool>(midiOut)); }
    };
    int calls = 0;
    LookingKernel kernel;
    EventList events;
    events.midi(0, platform::AURenderEventMIDI, 144);
    const platform::AudioTimeStamp time;
    kernel.processWithEvents(&time, 8, events.head(), countingOutput(calls));
    EXPECT_THAT(kernel.present, ElementsAre(true, true));
    kernel.processWithEvents(&time, 8, nullptr, nullptr);
    EXPECT_THAT(kernel.present, ElementsAre(true, true, false));
}

TEST(DSPKernel, AnEmptyListMeansOneProcessCall) {
    EXPECT_THAT(callsOf(5, 512), ElementsAre("process 512 at 0"));
}

TEST(DSPKernel, EarlyAndPunctualEventsAreAppliedBeforeAnyAudio) {
    EXPECT_THAT(callsOf(100, 64, EventList().parameter(40, 1, 0.25F)),
                ElementsAre("set 1 to 0.25 for 40", "process 64 at 0"));
    EXPECT_THAT(callsOf(100, 64, EventList().parameter(100, 1, 0.25F)),
                ElementsAre("set 1 to 0.25 for 100", "process 64 at 0"));
}

TEST(DSPKernel, AnEventInsideCutsTheBufferAtItsSample) {
    EXPECT_THAT(callsOf(100, 64, EventList().parameter(110, 2, 0.5F).parameter(120, 3, 1.0F)),
                ElementsAre("process 10 at 0", "set 2 to 0.5 for 110", "process 10 at 10",
                            "set 3 to 1 for 120", "process 44 at 20"));
}

TEST(DSPKernel, EventsOnOneSampleAreAppliedInListOrderWithoutAudioBetween) {
    EXPECT_THAT(callsOf(0, 64, EventList().parameter(8, 2, 1).parameter(8, 0, 2).parameter(8, 1, 3)),
                ElementsAre("process 8 at 0", "set 2 to 1 for 8", "set 0 to 2 for 8", "set 1 to 3 for 8",
                            "process 56 at 8"));
}

TEST(DSPKernel, AnEarlierEventListedLaterIsSweptUpAtTheCurrentPosition) {
    EXPECT_THAT(callsOf(0, 64, EventList().parameter(32, 2, 1).parameter(4, 0, 2).parameter(40, 1, 3)),
                ElementsAre("process 32 at 0", "set 2 to 1 for 32", "set 0 to 2 for 4", "process 8 at 32",
                            "set 1 to 3 for 40", "process 24 at 40"));
}

TEST(DSPKernel, AnEventAtTheEndIsAppliedAfterAllFramesAndLaterOnesAreDropped) {
    EXPECT_THAT(callsOf(0, 64, EventList().parameter(64, 2, 1).parameter(65, 0, 2)),
                ElementsAre("process 64 at 0", "set 2 to 1 for 64"));
}

TEST(DSPKernel, LeftOverEventsAreNotKeptForTheNextCall) {
    RecordingKernel kernel;
    EventList events;
    events.parameter(64, 2, 1).parameter(65, 0, 2);
    platform::AudioTimeStamp time;
    kernel.processWithEvents(&time, 64, events.head(), nullptr);
    kernel.calls.clear();
    time.mSampleTime = 64;
    kernel.processWithEvents(&time, 64, nullptr, nullptr);
    EXPECT_THAT(kernel.calls, ElementsAre("process 64 at 0"));
}

TEST(DSPKernel, AnEventBeyondTheCallIsNotHeldBackAndTheFramesWrapAround) {
    EXPECT_THAT(callsOf(0, 10, EventList().parameter(25, 2, 1)),
                ElementsAre("process 25 at 0", "set 2 to 1 for 25", "process 4294967281 at 25"));
}

TEST(DSPKernel, AStretchThatNoCountHoldsIsTheLargestCount) {
    EXPECT_THAT(
        callsOf(0, 64, EventList().parameter(std::int64_t{1} << 40, 2, 1)),
        ElementsAre("process 4294967295 at 0", "set 2 to 1 for 1099511627776", "process 65 at 4294967295"));
}

TEST(DSPKernel, SampleTimesWrapAroundAtTheEndOfTheirRange) {
    constexpr std::int64_t kFirst = std::numeric_limits<std::int64_t>::min();
    EXPECT_THAT(callsOf(1e300, 64, EventList().parameter(kFirst, 2, 1).parameter(kFirst + 5, 0, 2)),
                ElementsAre("process 1 at 0", "set 2 to 1 for -9223372036854775808", "process 5 at 1",
                            "set 0 to 2 for -9223372036854775803", "process 58 at 6"));
}

TEST(DSPKernel, AFractionOfTheSampleTimeIsCutOff) {
    EXPECT_THAT(callsOf(100.9, 64, EventList().parameter(101, 2, 1)),
                ElementsAre("process 1 at 0", "set 2 to 1 for 101", "process 63 at 1"));
    EXPECT_THAT(callsOf(-0.9, 64, EventList().parameter(0, 2, 1)),
                ElementsAre("set 2 to 1 for 0", "process 64 at 0"));
}

TEST(DSPKernel, ASampleTimeThatIsNoNumberCountsAsZero) {
    EXPECT_THAT(callsOf(std::numeric_limits<double>::quiet_NaN(), 64, EventList().parameter(3, 2, 1)),
                ElementsAre("process 3 at 0", "set 2 to 1 for 3", "process 61 at 3"));
}

TEST(DSPKernel, ARampJumpsToItsEndValueAtItsEventTime) {
    EXPECT_THAT(callsOf(0, 64, EventList().ramp(16, 400, 4, 0.75F)),
                ElementsAre("process 16 at 0", "set 4 to 0.75 for 16", "process 48 at 16"));
}

TEST(DSPKernel, MIDIAndSystemExclusiveTakeTheSamePath) {
    EXPECT_THAT(callsOf(0, 64,
                        EventList()
                            .midi(0, platform::AURenderEventMIDI, 144)
                            .midi(0, platform::AURenderEventMIDISysEx, 240)),
                ElementsAre("midi 144", "midi 240", "process 64 at 0"));
}

TEST(DSPKernel, OtherEventTypesAreIgnored) {
    EXPECT_THAT(callsOf(0, 64, EventList().midi(0, 0, 144).midi(0, 3, 144).midi(0, 10, 144).midi(0, 255, 1)),
                ElementsAre("process 64 at 0"));
}

TEST(DSPKernel, TheSweepLeavesTheCursorOnTheFirstEventThatIsNotDue) {
    RecordingKernel kernel;
    EventList events;
    events.parameter(500, 2, 1).parameter(10, 0, 2).parameter(11, 1, 3);
    const AURenderEvent* cursor = events.head();
    kernel.performAllSimultaneousEvents(10, cursor);
    EXPECT_THAT(kernel.calls, ElementsAre("set 2 to 1 for 500", "set 0 to 2 for 10"));
    ASSERT_NE(cursor, nullptr);
    EXPECT_EQ(cursor->head.eventSampleTime, 11);
}

TEST(DSPKernel, TheClampIsMadeInDoublePrecision) {
    EXPECT_EQ(qor::DSPKernel::fmax(0, -5), 0.0);
    EXPECT_EQ(qor::DSPKernel::fmax(-7, -5), -5.0);
    EXPECT_EQ(qor::DSPKernel::fmax(0, (std::int64_t{1} << 53) + 1), 9007199254740992.0);
}

TEST(DSPKernel, TheBaseOperationsDoNothing) {
    class BareKernel final : public qor::DSPKernel {};
    BareKernel kernel;
    EventList events;
    events.parameter(3, 2, 1).midi(4, platform::AURenderEventMIDI, 144);
    const platform::AudioTimeStamp time;
    kernel.processWithEvents(&time, 64, events.head(), nullptr);
    kernel.process2(64, 0);
    EXPECT_FALSE(kernel.midiOut);
}

} // namespace
