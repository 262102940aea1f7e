// Drives the built shared object as a host does.
#include "HostRendering.h"
#include "hosts/lv2/Lv2Ports.h"
#include "support/CapturedLog.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <lv2/core/lv2.h>

#include <array>
#include <cstdio>
#include <limits>
#include <thread>

using namespace qor;
using namespace qor::lv2;

namespace {

/// The object, loaded for the whole program.
const LV2_Descriptor* descriptor() {
    static void* object = dlopen(QOR_LV2_OBJECT, RTLD_NOW | RTLD_LOCAL);
    static const auto entry = reinterpret_cast<LV2_Descriptor_Function>(
        object == nullptr ? nullptr : dlsym(object, "lv2_descriptor"));
    return entry == nullptr ? nullptr : entry(0);
}

class Instance {
public:
    explicit Instance(double rate = 48000.0)
        : handle_(descriptor()->instantiate(descriptor(), rate, "/", nullptr)) {
        for (const ParameterRow& row : kParameterTable) {
            control(kFirstParameter + static_cast<std::uint32_t>(row.address)) = row.defaultValue;
        }
        control(kEnabled) = 1.0F;
        for (std::uint32_t port = kFirstParameter; port < kPortCount; ++port) {
            descriptor()->connect_port(handle_, port, &controls_[port]);
        }
        descriptor()->activate(handle_);
    }
    ~Instance() {
        descriptor()->deactivate(handle_);
        descriptor()->cleanup(handle_);
    }
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    bool isThere() const { return handle_ != nullptr; }
    LV2_Handle handle() const { return handle_; }
    float& control(std::uint32_t port) { return controls_[port]; }
    float& parameter(AUParameterAddress address) { return controls_[kFirstParameter + address]; }

    void run(const float* left, const float* right, float* outLeft, float* outRight, std::uint32_t frames) {
        descriptor()->connect_port(handle_, kInputLeft, const_cast<float*>(left));
        descriptor()->connect_port(handle_, kInputRight, const_cast<float*>(right));
        descriptor()->connect_port(handle_, kOutputLeft, outLeft);
        descriptor()->connect_port(handle_, kOutputRight, outRight);
        descriptor()->run(handle_, frames);
    }
    test::Stereo render(const test::Stereo& input, std::uint32_t block) {
        test::Stereo output = test::silence(input.frames());
        for (std::size_t start = 0; start < input.frames(); start += block) {
            const auto count =
                static_cast<std::uint32_t>(std::min<std::size_t>(block, input.frames() - start));
            run(input.left.data() + start, input.right.data() + start, output.left.data() + start,
                output.right.data() + start, count);
        }
        return output;
    }

private:
    LV2_Handle handle_;
    std::array<float, kPortCount> controls_{};
};

std::unique_ptr<host::UnitHost> bareHost(double rate,
                                         const std::vector<std::pair<AUParameterAddress, float>>& settings) {
    auto host = test::makeHost();
    for (const auto& [address, value] : settings) {
        EXPECT_TRUE(host->setParameter(address, value));
    }
    EXPECT_TRUE(host->activate(rate));
    return host;
}

} // namespace

TEST(Lv2Bundle, HasOnePluginUnderItsUri) {
    ASSERT_NE(descriptor(), nullptr);
    EXPECT_STREQ(descriptor()->URI, kPluginUri);
    EXPECT_EQ(descriptor()->extension_data("urn:nothing"), nullptr);
}

TEST(Lv2Bundle, SoundsAsTheBareUnitAtEveryBlockSize) {
    const test::CapturedLog log;
    const std::vector<std::pair<AUParameterAddress, float>> settings{
        {kLimiterThreshold, 0.35F}, {kLimiterKnee, 1.0F},          {kLimiterAttack, 0.4F},
        {kLimiterMode, 2.0F},       {kLimiterInputFilterHP, 0.5F}, {kLimiterInputFilterLP, 0.9F}};
    const test::Stereo input = test::noise(20000, 0.9F);
    for (const float finalLimiter : {0.0F, 1.0F}) {
        const auto bare = bareHost(48000.0, settings);
        ASSERT_TRUE(bare->setParameter(kLimiterFinalLimiter, finalLimiter));
        const test::Stereo expected = test::render(*bare, input, 512);
        for (const std::uint32_t block : {1U, 64U, 333U, 4096U, 20000U}) {
            Instance plugin;
            for (const auto& [address, value] : settings) {
                plugin.parameter(address) = value;
            }
            plugin.parameter(kLimiterFinalLimiter) = finalLimiter;
            EXPECT_TRUE(test::sameBits(plugin.render(input, block), expected))
                << block << " " << finalLimiter;
        }
    }
}

TEST(Lv2Bundle, TakesEveryRateAndSeveralActivations) {
    for (const double rate : {8000.0, 44100.0, 96000.0, 384000.0}) {
        Instance plugin(rate);
        ASSERT_TRUE(plugin.isThere());
        const test::Stereo input = test::noise(1000, 0.5F);
        const test::Stereo first = plugin.render(input, 100);
        descriptor()->deactivate(plugin.handle());
        descriptor()->activate(plugin.handle());
        const test::Stereo second = plugin.render(input, 100);
        EXPECT_GT(second.peak(), 0.0F);
        EXPECT_LE(second.peak(), 1.0F);
        EXPECT_GT(first.peak(), 0.0F);
    }
}

TEST(Lv2Bundle, RefusesARateThatCannotBeHad) {
    EXPECT_EQ(descriptor()->instantiate(descriptor(), 0.0, "/", nullptr), nullptr);
}

TEST(Lv2Bundle, AMovedPortTakesEffectFromTheNextBlock) {
    const test::CapturedLog log;
    const test::Stereo input = test::noise(2048, 0.9F);
    const auto bare = bareHost(48000.0, {});
    const test::Stereo expected =
        test::render(*bare, input, 1024, {test::parameterAt(1024, kLimiterTrim, 0.25F)});
    Instance plugin;
    test::Stereo output = test::silence(2048);
    plugin.run(input.left.data(), input.right.data(), output.left.data(), output.right.data(), 1024);
    plugin.parameter(kLimiterTrim) = 0.25F;
    plugin.run(input.left.data() + 1024, input.right.data() + 1024, output.left.data() + 1024,
               output.right.data() + 1024, 1024);
    EXPECT_TRUE(test::sameBits(output, expected));
}

TEST(Lv2Bundle, BothFilterEdgesCanMoveAtOnceInEitherDirection) {
    const test::Stereo input = test::noise(4096, 0.5F);
    for (const auto& [before, after] : {std::pair{std::pair{0.1F, 0.3F}, std::pair{0.7F, 0.9F}},
                                        std::pair{std::pair{0.7F, 0.9F}, std::pair{0.1F, 0.3F}}}) {
        Instance moved;
        Instance recalled;
        moved.parameter(kLimiterInputFilterHP) = before.first;
        moved.parameter(kLimiterInputFilterLP) = before.second;
        moved.render(test::silence(64), 64);
        for (Instance* each : {&moved, &recalled}) {
            each->parameter(kLimiterInputFilterHP) = after.first;
            each->parameter(kLimiterInputFilterLP) = after.second;
        }
        recalled.render(test::silence(64), 64);
        EXPECT_TRUE(test::sameBits(moved.render(input, 512), recalled.render(input, 512)));
    }
}

TEST(Lv2Bundle, ReportsItsMeters) {
    Instance plugin;
    plugin.parameter(kLimiterThreshold) = 0.2F;
    plugin.render(test::noise(48000, 0.9F), 512);
    EXPECT_LT(plugin.control(kFirstMeter), 1.0F);
    EXPECT_GT(plugin.control(kFirstMeter + 2), 0.01F);
    EXPECT_LE(plugin.control(kFirstMeter + 3), 1.0F);
    plugin.render(test::silence(96000), 512);
    EXPECT_EQ(plugin.control(kFirstMeter + 2), 0.0F);
}

TEST(Lv2Bundle, DisabledItLetsTheInputThroughAndSwitchesWithoutAClick) {
    Instance plugin;
    plugin.parameter(kLimiterThreshold) = 0.0F;
    const test::Stereo input{std::vector<float>(4800, 0.8F), std::vector<float>(4800, -0.8F)};
    plugin.render(input, 480);
    plugin.control(kEnabled) = 0.0F;
    const test::Stereo fading = plugin.render(input, 480);
    for (std::size_t i = 1; i < fading.frames(); ++i) {
        ASSERT_LT(std::fabs(fading.left[i] - fading.left[i - 1]), 0.01F) << i;
    }
    EXPECT_TRUE(test::sameBits(plugin.render(input, 480), input));
    Instance disabledFromTheStart;
    disabledFromTheStart.control(kEnabled) = 0.0F;
    EXPECT_TRUE(test::sameBits(disabledFromTheStart.render(input, 480), input));
}

TEST(Lv2Bundle, SurvivesWhatNoHostShouldDo) {
    Instance plugin;
    std::vector<float> buffer(10000, 0.5F);
    plugin.run(buffer.data(), buffer.data(), buffer.data(), buffer.data(), 10000);
    plugin.run(nullptr, nullptr, nullptr, nullptr, 64);
    plugin.run(nullptr, nullptr, nullptr, nullptr, 0);
    descriptor()->connect_port(plugin.handle(), 4000, buffer.data());
    for (const float bad :
         {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(), -1e30F}) {
        for (std::uint32_t port = kFirstParameter; port <= kEnabled; ++port) {
            plugin.control(port) = bad;
        }
        plugin.run(buffer.data(), buffer.data(), buffer.data(), buffer.data() + 5000, 5000);
    }
    for (std::uint32_t port = kFirstParameter; port < kPortCount; ++port) {
        descriptor()->connect_port(plugin.handle(), port, nullptr);
    }
    plugin.run(buffer.data(), buffer.data(), buffer.data(), buffer.data() + 5000, 5000);
    for (const float sample : buffer) {
        ASSERT_TRUE(std::isfinite(sample));
    }
}

TEST(Lv2Bundle, GivesTheHostItsFloatingPointModeBack) {
    Instance plugin;
    volatile float tiny = 1e-39F;
    plugin.render(test::silence(64), 64);
    const float kept = tiny * 0.5F;
    EXPECT_GT(kept, 0.0F);
}

TEST(Lv2Bundle, SixtyFourInstancesRunOnTwoThreads) {
    std::vector<std::unique_ptr<Instance>> instances;
    for (int i = 0; i < 64; ++i) {
        instances.push_back(std::make_unique<Instance>());
    }
    const test::Stereo input = test::noise(4096, 0.9F);
    std::vector<test::Stereo> outputs(64);
    const auto runHalf = [&](std::size_t first) {
        for (std::size_t i = first; i < 64; i += 2) {
            outputs[i] = instances[i]->render(input, 128);
        }
    };
    std::thread other(runHalf, 1);
    runHalf(0);
    other.join();
    for (const test::Stereo& output : outputs) {
        EXPECT_TRUE(test::sameBits(output, outputs.front()));
    }
}

// A sanitizer keeps freed memory back for a while, so the figure means nothing there.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
TEST(Lv2Bundle, AThousandInstancesComeAndGoWithMemoryLevel) {
    const auto residentPages = [] {
        long total = 0;
        long resident = 0;
        if (FILE* file = std::fopen("/proc/self/statm", "r"); file != nullptr) {
            if (std::fscanf(file, "%ld %ld", &total, &resident) != 2) {
                resident = -1;
            }
            std::fclose(file);
        }
        return resident;
    };
    for (int i = 0; i < 200; ++i) {
        Instance plugin;
        plugin.render(test::silence(64), 64);
    }
    const long before = residentPages();
    for (int i = 0; i < 1000; ++i) {
        Instance plugin;
        plugin.render(test::silence(64), 64);
    }
    EXPECT_LT(residentPages() - before, 512) << "pages grown";
}
#endif
