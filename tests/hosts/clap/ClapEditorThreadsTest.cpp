// The editor of a host that offers nothing but the calls every host has: there the service thread puts fresh
// units in place, also while the host's main thread makes or ends the editor. Of use mostly in the tsan
// build.
#include "hosts/clap/ClapEditor.h"
#include "kernel/ParameterTable.h"
#include "support/CapturedLog.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <thread>

using namespace qor;
using namespace qor::clap;

namespace {

class ClapEditorThreads : public ::testing::Test {
protected:
    ClapEditorThreads() {
        table.clap_version = CLAP_VERSION;
        table.get_extension = [](const clap_host_t*, const char*) -> const void* { return nullptr; };
        table.request_callback = [](const clap_host_t*) {};
        host.askForExtensions();
    }
    ~ClapEditorThreads() override {
        units = nullptr;
        setLogSink(before);
    }

    /// Takes the unit past what its state stands; past the tree as well, so that no editor shows the value.
    void breakUnit() {
        ASSERT_TRUE(units->activate(48000.0));
        units->unit().kernelAdapter->setParameterEx(kLimiterFinalLimiter, 0.0F);
        units->unit().kernelAdapter->setParameterEx(kLimiterAttack, kBroken);
    }
    /// Renders until the service thread has put a fresh unit in place; returns how many samples were not
    /// finite.
    int renderUntilReplaced() {
        constexpr std::uint32_t kFrames = 64;
        std::array<float, kFrames> left{};
        std::array<float, kFrames> right{};
        int bad = 0;
        while (units->parameter(kLimiterAttack) == kBroken) {
            left.fill(2.0F);
            right.fill(-2.0F);
            float* const both[2] = {left.data(), right.data()};
            units->render(both, both, kFrames, host::SpanEvents({}));
            bad += std::isfinite(left[0]) && std::isfinite(right[0]) ? 0 : 1;
        }
        return bad;
    }

    static constexpr float kBroken = -1e30F;
    LogSink& before = setLogSink(discardingSink());
    clap_host_t table{};
    ClapHost host{&table};
    std::unique_ptr<host::UnitHost> units = host::UnitHost::create({}).value(); // with its service thread
    ClapPulse pulse{host, *units};
    ClapEditQueue edits;
};

} // namespace

TEST_F(ClapEditorThreads, AnEditorIsMadeWhileAFreshUnitIsPutInPlace) {
    for (int round = 0; round < 5; ++round) {
        ClapEditor editor(*units, host, edits, pulse);
        breakUnit();
        int bad = -1;
        std::thread audio([&] { bad = renderUntilReplaced(); });
        EXPECT_TRUE(editor.create(true));
        audio.join();
        EXPECT_EQ(bad, 0);
        units->deactivate();
        editor.destroy();
    }
}

TEST_F(ClapEditorThreads, AUnitThatOutlivesItsEditorTellsItNothing) {
    auto editor = std::make_unique<ClapEditor>(*units, host, edits, pulse);
    EXPECT_TRUE(editor->create(true));
    editor.reset();
    breakUnit();
    int bad = -1;
    std::thread audio([&] { bad = renderUntilReplaced(); });
    audio.join();
    EXPECT_EQ(bad, 0);
    units->deactivate();
}
