// Sessions: what the built object saves and takes back.
#include "ClapRendering.h"

#include "hosts/clap/ClapParameters.h"
#include "support/Golden.h"

#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <iterator>

using namespace test;
using qor::clap::kBypassId;
using Bytes = std::vector<std::uint8_t>;

namespace {

class ClapState : public testing::Test {
protected:
    /// Gives every parameter a value of its own, drawn by a seed.
    void randomise(unsigned seed) {
        std::mt19937 random(seed);
        for (clap_id id = 0; id < 12; ++id) {
            const bool isSwitch = id == 7 || id == 8 || id == 11;
            const double value = id == 6 ? static_cast<double>(random() % 4)
                                 : isSwitch
                                     ? static_cast<double>(random() % 2)
                                     : static_cast<double>(static_cast<float>(random()) / 4294967296.0F);
            plugin.setValue(id, value);
        }
        plugin.setValue(kBypassId, static_cast<double>(random() % 2));
    }
    std::vector<double> values(const ClapPluginUnderTest& of) const {
        std::vector<double> all;
        for (clap_id id = 0; id < 12; ++id) {
            all.push_back(of.value(id));
        }
        all.push_back(of.value(kBypassId));
        return all;
    }

    ClapTestHost host;
    ClapPluginUnderTest plugin{host};
};

} // namespace

TEST_F(ClapState, BringsAllValuesAndTheBypassBackIntoAnotherInstance) {
    for (unsigned seed = 1; seed <= 20; ++seed) {
        randomise(seed);
        ClapPluginUnderTest other(host);
        ASSERT_TRUE(other.load(plugin.save()));
        EXPECT_EQ(values(other), values(plugin)) << seed;
        EXPECT_EQ(other.save(), plugin.save());
    }
}

TEST_F(ClapState, SoundsTheSameAfterwards) {
    const Stereo input = noise(8000, 1.5F);
    for (unsigned seed = 1; seed <= 5; ++seed) {
        randomise(seed);
        ClapPluginUnderTest other(host);
        ASSERT_TRUE(other.load(plugin.save()));
        ASSERT_TRUE(other.activate());
        ASSERT_TRUE(plugin.activate());
        EXPECT_TRUE(sameBits(renderClap(other, input, 512), renderClap(plugin, input, 512))) << seed;
        plugin.deactivate();
    }
}

TEST_F(ClapState, OfAnEarlierProcessComesBackWithItsValuesAndItsSound) {
    const double saved[12] = {0.34567, 0.123456789, 0.71, 0.25, 0.6666667, 0.9, 2, 0, 0, 0.0625, 0.8125, 1};
    for (clap_id id = 0; id < 12; ++id) {
        plugin.setValue(id, saved[id]);
    }
    plugin.setValue(kBypassId, 0.0);
    const Bytes now = plugin.save();
    expectGolden("clap/session.state", std::string(now.begin(), now.end()));

    std::ifstream file(std::string(QOR_GOLDEN_FOLDER) + "/clap/session.state", std::ios::binary);
    const Bytes kept{std::istreambuf_iterator<char>(file), {}};
    ClapPluginUnderTest other(host);
    ASSERT_TRUE(other.load(kept));
    EXPECT_EQ(values(other), values(plugin));
    ASSERT_TRUE(other.activate());
    ASSERT_TRUE(plugin.activate());
    const Stereo input = noise(8000, 1.5F);
    EXPECT_TRUE(sameBits(renderClap(other, input, 512), renderClap(plugin, input, 512)));
}

TEST_F(ClapState, PassesThroughStreamsThatTakeAndGiveFewBytesAtATime) {
    randomise(4);
    const Bytes whole = plugin.save();
    ASSERT_FALSE(whole.empty());
    const auto& state = plugin.extension<clap_plugin_state_t>(CLAP_EXT_STATE);
    for (const std::size_t step : {1U, 3U, 100U, 4096U}) {
        ClapBytes stream;
        stream.step = step;
        const clap_ostream_t out = stream.output();
        EXPECT_TRUE(state.save(plugin.get(), &out));
        EXPECT_EQ(stream.bytes, whole);
        ClapPluginUnderTest other(host);
        const clap_istream_t in = stream.input();
        EXPECT_TRUE(other.extension<clap_plugin_state_t>(CLAP_EXT_STATE).load(other.get(), &in));
        EXPECT_EQ(values(other), values(plugin));
    }
}

TEST_F(ClapState, AFailingStreamFailsTheCallAndKeepsTheValues) {
    randomise(5);
    const std::vector<double> before = values(plugin);
    const Bytes whole = plugin.save();
    const auto& state = plugin.extension<clap_plugin_state_t>(CLAP_EXT_STATE);
    for (const std::size_t after : {std::size_t{0}, std::size_t{10}, whole.size() / 2}) {
        ClapBytes stream;
        stream.step = 10;
        stream.failsAfter = after;
        const clap_ostream_t out = stream.output();
        EXPECT_FALSE(state.save(plugin.get(), &out));
        ClapBytes source;
        source.bytes = whole;
        source.step = 10;
        source.failsAfter = after;
        const clap_istream_t in = source.input();
        EXPECT_FALSE(state.load(plugin.get(), &in));
    }
    ClapBytes still; // takes nothing at all
    still.step = 0;
    const clap_ostream_t stuck = still.output();
    EXPECT_FALSE(state.save(plugin.get(), &stuck));
    const clap_ostream_t liar{nullptr, [](const clap_ostream_t*, const void*, std::uint64_t size) {
                                  return static_cast<std::int64_t>(size + 1);
                              }};
    EXPECT_FALSE(state.save(plugin.get(), &liar));
    const clap_istream_t generous{nullptr, [](const clap_istream_t*, void*, std::uint64_t size) {
                                      return static_cast<std::int64_t>(size + 1);
                                  }};
    EXPECT_FALSE(state.load(plugin.get(), &generous));
    EXPECT_FALSE(state.save(plugin.get(), nullptr));
    EXPECT_FALSE(state.load(plugin.get(), nullptr));
    const clap_ostream_t hollowOut{};
    const clap_istream_t hollowIn{};
    EXPECT_FALSE(state.save(plugin.get(), &hollowOut));
    EXPECT_FALSE(state.load(plugin.get(), &hollowIn));
    EXPECT_EQ(values(plugin), before);
}

TEST_F(ClapState, AStreamWithoutAnEndIsRefused) {
    const clap_istream_t endless{nullptr, [](const clap_istream_t*, void* buffer, std::uint64_t size) {
                                     std::memset(buffer, 'x', size);
                                     return static_cast<std::int64_t>(size);
                                 }};
    EXPECT_FALSE(plugin.extension<clap_plugin_state_t>(CLAP_EXT_STATE).load(plugin.get(), &endless));
    EXPECT_EQ(host.logged.size(), 1U);
}

TEST_F(ClapState, ADamagedStateIsRefusedWithAReasonAndKeepsTheValues) {
    randomise(6);
    const Bytes whole = plugin.save();
    randomise(7);
    const std::vector<double> before = values(plugin);
    for (std::size_t size = 0; size < whole.size(); size += 37) {
        EXPECT_FALSE(plugin.load(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size))));
    }
    EXPECT_FALSE(plugin.load({}));
    EXPECT_FALSE(plugin.load(Bytes(1000, 0xFF)));
    Bytes strange = whole;
    strange[25] ^= 0x10; // in the line for the bypass
    EXPECT_FALSE(plugin.load(strange));
    EXPECT_EQ(values(plugin), before);
    EXPECT_FALSE(host.logged.empty());
    EXPECT_EQ(host.rescans, 0);
}

TEST_F(ClapState, ADamagedByteIsRefusedOrGivesValuesInTheirRanges) {
    randomise(8);
    const Bytes whole = plugin.save();
    std::mt19937 random(1);
    for (int i = 0; i < 300; ++i) {
        Bytes damaged = whole;
        damaged[random() % damaged.size()] = static_cast<std::uint8_t>(random());
        plugin.load(damaged);
        for (std::uint32_t index = 0; index < 13; ++index) {
            clap_param_info_t info{};
            plugin.params().get_info(plugin.get(), index, &info);
            const double value = plugin.value(info.id);
            EXPECT_TRUE(value >= info.min_value && value <= info.max_value) << info.name;
        }
    }
}

TEST_F(ClapState, LoadingTellsTheHostToReadTheValuesAnew) {
    const Bytes whole = plugin.save();
    ASSERT_TRUE(plugin.load(whole));
    EXPECT_EQ(host.rescans, 1);
    EXPECT_EQ(host.rescanned, clap_param_rescan_flags{CLAP_PARAM_RESCAN_VALUES});
    host.offersParams = false;
    ClapPluginUnderTest quiet(host);
    EXPECT_TRUE(quiet.load(whole));
}

TEST_F(ClapState, MayBeLoadedWhileActive) {
    randomise(3);
    const Bytes whole = plugin.save();
    ClapPluginUnderTest other(host);
    ASSERT_TRUE(other.activate());
    const Stereo input = noise(1024, 1.0F);
    renderClap(other, input, 256);
    ASSERT_TRUE(other.load(whole));
    EXPECT_EQ(values(other), values(plugin));
    const Stereo made = renderClap(other, input, 256);
    EXPECT_TRUE(std::all_of(made.left.begin(), made.left.end(), [](float x) { return std::isfinite(x); }));
}
