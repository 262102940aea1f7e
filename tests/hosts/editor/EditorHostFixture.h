// An editor on a unit host, in a headless window, with time by hand.
#pragma once

#include "hosts/shared/EditorHost.h"
#include "platform/view/HeadlessWindow.h"
#include "support/CapturedLog.h"
#include "support/TemporaryDirectory.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace test {

using namespace qor;       // NOLINT(google-build-using-namespace): the system under test
using namespace qor::host; // NOLINT(google-build-using-namespace)

class HostedEditor : public testing::Test {
protected:
    HostedEditor() {
        UnitHostOptions unitOptions;
        unitOptions.serviced = false;
        unitOptions.clock = &clock;
        auto made = UnitHost::create(unitOptions);
        EXPECT_TRUE(made);
        units = std::move(made).value();
        EXPECT_TRUE(units->activate(48000.0));
        model = std::make_unique<UnitHostModel>(*units);
        EditorHostOptions options;
        options.serviced = false;
        options.clock = &clock;
        auto hosted = EditorHost::create(*model, options);
        EXPECT_TRUE(hosted) << hosted.error().localizedDescription();
        editor = std::move(hosted).value();
        headless = std::make_unique<HeadlessWindow>(EditorHost::kPreferredSize, editor->runLoop(), clock);
    }
    ~HostedEditor() override {
        editor.reset();
        headless.reset();
    }

    void open() {
        editor->open(headless->window());
        turn();
    }
    /// One idle call.
    void turn() {
        editor->pump();
        headless->settle();
    }
    /// Idle calls until the time is over.
    void run(double seconds) {
        const double end = clock.now() + seconds;
        while (clock.now() < end) {
            clock.set(std::min(end, clock.now() + 0.005));
            turn();
        }
    }
    AudioUnitViewController& controller() { return *editor->controller(); }
    QORLimiterViewBase& base() { return *controller().mainView->baseClass; }
    UIView& find(const std::string& identifier) {
        UIView* found = headless->window().viewWithIdentifier(identifier);
        EXPECT_NE(found, nullptr) << identifier;
        return *found;
    }
    CGPoint middle(const std::string& identifier) {
        UIView& view = find(identifier);
        const CGRect area = view.bounds();
        return view.convertPointToWindow({.x = CGRectGetMidX(area), .y = CGRectGetMidY(area)});
    }
    void click(const std::string& identifier) {
        headless->click(middle(identifier));
        turn();
    }
    /// As a plug-in host's knob would.
    void set(AUParameterAddress address, float value) { EXPECT_TRUE(units->setParameter(address, value)); }
    std::string info() { return dynamic_cast<UILabel&>(find("info")).text().value_or(""); }
    std::size_t observers() { return units->unit().parameterTree()->parameterObserverCount(); }
    /// Renders a loud sine of the given length.
    void play(double seconds, float level) {
        constexpr std::uint32_t kFrames = 480;
        std::array<std::vector<float>, 4> buffers;
        buffers.fill(std::vector<float>(kFrames));
        const SpanEvents none({});
        for (int block = 0; block < static_cast<int>(std::lround(seconds * 100.0)); ++block) {
            for (std::uint32_t i = 0; i < kFrames; ++i) {
                phase += 2.0 * M_PI * 440.0 / 48000.0;
                buffers[0][i] = buffers[1][i] = level * static_cast<float>(std::sin(phase));
            }
            const float* input[2] = {buffers[0].data(), buffers[1].data()};
            float* output[2] = {buffers[2].data(), buffers[3].data()};
            units->render(input, output, kFrames, none);
        }
    }
    std::vector<std::string> editorLines() const {
        std::vector<std::string> found = log.lines();
        std::erase_if(found, [](const std::string& line) {
            return line.starts_with("AUExtension") || line.starts_with("unit received parameter");
        });
        return found;
    }

    TemporaryDirectory data;
    ScopedVariable dataVariable{"XDG_DATA_HOME", data.path().string()};
    CapturedLog log;
    ManualClock clock;
    std::unique_ptr<UnitHost> units;
    std::unique_ptr<UnitHostModel> model;
    std::unique_ptr<EditorHost> editor;
    std::unique_ptr<HeadlessWindow> headless;
    double phase = 0.0;
};

} // namespace test
