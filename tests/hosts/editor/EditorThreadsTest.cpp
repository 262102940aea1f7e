// The editor among its threads: one renders, one serves the editor while its window is closed, and a person
// works at it meanwhile. Of use mostly in the tsan build, with tests/tsan.supp.
#include "hosts/shared/EditorHost.h"
#include "kernel/ParameterTable.h"
#include "platform/view/HeadlessWindow.h"
#include "support/CapturedLog.h"

#include <array>
#include <atomic>
#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <thread>

namespace {

using namespace qor;
using namespace qor::host;

/// Renders loud blocks with a move of the mix in each until it is destroyed.
class Renderer {
public:
    explicit Renderer(UnitHost& host) : thread_([this, &host] { run(host); }) {}
    ~Renderer() { end(); }
    Renderer(const Renderer&) = delete;
    Renderer& operator=(const Renderer&) = delete;

    /// How many samples were not finite.
    int end() {
        ending_.store(true);
        if (thread_.joinable()) {
            thread_.join();
        }
        return bad_;
    }

private:
    static constexpr std::uint32_t kFrames = 64;

    void run(UnitHost& host) {
        std::array<float, kFrames> left{};
        std::array<float, kFrames> right{};
        for (int call = 0; !ending_.load(); ++call) {
            left.fill(1.5F);
            right.fill(-1.5F);
            HostEvent event;
            event.kind = HostEventKind::Parameter;
            event.address = kLimiterMix;
            event.value = call % 2 == 0 ? 1.0F : 0.5F;
            float* const both[2] = {left.data(), right.data()};
            host.render(both, both, kFrames, SpanEvents(std::span(&event, 1)));
            bad_ += std::isfinite(left[0]) && std::isfinite(right[kFrames - 1]) ? 0 : 1;
        }
    }

    std::atomic<bool> ending_{false};
    int bad_ = 0;
    std::thread thread_;
};

class EditorThreads : public ::testing::Test {
protected:
    LogSink& before = setLogSink(discardingSink());
    ManualClock clock; // read by the service thread while the window is closed, moved while it is open
    std::unique_ptr<UnitHost> units = UnitHost::create({}).value();
    UnitHostModel model{*units};
    std::unique_ptr<EditorHost> editor;
    std::unique_ptr<HeadlessWindow> headless;

    void SetUp() override {
        ASSERT_TRUE(units->activate(48000.0));
        EditorHostOptions options;
        options.clock = &clock;
        auto made = EditorHost::create(model, options);
        ASSERT_TRUE(made) << made.error().localizedDescription();
        editor = std::move(made).value();
        const EditorHost::Turn turn(*editor);
        headless = std::make_unique<HeadlessWindow>(EditorHost::kPreferredSize, editor->runLoop(), clock);
    }
    void TearDown() override {
        editor = nullptr;
        headless = nullptr;
        units = nullptr;
        setLogSink(before);
    }

    /// What a native window does with one turn of input.
    void dragThreshold(double up) {
        constexpr CGPoint kThreshold{.x = 329.0, .y = 94.0};
        {
            const EditorHost::Turn turn(*editor);
            headless->drag(kThreshold, {.x = kThreshold.x, .y = kThreshold.y - up});
            clock.advance(0.05); // a tick of the meters
        }
        editor->pump();
        const EditorHost::Turn turn(*editor);
        headless->settle();
    }
    /// Lets a task run in the editor's loop and tells on which thread it did.
    std::thread::id threadOfATask() {
        std::atomic<bool> ran{false};
        std::thread::id thread;
        editor->runLoop().async([&] {
            thread = std::this_thread::get_id();
            ran.store(true);
        });
        while (!ran.load()) {
            std::this_thread::yield();
        }
        return thread;
    }
};

TEST_F(EditorThreads, APersonDragsWhileAnotherThreadRendersAndAutomates) {
    Renderer renderer(*units);
    editor->open(headless->window());
    const float first = units->parameter(kLimiterThreshold);
    for (int i = 0; i < 15; ++i) {
        dragThreshold(-2.0);
    }
    EXPECT_LT(units->parameter(kLimiterThreshold), first);
    editor->close();
    EXPECT_EQ(renderer.end(), 0);
}

TEST_F(EditorThreads, TheServiceThreadServesTheEditorWhileItsWindowIsClosed) {
    Renderer renderer(*units);
    for (int round = 0; round < 4; ++round) {
        editor->open(headless->window());
        dragThreshold(round % 2 == 0 ? 10.0 : -10.0);
        editor->close();
        ASSERT_NE(threadOfATask(), std::this_thread::get_id());
        EXPECT_TRUE(units->setParameter(kLimiterKnee, 0.25F * static_cast<float>(round)));
    }
    EXPECT_EQ(renderer.end(), 0);
}

TEST_F(EditorThreads, ABrokenUnitIsReplacedUnderAnOpenEditor) {
    units->setOnUnitReplaced([this] { editor->unitReplaced(); });
    editor->open(headless->window());
    const QOR_Limiter_Extension_AudioUnit* const broken = &units->unit();
    units->unit().kernelAdapter->setParameterEx(kLimiterFinalLimiter, 0.0F);
    units->unit().kernelAdapter->setParameterEx(kLimiterAttack, -1e30F); // past the tree: nobody shows it
    Renderer renderer(*units);
    while (&units->unit() == broken) {
        dragThreshold(1.0);
    }
    EXPECT_EQ(editor->registrations(), 2U); // on the fresh unit's tree: the surface's and the strip's
    dragThreshold(-20.0);
    EXPECT_EQ(renderer.end(), 0);
    editor->close();
    units->setOnUnitReplaced(nullptr);
}

} // namespace
