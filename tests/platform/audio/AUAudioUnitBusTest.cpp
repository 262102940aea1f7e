#include "platform/audio/Audio.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace platform;

TEST(AUAudioUnitBus, TakesTheFormatItWasMadeWith) {
    const auto bus = AUAudioUnitBus::initWithFormat(AVAudioFormat(44100.0, 2));
    ASSERT_TRUE(bus.ok());
    EXPECT_EQ(bus.value()->format(), AVAudioFormat(44100.0, 2));
    EXPECT_TRUE(bus.value()->isEnabled());
}

TEST(AUAudioUnitBus, RefusesFormatsThatCarryNoAudio) {
    for (const AVAudioFormat& format :
         {AVAudioFormat(44100.0, 0), AVAudioFormat(0.0, 2), AVAudioFormat(-1.0, 2),
          AVAudioFormat(std::numeric_limits<double>::quiet_NaN(), 2),
          AVAudioFormat(std::numeric_limits<double>::infinity(), 2)}) {
        const auto bus = AUAudioUnitBus::initWithFormat(format);
        ASSERT_FALSE(bus.ok()) << format.description();
        EXPECT_EQ(bus.error().code, kAudioUnitErr_FormatNotSupported);
    }
}

TEST(AUAudioUnitBus, SetFormatKeepsTheEarlierFormatOnFailure) {
    const Ref<AUAudioUnitBus> bus = AUAudioUnitBus::initWithFormat(AVAudioFormat(44100.0, 2)).value();
    bus->setMaximumChannelCount(2);
    EXPECT_FALSE(bus->setFormat(AVAudioFormat(48000.0, 3)).ok());
    EXPECT_FALSE(bus->setFormat(AVAudioFormat(48000.0, 0)).ok());
    bus->setFormatVeto([](const AVAudioFormat&) -> Result<void> {
        return NSError("test", 5, {{NSLocalizedDescriptionKey, "not now"}});
    });
    const Result<void> refused = bus->setFormat(AVAudioFormat(48000.0, 2));
    ASSERT_FALSE(refused.ok());
    EXPECT_EQ(refused.error().localizedDescription(), "not now");
    EXPECT_EQ(bus->format(), AVAudioFormat(44100.0, 2));
    bus->setFormatVeto(nullptr);
    EXPECT_TRUE(bus->setFormat(AVAudioFormat(48000.0, 2)).ok());
    EXPECT_EQ(bus->format(), AVAudioFormat(48000.0, 2));
}

TEST(AVAudioFormat, StandardFormatIsDeinterleavedFloat) {
    const AVAudioFormat format(44100.0, 2);
    EXPECT_EQ(format.commonFormat(), AVAudioCommonFormat::PCMFormatFloat32);
    EXPECT_FALSE(format.isInterleaved());
    EXPECT_TRUE(format.isStandard());
    EXPECT_EQ(format.description(), "2 ch, 44100 Hz, Float32, deinterleaved");
    EXPECT_EQ(format.settings().at("AVSampleRateKey"), "44100");
    EXPECT_FALSE(format.channelLayout().has_value());
}

} // namespace
