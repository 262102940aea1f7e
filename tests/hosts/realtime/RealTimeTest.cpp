// Nothing on the render thread reaches for the allocator, a lock or the operating system.
#include "hosts/realtime/Tripwire.h"
#include "hosts/shared/UnitHost.h"
#include "kernel/ParameterTable.h"
#include "platform/core/LogRing.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <array>
#include <atomic>
#include <limits>
#include <mutex>
#include <random>
#include <thread>

namespace {

using namespace qor;
using namespace qor::host;
using test::Armed;
using test::Trips;

/// Counts one thing that the wire must notice, on a thread of its own.
template <class Action>
Trips tripsOf(const Action& action) {
    Trips seen;
    std::thread([&] {
        EXPECT_TRUE(test::watchSystemCalls()) << "this kernel has no system call user dispatch";
        {
            const Armed armed;
            action();
        }
        seen = test::trips();
    }).join();
    return seen;
}

TEST(Tripwire, NoticesAnAllocationAndItsRelease) {
    const Trips seen = tripsOf([] {
        auto* volatile memory = new int(1);
        delete memory;
    });
    EXPECT_EQ(seen.allocations, 2U);
    EXPECT_NE(seen.firstCaller, nullptr);
}

TEST(Tripwire, NoticesAnAlignedAllocation) {
    const Trips seen = tripsOf([] {
        struct alignas(64) Line {
            char bytes[64];
        };
        auto* volatile memory = new Line;
        delete memory;
    });
    EXPECT_EQ(seen.allocations, 2U);
}

TEST(Tripwire, NoticesALockThatNobodyHolds) {
    std::mutex mutex;
    const Trips seen = tripsOf([&mutex] { const std::lock_guard lock(mutex); });
    EXPECT_EQ(seen.locks, 2U);
    EXPECT_EQ(seen.systemCalls, 0U);
}

TEST(Tripwire, NoticesASystemCallAndStillCarriesItOut) {
    pid_t process = 0;
    const Trips seen = tripsOf([&process] { process = getppid(); });
    EXPECT_EQ(seen.systemCalls, 1U);
    EXPECT_EQ(process, getppid());
}

TEST(Tripwire, IsQuietAboutArithmeticAndAboutOtherThreads) {
    std::atomic<bool> done{false};
    std::thread other([&done] {
        while (!done.load()) {
            delete new int(1);
            std::this_thread::yield();
        }
    });
    const Trips seen = tripsOf([] {
        volatile float sum = 0.0F;
        for (int i = 0; i < 100000; ++i) {
            sum = sum + 0.5F;
        }
    });
    done.store(true);
    other.join();
    EXPECT_TRUE(seen.none()) << seen.text();
}

TEST(Tripwire, CountsOnlyWhileArmed) {
    Trips seen;
    std::thread([&seen] {
        ASSERT_TRUE(test::watchSystemCalls());
        delete new int(1);
        getppid();
        seen = test::trips();
    }).join();
    EXPECT_TRUE(seen.none());
}

/// A value such as a host sends: whole numbers for switches, bypass mostly off, so that the limiter does
/// work.
float randomValue(std::minstd_rand& random, AUParameterAddress address) {
    const ParameterRow* row = parameterRow(address);
    if (row == nullptr || !row->isStepped()) {
        return static_cast<float>(random() % 1000) / 999.0F;
    }
    if (address == kLimiterBypass) {
        return random() % 8 == 0 ? 1.0F : 0.0F;
    }
    return static_cast<float>(random() % row->valueNames.size());
}

/// What the render thread is fed with, all of it made before the first call.
class RandomCalls {
public:
    static constexpr std::uint32_t kLongest = 9001;

    RandomCalls() {
        std::uniform_real_distribution<float> level(-1.5F, 1.5F);
        for (auto& side : signal_) {
            for (float& sample : side) {
                sample = level(random_);
            }
        }
    }

    /// Mostly short blocks; now and then one beyond the unit's limit, now and then none.
    std::uint32_t nextFrames() {
        const std::uint32_t dice = random_() % 4096;
        return dice == 0 ? random_() % kLongest : dice < 64 ? 0 : random_() % 25;
    }

    SpanEvents nextEvents(std::uint32_t frames) {
        const std::uint32_t count = random_() % 16 == 0 ? random_() % 5 : 0;
        for (std::uint32_t i = 0; i < count; ++i) {
            HostEvent& event = events_[i];
            event = {};
            event.frame = random_() % (frames + 2); // not in order, and some beyond the end
            if (random_() % 4 == 0) {
                event.kind = HostEventKind::Midi;
                event.length = 3;
                event.bytes[0] = 0x90;
            } else {
                event.kind = HostEventKind::Parameter;
                event.address = random_() % 13;
                event.value = nextValue(event.address);
            }
        }
        return SpanEvents(std::span(events_.data(), count));
    }

    /// Points into the noise, with a sample now and then that is no audio.
    const float* const* nextInput() {
        const std::uint32_t dice = random_() % 512;
        float* sample = &signal_[dice % 2][random_() % 64];
        if (dice < 3) {
            constexpr std::array kHostile{std::numeric_limits<float>::infinity(),
                                          std::numeric_limits<float>::quiet_NaN(), 1e38F};
            *sample = kHostile[dice];
        } else {
            *sample = 0.25F;
        }
        input_ = {signal_[0].data(), signal_[1].data()};
        return input_.data();
    }

    std::uint32_t dice(std::uint32_t sides) { return random_() % sides; }

private:
    /// Now and then out of range, or no number.
    float nextValue(AUParameterAddress address) {
        const std::uint32_t sort = random_() % 16;
        const float value = randomValue(random_, address);
        return sort == 0 ? std::numeric_limits<float>::quiet_NaN() : sort == 1 ? value * 10.0F : value;
    }

    std::minstd_rand random_{7};
    std::array<std::array<float, kLongest>, 2> signal_{};
    std::array<const float*, 2> input_{};
    std::array<HostEvent, 8> events_{};
};

/// A host as the plug-ins have it: the log goes through the ring, the loop is pumped by the main thread.
class RenderThread : public ::testing::Test {
protected:
    platform::LogRing ring{platform::discardingSink()};
    platform::LogSink& before = platform::setLogSink(ring);
    std::unique_ptr<UnitHost> host = UnitHost::create({.serviced = false}).value();

    void SetUp() override { ASSERT_TRUE(host->activate(48000.0)); }
    void TearDown() override {
        host = nullptr;
        platform::setLogSink(before);
    }
};

TEST_F(RenderThread, NeitherAllocatesNorLocksNorCallsTheSystemInAMillionCalls) {
    constexpr int kCalls = 1'000'000; // at least; on, until the other thread has done its share
    constexpr int kAtMost = 100'000'000;
    constexpr int kWrites = 5000;
    constexpr std::uint64_t kReplacements = 3;
    std::atomic<bool> othersDone{false};
    Trips seen;
    std::atomic<bool> watched{false};
    std::atomic<int> calls{0};
    std::atomic<std::uint64_t> badSamples{0};
    std::thread renderer([&] {
        RandomCalls random;
        std::vector<float> left(RandomCalls::kLongest);
        std::vector<float> right(RandomCalls::kLongest);
        float* const output[2] = {left.data(), right.data()};
        watched.store(test::watchSystemCalls());
        for (int i = 0; i < kCalls || (!othersDone.load() && i < kAtMost); ++i) {
            const std::uint32_t frames = random.nextFrames();
            const float* const* input = random.nextInput();
            const SpanEvents events = random.nextEvents(frames);
            const std::uint32_t extra = random.dice(2048);
            {
                const Armed armed;
                if (extra == 0) {
                    host->resetInRender();
                } else if (extra < 3) {
                    host->setBypassed(extra == 1);
                }
                host->render(input, output, frames, events);
            }
            for (std::uint32_t n = 0; n < frames; ++n) {
                const bool fine = std::isfinite(left[n]) && std::isfinite(right[n]);
                badSamples.fetch_add(fine ? 0 : 1, std::memory_order_relaxed);
            }
            calls.store(i + 1, std::memory_order_release);
        }
        seen = test::trips();
    });
    // The main thread, at the same time: knobs, meters, observers, and a broken kernel now and then.
    std::minstd_rand random{11};
    int written = 0;
    float metered = 0.0F;
    std::atomic<int> observed{0};
    const auto observe = [&] {
        host->unit().parameterTree()->tokenByAddingParameterObserver([&observed](auto, auto) { ++observed; });
    };
    observe();
    host->setOnUnitReplaced(observe);
    while (calls.load(std::memory_order_acquire) < kAtMost &&
           (written < kWrites || host->replacements() < kReplacements)) {
        const AUParameterAddress address = random() % kParameterCount;
        EXPECT_TRUE(host->setParameter(address, randomValue(random, address)).ok());
        if (++written % (kWrites / 5) == 0) {
            // No host can set this; it stands for a state that broke in a way nobody thought of.
            host->unit().kernelAdapter->setParameterEx(kLimiterTrim, std::numeric_limits<float>::quiet_NaN());
        }
        host->pump();
        metered += host->meters().peak1;
    }
    othersDone.store(true);
    renderer.join();
    EXPECT_TRUE(watched.load()) << "this kernel has no system call user dispatch";
    EXPECT_TRUE(seen.none()) << seen.text();
    EXPECT_EQ(badSamples.load(), 0U);
    EXPECT_GE(calls.load(), kCalls);
    // The other thread did take part.
    EXPECT_GE(written, kWrites);
    EXPECT_GE(host->replacements(), kReplacements);
    EXPECT_GT(observed.load(), 0);
    EXPECT_GT(metered, 0.0F);
}

} // namespace
