#include "HostRendering.h"
#include "kernel/ParameterTable.h"
#include "support/CapturedLog.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

using namespace qor;
using namespace qor::host;

namespace {

class UnitHostEventsTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(host->setParameter(kLimiterFinalLimiter, 0.0F));
        ASSERT_TRUE(host->activate(48000.0));
    }

    test::CapturedLog log;
    std::unique_ptr<UnitHost> host = test::makeHost();
};

std::unique_ptr<UnitHost> sameHost() {
    auto host = test::makeHost();
    EXPECT_TRUE(host->setParameter(kLimiterFinalLimiter, 0.0F));
    EXPECT_TRUE(host->activate(48000.0));
    return host;
}

std::vector<HostEvent> randomEvents(std::size_t count, std::uint32_t frames, unsigned seed) {
    std::mt19937 random(seed);
    std::vector<HostEvent> events(count);
    for (HostEvent& event : events) {
        const auto address =
            static_cast<std::uint32_t>(random() % (kParameterCount - 1)); // not the final limiter
        const ParameterRow& row = kParameterTable[address];
        const float share = static_cast<float>(random() % 1000U) / 999.0F;
        event = test::parameterAt(static_cast<std::uint32_t>(random() % frames), address,
                                  row.minimum + share * (row.maximum - row.minimum));
    }
    std::stable_sort(events.begin(), events.end(),
                     [](const HostEvent& a, const HostEvent& b) { return a.frame < b.frame; });
    return events;
}

} // namespace

TEST_F(UnitHostEventsTest, EventsLandOnTheirSampleWhateverTheBlockSize) {
    const test::Stereo input = test::noise(30000, 0.9F);
    const std::vector<HostEvent> events = randomEvents(200, 30000, 3);
    const test::Stereo expected = test::render(*host, input, 1, events);
    for (const std::uint32_t block : {7U, 64U, 512U, 4096U, 5000U, 8192U, 30000U}) {
        EXPECT_TRUE(test::sameBits(test::render(*sameHost(), input, block, events), expected)) << block;
    }
}

TEST_F(UnitHostEventsTest, TheFinalLimiterTurnsOnItsSampleWhateverTheBlockSize) {
    const test::Stereo input = test::noise(10000, 1.5F);
    std::vector<HostEvent> events = randomEvents(100, 10000, 5);
    for (std::uint32_t frame = 1111; frame < 10000; frame += 1111) {
        events.push_back(test::parameterAt(frame, kLimiterFinalLimiter, frame % 2 != 0 ? 1.0F : 0.0F));
        events.push_back(test::parameterAt(frame, kLimiterTrim, 0.9F));
    }
    std::stable_sort(events.begin(), events.end(),
                     [](const HostEvent& a, const HostEvent& b) { return a.frame < b.frame; });
    const test::Stereo expected = test::render(*host, input, 1, events);
    for (const std::uint32_t block : {64U, 1000U, 4096U, 10000U}) {
        EXPECT_TRUE(test::sameBits(test::render(*sameHost(), input, block, events), expected)) << block;
    }
}

TEST_F(UnitHostEventsTest, AFloodOfTenThousandEventsLosesNone) {
    const test::Stereo input = test::noise(1024, 0.9F);
    const std::vector<HostEvent> events = randomEvents(10000, 1024, 4);
    EXPECT_TRUE(test::sameBits(test::render(*host, input, 1024, events),
                               test::render(*sameHost(), input, 1, events)));
}

TEST_F(UnitHostEventsTest, AFloodOnOneSampleIsAppliedInOrder) {
    std::vector<HostEvent> events;
    for (int i = 0; i < 10000; ++i) {
        events.push_back(test::parameterAt(5, kLimiterTrim, static_cast<float>(i % 1000) / 1000.0F));
    }
    events.push_back(test::parameterAt(5, kLimiterTrim, 0.625F));
    const test::Stereo input = test::noise(64, 0.9F);
    const test::Stereo flooded = test::render(*host, input, 64, events);
    EXPECT_EQ(host->parameter(kLimiterTrim), 0.625F);
    EXPECT_TRUE(test::sameBits(
        flooded, test::render(*sameHost(), input, 64, {test::parameterAt(5, kLimiterTrim, 0.625F)})));
}

TEST_F(UnitHostEventsTest, EventsOutOfOrderArePutInOrder) {
    std::vector<HostEvent> events = randomEvents(300, 2000, 5);
    const test::Stereo input = test::noise(2000, 0.9F);
    const test::Stereo expected = test::render(*host, input, 2000, events);
    std::stable_sort(events.begin(), events.end(), [](const HostEvent& a, const HostEvent& b) {
        return a.frame % 2 > b.frame % 2; // odd frames first; the order within one frame is kept
    });
    const auto other = sameHost();
    test::Stereo output = test::silence(2000);
    const float* const in[2] = {input.left.data(), input.right.data()};
    float* const out[2] = {output.left.data(), output.right.data()};
    other->render(in, out, 2000, SpanEvents(events));
    EXPECT_TRUE(test::sameBits(output, expected));
}

TEST_F(UnitHostEventsTest, AnEventBeyondTheBlockIsAppliedAtItsLastSample) {
    const test::Stereo input = test::noise(100, 0.9F);
    test::Stereo output = test::silence(100);
    const float* const in[2] = {input.left.data(), input.right.data()};
    float* const out[2] = {output.left.data(), output.right.data()};
    const std::vector<HostEvent> late{test::parameterAt(4000000000U, kLimiterTrim, 0.1F)};
    host->render(in, out, 100, SpanEvents(late));
    EXPECT_EQ(host->parameter(kLimiterTrim), 0.1F);
    EXPECT_TRUE(test::sameBits(
        output, test::render(*sameHost(), input, 100, {test::parameterAt(99, kLimiterTrim, 0.1F)})));
}

TEST_F(UnitHostEventsTest, ACallWithoutFramesAppliesItsEventsAtOnce) {
    const std::vector<HostEvent> events{test::parameterAt(0, kLimiterMix, 0.125F),
                                        test::parameterAt(77, kLimiterAttack, 0.875F)};
    const float* const in[2] = {nullptr, nullptr};
    float* const out[2] = {nullptr, nullptr};
    host->render(in, out, 0, SpanEvents(events));
    EXPECT_EQ(host->parameter(kLimiterMix), 0.125F);
    EXPECT_EQ(host->parameter(kLimiterAttack), 0.875F);
}

TEST_F(UnitHostEventsTest, WhatMeansNothingIsLeftOut) {
    HostEvent midi;
    midi.kind = HostEventKind::Midi;
    midi.length = 3;
    midi.bytes[0] = 0x90;
    const std::vector<HostEvent> events{
        HostEvent{},
        midi,
        test::parameterAt(1, 12, 0.5F),
        test::parameterAt(1, 15, 0.5F),
        test::parameterAt(2, kLimiterMix, std::numeric_limits<float>::quiet_NaN()),
        test::parameterAt(3, kLimiterTrim, 55.0F)};
    const float rate = host->unit().kernelAdapter->getParameterEx(15);
    test::render(*host, test::silence(16), 16, events);
    EXPECT_EQ(host->unit().kernelAdapter->getParameterEx(12), 0.0F);
    EXPECT_EQ(host->unit().kernelAdapter->getParameterEx(15), rate);
    EXPECT_EQ(host->parameter(kLimiterMix), 1.0F);
    EXPECT_EQ(host->parameter(kLimiterTrim), 1.0F);
}
