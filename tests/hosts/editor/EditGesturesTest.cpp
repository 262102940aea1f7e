#include "EditorHostFixture.h"

#include <gtest/gtest.h>

using namespace test;

namespace {

class EditGesturesTest : public HostedEditor {
protected:
    void SetUp() override {
        open();
        editor->setEditSink([this](AUParameterAddress address, EditPhase step, float value) {
            const std::string name = kParameterTable[address].shortName;
            switch (step) {
            case EditPhase::begin:
                told.push_back("begin " + name);
                return;
            case EditPhase::value:
                told.push_back(name + " " + text(value));
                return;
            case EditPhase::end:
                told.push_back("end " + name);
                return;
            }
        });
    }
    /// Input as a native window gives it: within a turn.
    template <class Input>
    void within(Input input) {
        const EditorHost::Turn turn(*editor);
        input();
    }

    std::vector<std::string> told;
};

} // namespace

TEST_F(EditGesturesTest, ADragIsOneGestureWithItsValues) {
    set(kLimiterTrim, 0.5F);
    turn();
    told.clear();
    within([&] { headless->down({.x = 83.0, .y = 200.0}); });
    EXPECT_TRUE(told.empty());
    within([&] { headless->move({.x = 83.0, .y = 215.0}); });
    within([&] { headless->move({.x = 83.0, .y = 185.0}); });
    within([&] { headless->up({.x = 83.0, .y = 185.0}); });
    EXPECT_EQ(told, (std::vector<std::string>{"begin trim", "trim 0.425", "trim 0.575", "end trim"}));
}

TEST_F(EditGesturesTest, AButtonIsAGestureFromDownToUp) {
    within([&] { headless->down({.x = 88.0, .y = 284.0}); });
    EXPECT_EQ(told, (std::vector<std::string>{"begin bypass", "bypass 1.0"}));
    within([&] { headless->up({.x = 88.0, .y = 284.0}); });
    EXPECT_EQ(told.back(), "end bypass");
}

TEST_F(EditGesturesTest, AWheelStepIsAGestureOfItsOwn) {
    within([&] { headless->window().wheel(middle("lowPass"), 0.0, -1.0); });
    ASSERT_EQ(told.size(), 3U);
    EXPECT_EQ(told.front(), "begin inputfilterlp");
    EXPECT_EQ(told.back(), "end inputfilterlp");
}

TEST_F(EditGesturesTest, WhatTheHostSetsAndWhatAutomationMovesIsNotAPersonsDoing) {
    set(kLimiterMix, 0.25F);
    const std::array<HostEvent, 1> events{{{.frame = 0,
                                            .kind = HostEventKind::Parameter,
                                            .address = kLimiterAttack,
                                            .value = 0.75F,
                                            .sysEx = {}}}};
    std::vector<float> left(64);
    std::vector<float> right(64);
    const float* input[2] = {left.data(), right.data()};
    float* output[2] = {left.data(), right.data()};
    units->render(input, output, 64, SpanEvents(events));
    turn();
    turn();
    EXPECT_TRUE(told.empty());
}

TEST_F(EditGesturesTest, ClosingInTheMiddleOfADragEndsTheGesture) {
    within([&] { headless->down({.x = 83.0, .y = 200.0}); });
    within([&] { headless->move({.x = 83.0, .y = 215.0}); });
    editor->close();
    EXPECT_EQ(told.back(), "end trim");
}

TEST_F(EditGesturesTest, AnEditorThatEndsWithADialogOpenLetsGoOfEverything) {
    click("mode");
    ASSERT_NE(controller().presentedViewController(), nullptr);
    const Weak<AudioUnitViewController> watched = editor->controller();
    editor.reset();
    EXPECT_TRUE(watched.expired());
}
