// The host's threads at one instance, as the interface allows them: blocks on the audio thread while the main
// thread reads, saves, loads and serves. Of use mostly in the tsan build, with tests/tsan.supp.
#include "ClapRendering.h"

#include "hosts/clap/ClapParameters.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using namespace test;
using qor::clap::kBypassId;

namespace {

/// Renders noise with moves of parameters and bypass until it is destroyed.
class AudioThread {
public:
    explicit AudioThread(ClapPluginUnderTest& plugin) : thread_([this, &plugin] { run(plugin); }) {}
    ~AudioThread() {
        ending_.store(true);
        thread_.join();
    }
    AudioThread(const AudioThread&) = delete;
    AudioThread& operator=(const AudioThread&) = delete;

    int rounds() const { return rounds_.load(); }

private:
    void run(ClapPluginUnderTest& plugin) {
        const Stereo input = noise(512, 1.5F);
        while (!ending_.load()) {
            renderClap(plugin, input, 64,
                       {{10, 2, 0.3}, {70, 5, 0.5}, {200, kBypassId, 1.0}, {300, kBypassId, 0.0}});
            rounds_.fetch_add(1);
        }
    }

    std::atomic<bool> ending_{false};
    std::atomic<int> rounds_{0};
    std::thread thread_;
};

void workOnTheMainThread(ClapPluginUnderTest& plugin, ClapTestHost& host, int rounds) {
    std::vector<std::uint8_t> state = plugin.save();
    const AudioThread audio(plugin);
    for (int i = 0; i < rounds || audio.rounds() < 20; ++i) {
        double value = -1.0;
        ASSERT_TRUE(plugin.params().get_value(plugin.get(), 2, &value));
        EXPECT_GE(value, 0.0);
        EXPECT_LE(value, 1.0);
        ASSERT_TRUE(plugin.load(state));
        state = plugin.save();
        ASSERT_FALSE(state.empty());
        if (host.callbacksAsked.load() > 0 || host.offersTimers) {
            plugin->on_main_thread(plugin.get());
        }
    }
}

} // namespace

TEST(ClapThreads, TheMainThreadReadsSavesAndLoadsWhileBlocksAreRendered) {
    ClapTestHost host;
    ClapPluginUnderTest plugin(host);
    ASSERT_TRUE(plugin.activate());
    workOnTheMainThread(plugin, host, 60);
    EXPECT_TRUE(host.logged.empty());
}

TEST(ClapThreads, AHostWithTimersServesTheInstanceItself) {
    ClapTestHost host;
    host.offersTimers = true;
    ClapPluginUnderTest plugin(host);
    ASSERT_TRUE(plugin.activate());
    workOnTheMainThread(plugin, host, 60);
    EXPECT_TRUE(host.logged.empty());
}
