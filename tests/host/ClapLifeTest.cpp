// Many instances, the main queue, and flushing.
#include "ClapRendering.h"

#include "hosts/clap/ClapParameters.h"
#include "support/GermanLocale.h"

#include <gtest/gtest.h>

#include <array>
#include <malloc.h>
#include <thread>

using namespace test;
using qor::clap::kBypassId;

namespace {

void liveOnce(ClapTestHost& host, const Stereo& input) {
    ClapPluginUnderTest plugin(host);
    ASSERT_NE(plugin.get(), nullptr);
    ASSERT_TRUE(plugin.activate());
    renderClap(plugin, input, 64, {{10, 2, 0.3}, {20, kBypassId, 1.0}});
    plugin.load(plugin.save());
}

} // namespace

// The sanitizers' allocator has no such figures.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
TEST(ClapLife, AThousandInstancesOneAfterTheOtherKeepMemoryLevel) {
    ClapTestHost host;
    const Stereo input = noise(128, 1.0F);
    const ClapPluginUnderTest keepsTheThreads(host);
    const GermanLocale german;      // whatever the process speaks
    for (int i = 0; i < 500; ++i) { // until the allocator's own caches are full
        liveOnce(host, input);
    }
    const std::size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
    for (int i = 0; i < 1000; ++i) {
        liveOnce(host, input);
    }
    const std::size_t after = mallinfo2().uordblks + mallinfo2().hblkhd;
    EXPECT_LT(after, before + 16384); // 16 bytes an instance would show
}

TEST(ClapLife, AnInstanceTakesLessThanAMebibyte) {
    ClapTestHost host;
    const ClapPluginUnderTest first(host);
    const std::size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
    ClapPluginUnderTest second(host);
    ASSERT_TRUE(second.activate());
    const std::size_t size = mallinfo2().uordblks + mallinfo2().hblkhd - before;
    EXPECT_LT(size, std::size_t{1} << 20);
    RecordProperty("bytes", static_cast<int>(size));
}
#endif

TEST(ClapLife, SixtyFourInstancesOnTwoThreadsSoundLikeOneAlone) {
    constexpr std::size_t kInstances = 64;
    const Stereo input = noise(4000, 1.5F);
    const std::vector<Move> moves = manyMoves(4000, 100, 21);
    const Stereo wanted = renderBare(input, moves);
    ClapTestHost host;
    std::vector<std::unique_ptr<ClapPluginUnderTest>> plugins;
    for (std::size_t i = 0; i < kInstances; ++i) {
        plugins.push_back(std::make_unique<ClapPluginUnderTest>(host));
        ASSERT_TRUE(plugins.back()->activate());
    }
    std::array<int, kInstances> same{};
    const auto renderHalf = [&](std::size_t first) {
        for (std::size_t i = first; i < kInstances; i += 2) {
            same[i] = sameBits(renderClap(*plugins[i], input, 128, moves), wanted);
        }
    };
    std::thread other([&] { renderHalf(1); });
    renderHalf(0);
    other.join();
    for (std::size_t i = 0; i < kInstances; ++i) {
        EXPECT_TRUE(same[i]) << i;
    }
}

TEST(ClapLife, InstancesComeAndGoOnOneThreadWhileOthersSoundOnAnother) {
    ClapTestHost host;
    ClapPluginUnderTest sounding(host);
    ASSERT_TRUE(sounding.activate());
    const Stereo input = noise(4000, 1.5F);
    std::atomic<bool> ended{false};
    int rounds = 0;
    Stereo made;
    std::thread audio([&] {
        do {
            made = renderClap(sounding, input, 64);
            ++rounds;
        } while (!ended);
    });
    ClapTestHost quiet;
    for (int i = 0; i < 20; ++i) {
        liveOnce(quiet, noise(128, 1.0F));
    }
    ended = true;
    audio.join();
    const auto bare = makeHost();
    ASSERT_TRUE(bare->activate(48000.0).ok());
    Stereo wanted;
    for (int i = 0; i < rounds; ++i) {
        wanted = render(*bare, input, 512);
    }
    EXPECT_TRUE(sameBits(made, wanted));
}

TEST(ClapMainQueue, IsServedByTheHostsTimerWhereThereIsOne) {
    ClapTestHost host;
    host.offersTimers = true;
    {
        ClapPluginUnderTest plugin(host);
        ASSERT_EQ(host.timers.size(), 1U);
        EXPECT_LE(host.timers.begin()->second, 40U);
        ASSERT_TRUE(plugin.activate());
        renderClap(plugin, noise(64, 0.5F), 64, {{3, 2, 0.25}});
        EXPECT_EQ(host.callbacksAsked, 0);
        const auto& timers = plugin.extension<clap_plugin_timer_support_t>(CLAP_EXT_TIMER_SUPPORT);
        timers.on_timer(plugin.get(), host.timers.begin()->first);
        EXPECT_EQ(plugin.value(2), 0.25);
    }
    EXPECT_TRUE(host.timers.empty());
}

TEST(ClapMainQueue, IsAskedForOnceUntilItHasRunWhereThereIsNoTimer) {
    ClapTestHost host;
    ClapPluginUnderTest plugin(host);
    ASSERT_TRUE(plugin.activate());
    renderClap(plugin, noise(640, 0.5F), 64);
    EXPECT_EQ(host.callbacksAsked, 0); // nothing has moved
    renderClap(plugin, noise(640, 0.5F), 64, {{3, 2, 0.25}, {100, 2, 0.5}, {300, 2, 0.75}});
    EXPECT_EQ(host.callbacksAsked, 1);
    plugin->on_main_thread(plugin.get());
    renderClap(plugin, noise(640, 0.5F), 64, {{3, 2, 0.25}});
    EXPECT_EQ(host.callbacksAsked, 2);
}

TEST(ClapFlush, SetsValuesWhileInactiveAndWhileActive) {
    ClapTestHost host;
    ClapPluginUnderTest plugin(host);
    plugin.setValue(2, 0.25);
    plugin.setValue(kBypassId, 1.0);
    EXPECT_EQ(plugin.value(2), 0.25);
    EXPECT_EQ(plugin.value(kBypassId), 1.0);
    ASSERT_TRUE(plugin.activate());
    plugin.setValue(2, 0.75);
    plugin.setValue(6, 2.0);
    plugin.setValue(kBypassId, 0.0);
    EXPECT_EQ(plugin.value(2), 0.75);
    EXPECT_EQ(plugin.value(6), 2.0);
    EXPECT_EQ(plugin.value(kBypassId), 0.0);
}

TEST(ClapFlush, IgnoresWhatProcessIgnoresAndAnAbsentList) {
    ClapTestHost host;
    ClapPluginUnderTest plugin(host);
    for (int active = 0; active < 2; ++active) {
        plugin.params().flush(plugin.get(), nullptr, nullptr);
        ClapEventList events;
        events.absent();
        events.value(0, 2, std::nan(""));
        events.value(0, 4711, 0.0);
        events.value(0, 3, 0.0).header.space_id = 5;
        events.midi(0, 0x90, 1, 1);
        plugin.params().flush(plugin.get(), events.table(), nullptr);
        EXPECT_EQ(plugin.value(2), static_cast<double>(0.8F));
        EXPECT_EQ(plugin.value(3), 0.5);
        ASSERT_TRUE(plugin.activate());
    }
}

TEST(ClapFlush, KeepsTheOrderOfTheEvents) {
    ClapTestHost host;
    ClapPluginUnderTest plugin(host);
    ClapEventList events;
    events.value(0, 9, 0.9);
    events.value(0, 10, 0.5);
    events.value(0, 9, 0.3F);
    plugin.params().flush(plugin.get(), events.table(), nullptr);
    EXPECT_EQ(plugin.value(9), static_cast<double>(0.3F));
    EXPECT_EQ(plugin.value(10), 0.5);
}
