#include "EditorHostFixture.h"

#include "hosts/shared/ChoiceMenu.h"
#include "hosts/shared/ParameterUnits.h"
#include "platform/draw/RecordingContext.h"

#include <malloc.h>

namespace {

using namespace qor;       // NOLINT(google-build-using-namespace): the system under test
using namespace qor::host; // NOLINT(google-build-using-namespace)
using test::HostedEditor;

constexpr CGPoint kThreshold{.x = 329.0, .y = 94.0};
constexpr auto kConnected = "AU Diagnostics: Connected parameters to the plugins interface.";

/// A wheel turn over a place, within the editor's lock and loop.
void turnWheel(HeadlessWindow& window, const CGPoint& at, double notches, std::uint32_t modifiers = 0) {
    EXPECT_TRUE(window.wheel(at, notches, modifiers));
}

class Hosted : public HostedEditor {
protected:
    long connections() const {
        const auto lines = log.lines();
        return std::count(lines.begin(), lines.end(), kConnected);
    }
    UITextField& entry() { return dynamic_cast<UITextField&>(find("valueEntry")); }
    ChoiceListView& choices() { return dynamic_cast<ChoiceListView&>(find("choices")); }
    void choose(std::size_t row) {
        headless->click(choices().convertPointToWindow(
            {.x = 10.0, .y = (static_cast<double>(row) + 0.5) * ChoiceListView::kRow}));
        turn();
    }
};

} // namespace

TEST_F(Hosted, JoinsTheUnitExactlyOnceHoweverOftenTheWindowOpens) {
    EXPECT_EQ(editor->controller(), nullptr);
    EXPECT_EQ(observers(), 0u);
    open();
    EXPECT_EQ(connections(), 1);
    EXPECT_EQ(observers(), 2u); // the controller's and the strip's
    editor->close();
    open();
    EXPECT_EQ(connections(), 1);
    EXPECT_EQ(observers(), 2u);
    EXPECT_EQ(base().valueThreshold, static_cast<double>(0.8F));
}

TEST_F(Hosted, ClosingOnlyDetachesTheWindow) {
    open();
    controller().isSizeable = false;
    editor->close();
    EXPECT_EQ(headless->window().rootView(), nullptr);
    EXPECT_FALSE(editor->isOpen());
    set(kLimiterThreshold, 0.25F);
    editor->pump();
    EXPECT_EQ(base().valueThreshold, 0.25); // it follows while it is closed
    open();
    EXPECT_FALSE(controller().isSizeable);
}

TEST_F(Hosted, ItsEndTakesEverythingOffTheTreeAndFreesTheController) {
    open();
    const Weak<AudioUnitViewController> weak = editor->controller();
    {
        const EditorHost::Turn turn(*editor);
        controller().showInfo("still running");
    }
    editor.reset();
    EXPECT_EQ(observers(), 0u);
    EXPECT_TRUE(weak.expired());
    set(kLimiterThreshold, 0.5F); // nobody is left to be told
}

TEST_F(Hosted, FollowsAUnitThatReplacesABrokenOne) {
    open();
    editor->unitReplaced();
    EXPECT_EQ(observers(), 2u);
    EXPECT_EQ(connections(), 2);
    set(kLimiterThreshold, 0.5F);
    turn();
    EXPECT_EQ(base().valueThreshold, 0.5);
}

TEST_F(Hosted, ThePanelFillsWhatTheStripLeaves) {
    open();
    EXPECT_EQ(controller().view()->frame(), CGRectMake(0.0, 0.0, 512.0, 340.0));
    EXPECT_EQ(controller().pluginView->frame(), CGRectMake(0.0, 0.0, 512.0, 340.0));
    EXPECT_EQ(find("strip").frame(), CGRectMake(0.0, 340.0, 512.0, 52.0));
    headless->resize({.width = 1024.0, .height = 784.0});
    EXPECT_EQ(controller().view()->frame(), CGRectMake(0.0, 0.0, 1024.0, 680.0));
    EXPECT_EQ(find("strip").frame(), CGRectMake(0.0, 680.0, 1024.0, 104.0));
    for (const CGSize& size :
         {CGSize{.width = 1.0, .height = 1.0}, CGSize{.width = 0.0, .height = 0.0},
          CGSize{.width = 100.0, .height = 900.0}, CGSize{.width = 2000.0, .height = 60.0}}) {
        headless->resize(size);
    }
    headless->resize(EditorHost::kPreferredSize);
    EXPECT_EQ(base().viewScale, (CGSize{.width = 1.0, .height = 1.0}));
}

TEST_F(Hosted, TheStripNeverChangesThePanelsDrawing) {
    open();
    RecordingContext before;
    controller().view()->drawHierarchy(before);
    click("mode");
    choose(3);
    click("final");
    headless->drag(middle("highPass"), middle("highPassValue"));
    turn();
    RecordingContext after;
    controller().view()->drawHierarchy(after);
    EXPECT_EQ(after.lines(), before.lines());
}

TEST_F(Hosted, TheModeIsChosenByItsName) {
    open();
    EXPECT_EQ(dynamic_cast<UIButton&>(find("mode")).title(), "Stereo");
    click("mode");
    EXPECT_EQ(choices().items, (std::vector<std::string>{"Stereo", "Linked", "Mid/Side", "Mid/Side Linked"}));
    choose(2);
    EXPECT_EQ(units->parameter(kLimiterMode), 2.0F);
    EXPECT_EQ(dynamic_cast<UIButton&>(find("mode")).title(), "Mid/Side");
    EXPECT_EQ(info(), "Mode  Mid/Side");
    click("mode");
    headless->key(UIKey::up);
    headless->key(UIKey::enter);
    EXPECT_EQ(units->parameter(kLimiterMode), 1.0F);
    click("mode");
    headless->key(UIKey::escape);
    EXPECT_EQ(units->parameter(kLimiterMode), 1.0F);
    click("mode");
    headless->click({.x = 5.0, .y = 5.0});
    EXPECT_EQ(controller().presentedViewController(), nullptr);
}

TEST_F(Hosted, TheFilterSlidersAndTheFinalSwitchReachTheUnit) {
    open();
    UIView& slider = find("highPass");
    headless->down(slider.convertPointToWindow({.x = 75.0, .y = 9.0}));
    EXPECT_EQ(units->parameter(kLimiterInputFilterHP), 0.5F);
    EXPECT_EQ(info(), "Input Filter HP  50.0 %");
    headless->up(slider.convertPointToWindow({.x = 75.0, .y = 9.0}));
    turnWheel(*headless, middle("lowPass"), -10.0);
    EXPECT_FLOAT_EQ(units->parameter(kLimiterInputFilterLP), 0.9F);
    EXPECT_EQ(dynamic_cast<UIButton&>(find("lowPassValue")).title(), "90.0 %");
    EXPECT_TRUE(dynamic_cast<UIButton&>(find("final")).isSelected());
    click("final");
    EXPECT_EQ(units->parameter(kLimiterFinalLimiter), 0.0F);
    EXPECT_FALSE(dynamic_cast<UIButton&>(find("final")).isSelected());
    EXPECT_EQ(info(), "Final Limiter  Off");
}

TEST_F(Hosted, PanelAndStripFollowAutomation) {
    open();
    const std::array<HostEvent, 4> events{{
        {.frame = 0,
         .kind = HostEventKind::Parameter,
         .address = kLimiterAttack,
         .value = 0.75F,
         .sysEx = {}},
        {.frame = 1, .kind = HostEventKind::Parameter, .address = kLimiterMode, .value = 3.0F, .sysEx = {}},
        {.frame = 2,
         .kind = HostEventKind::Parameter,
         .address = kLimiterFinalLimiter,
         .value = 0.0F,
         .sysEx = {}},
        {.frame = 3,
         .kind = HostEventKind::Parameter,
         .address = kLimiterInputFilterLP,
         .value = 0.5F,
         .sysEx = {}},
    }};
    std::vector<float> left(64);
    std::vector<float> right(64);
    const float* input[2] = {left.data(), right.data()};
    float* output[2] = {left.data(), right.data()};
    units->render(input, output, 64, SpanEvents(events));
    turn();
    turn();
    EXPECT_EQ(base().valueAttack, 0.75);
    EXPECT_EQ(dynamic_cast<UIButton&>(find("mode")).title(), "Mid/Side Linked");
    EXPECT_FALSE(dynamic_cast<UIButton&>(find("final")).isSelected());
    EXPECT_EQ(dynamic_cast<UISlider&>(find("lowPass")).value(), 0.5F);
}

TEST_F(Hosted, AMovingKnobShowsItsValueWithItsUnit) {
    open();
    set(kLimiterTrim, 0.5F);
    turn();
    headless->down({.x = 83.0, .y = 200.0});
    EXPECT_EQ(info(), "Trim  50.0 % (+0.0 dB)");
    headless->move({.x = 83.0, .y = 215.0});
    EXPECT_EQ(info(), "Trim  42.5 % (-3.0 dB)");
    headless->up({.x = 83.0, .y = 215.0});
    headless->click({.x = 88.0, .y = 284.0});
    EXPECT_EQ(info(), "Bypass  On");
}

TEST_F(Hosted, TheWheelMovesAKnobFinely) {
    open();
    set(kLimiterThreshold, 0.5F);
    turnWheel(*headless, kThreshold, 1.0);
    EXPECT_FLOAT_EQ(units->parameter(kLimiterThreshold), 0.51F);
    turnWheel(*headless, kThreshold, -1.0, UIKeyModifierShift);
    EXPECT_FLOAT_EQ(units->parameter(kLimiterThreshold), 0.509F);
    turn();
    EXPECT_FLOAT_EQ(static_cast<float>(base().valueThreshold), 0.509F);
    turnWheel(*headless, kThreshold, 1000.0);
    EXPECT_EQ(units->parameter(kLimiterThreshold), 1.0F);
    EXPECT_FALSE(headless->wheel({.x = 5.0, .y = 5.0}, 1.0));
}

TEST_F(Hosted, AClickOnAKnobsNumberOpensAFieldToTypeIt) {
    open();
    headless->click({.x = 329.0, .y = 132.0});
    EXPECT_EQ(entry().text(), "80.0 %");
    headless->type("33");
    headless->key(UIKey::enter);
    turn();
    EXPECT_EQ(units->parameter(kLimiterThreshold), 0.33F);
    EXPECT_EQ(headless->window().viewWithIdentifier("valueEntry"), nullptr);
    EXPECT_EQ(base().valueThreshold, static_cast<double>(0.33F));
    headless->run(1.0);
    headless->click({.x = 329.0, .y = 132.0});
    headless->type("9");
    headless->key(UIKey::escape);
    EXPECT_EQ(units->parameter(kLimiterThreshold), 0.33F);
    headless->run(1.0);
    headless->click({.x = 329.0, .y = 132.0});
    headless->type("loud");
    headless->key(UIKey::enter);
    EXPECT_EQ(units->parameter(kLimiterThreshold), 0.33F);
    EXPECT_EQ(info(), "Threshold: type 0 to 100");
    headless->run(1.0);
    headless->click(kThreshold); // beside the number: no field
    EXPECT_EQ(headless->window().viewWithIdentifier("valueEntry"), nullptr);
}

TEST_F(Hosted, AClickOnAStripValueOpensAFieldToo) {
    open();
    click("highPassValue");
    headless->type("12.5 %");
    headless->key(UIKey::enter);
    EXPECT_EQ(units->parameter(kLimiterInputFilterHP), 0.125F);
}

TEST_F(Hosted, PresetsAreChosenAndSavedFromTheStrip) {
    open();
    set(kLimiterThreshold, 0.125F);
    turn();
    click("preset");
    const std::size_t factory = choices().items.size() - 1;
    EXPECT_EQ(choices().items.back(), "Save as...");
    headless->key(UIKey::end);
    headless->key(UIKey::enter);
    headless->type("Mine");
    headless->key(UIKey::enter);
    EXPECT_EQ(info(), "Saved  Mine");
    set(kLimiterThreshold, 0.5F);
    turn();
    click("preset");
    ASSERT_EQ(choices().items.size(), factory + 3);
    EXPECT_EQ(choices().items[factory], "Mine  (own)");
    EXPECT_EQ(choices().items[factory + 1], "Delete \"Mine\"...");
    headless->key(UIKey::enter); // the current one is marked
    turn();
    EXPECT_EQ(units->parameter(kLimiterThreshold), 0.125F);
    turn();
    EXPECT_EQ(base().valueThreshold, 0.125);
    EXPECT_EQ(dynamic_cast<UIButton&>(find("preset")).title(), "Mine");
}

TEST_F(Hosted, APresetsNameIsMarkedWhileAValueIsAnother) {
    open();
    const auto title = [&] { return dynamic_cast<UIButton&>(find("preset")).title(); };
    set(kLimiterAttack, 0.6F);
    turn();
    EXPECT_EQ(title(), "Presets") << "no preset was chosen";
    click("preset");
    const std::string chosen = choices().items.front();
    headless->key(UIKey::enter);
    turn();
    turn();
    EXPECT_EQ(title(), chosen);
    const float attack = units->parameter(kLimiterAttack);
    const float mode = units->parameter(kLimiterMode);
    set(kLimiterAttack, 0.6F);
    set(kLimiterMode, 3.0F - mode);
    turn();
    EXPECT_EQ(title(), chosen + " *");
    set(kLimiterAttack, attack);
    turn();
    EXPECT_EQ(title(), chosen + " *");
    set(kLimiterMode, mode);
    turn();
    EXPECT_EQ(title(), chosen) << "all values are the preset's again";
}

TEST_F(Hosted, APresetOfOnesOwnIsDeletedFromTheStripAfterAQuestion) {
    open();
    const std::string title = dynamic_cast<UIButton&>(find("preset")).title();
    click("preset");
    const std::size_t before =
        choices().items.size(); // without a chosen own preset there is nothing to delete
    headless->key(UIKey::end);
    headless->key(UIKey::enter);
    headless->type("Mine");
    headless->key(UIKey::enter);
    const auto askToDelete = [&] {
        click("preset");
        headless->key(UIKey::end);
        headless->key(UIKey::up);
        headless->key(UIKey::enter);
        auto* dialog = dynamic_cast<UIAlertController*>(controller().presentedViewController().get());
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->title(), "Delete preset");
        EXPECT_EQ(dialog->message(), "Delete \"Mine\" for good?");
    };
    askToDelete();
    headless->key(UIKey::escape);
    EXPECT_TRUE(host::findUserPreset("Mine").ok());
    askToDelete();
    headless->key(UIKey::enter);
    EXPECT_FALSE(host::findUserPreset("Mine").ok());
    EXPECT_EQ(info(), "Deleted  Mine");
    EXPECT_EQ(dynamic_cast<UIButton&>(find("preset")).title(), title);
    click("preset");
    EXPECT_EQ(choices().items.size(), before);
}

TEST_F(Hosted, APresetThatCannotBeSavedSaysWhy) {
    open();
    click("preset");
    headless->key(UIKey::end);
    headless->key(UIKey::enter);
    headless->type("a/b");
    headless->key(UIKey::enter);
    auto* dialog = dynamic_cast<UIAlertController*>(controller().presentedViewController().get());
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->title(), "Preset");
    EXPECT_FALSE(dialog->message()->empty());
    headless->key(UIKey::enter);
    EXPECT_EQ(controller().presentedViewController(), nullptr);
}

TEST_F(Hosted, WithSilenceNothingIsDrawnAndWithMusicTheNeedlesAloneAt25Hertz) {
    open();
    run(1.0);
    const auto drawn = [&] {
        return std::array<std::uint64_t, 3>{
            controller().mainView->drawCount(), controller().pluginFrame->drawCount(),
            find("strip").drawCount() + find("mode").drawCount() + find("info").drawCount()};
    };
    const auto others = drawn();
    auto needles = controller().displayView->drawCount();
    const auto passes = headless->displayPasses();
    run(5.0);
    EXPECT_EQ(headless->displayPasses(), passes);
    EXPECT_EQ(controller().displayView->drawCount(), needles);
    set(kLimiterThreshold, 0.25F);
    run(0.1);
    const auto before = drawn();
    needles = controller().displayView->drawCount();
    for (int step = 0; step < 200; ++step) { // 4 seconds in idle calls of 20 ms, each block another level
        play(0.02, 0.3F + 0.003F * static_cast<float>(step));
        run(0.02);
    }
    const auto redraws = controller().displayView->drawCount() - needles;
    EXPECT_GE(redraws, 95u);
    EXPECT_LE(redraws, 101u);
    EXPECT_EQ(drawn(), before);
    EXPECT_EQ(others[1], before[1]);
}

TEST_F(Hosted, TenThousandOpeningsLeaveMemoryTimersAndObserversLevel) {
    const auto cycle = [&] {
        editor->open(headless->window());
        headless->settle();
        editor->pump();
        editor->close();
        log.clear();
    };
    for (int i = 0; i < 200; ++i) {
        cycle();
    }
    const auto before = mallinfo2().uordblks;
    for (int i = 0; i < 10000; ++i) {
        cycle();
    }
    const auto after = mallinfo2().uordblks;
    EXPECT_LT(after, before + 65536u);
    EXPECT_EQ(observers(), 2u);
    EXPECT_EQ(editor->runLoop().timerCount(), 1u);
    EXPECT_EQ(connections(), 0); // the one connection lies before
}

TEST_F(Hosted, ASimulatedDayLeavesMemoryTimersAndObserversLevel) {
    open();
    const auto minute = [&](int index) {
        for (int tick = 0; tick < 1500; ++tick) {
            clock.advance(0.04);
            editor->pump();
        }
        set(kLimiterThreshold, 0.25F + 0.01F * static_cast<float>(index % 50));
        editor->pump();
        headless->settle();
        log.clear();
    };
    for (int index = 0; index < 60; ++index) {
        minute(index);
    }
    const auto before = mallinfo2().uordblks;
    for (int index = 60; index < 1440; ++index) {
        minute(index);
    }
    EXPECT_LT(mallinfo2().uordblks, before + 65536u);
    EXPECT_EQ(observers(), 2u);
    EXPECT_EQ(editor->runLoop().timerCount(), 1u);
}

TEST_F(Hosted, EditorsOfTheirOwnLeaveNothingBehind) {
    const auto live = [&] {
        EditorHostOptions options;
        options.serviced = false;
        options.clock = &clock;
        auto made = EditorHost::create(*model, options);
        ASSERT_TRUE(made);
        HeadlessWindow window(EditorHost::kPreferredSize, made.value()->runLoop(), clock);
        made.value()->open(window.window());
        window.settle();
        {
            const EditorHost::Turn turn(*made.value());
            made.value()->controller()->showInfo("bye");
        }
        window.drag(kThreshold, {.x = 329.0, .y = 60.0});
        made.value().reset();
        log.clear();
    };
    for (int i = 0; i < 20; ++i) {
        live();
    }
    const auto before = mallinfo2().uordblks;
    for (int i = 0; i < 200; ++i) {
        live();
    }
    EXPECT_LT(mallinfo2().uordblks, before + 65536u);
    EXPECT_EQ(observers(), 0u);
}

TEST(EditorHost, WithoutResourcesItRefusesWithTheRemedy) {
    const test::TemporaryDirectory empty;
    const test::ScopedVariable elsewhere("QOR_LIMITER_RESOURCES", empty.path().string());
    UnitHostOptions unitOptions;
    unitOptions.serviced = false;
    auto units = UnitHost::create(unitOptions);
    ASSERT_TRUE(units);
    UnitHostModel model(*units.value());
    const auto made = EditorHost::create(model);
    ASSERT_FALSE(made);
    EXPECT_NE(made.error().localizedDescription().find("EditorLayout.plist"), std::string::npos);
}

TEST(ParameterUnits, TextsCarryTheirUnitAndReadBack) {
    const ParameterRow& trim = kParameterTable[kLimiterTrim];
    const ParameterRow& mix = kParameterTable[kLimiterMix];
    const ParameterRow& mode = kParameterTable[kLimiterMode];
    EXPECT_EQ(textWithUnit(trim, 0.25F), "25.0 % (-10.0 dB)");
    EXPECT_EQ(labelledText(mix, 1.0F), "Mix  100.0 %");
    EXPECT_EQ(textWithUnit(mode, 1.0F), "Linked");
    EXPECT_EQ(valueFromTypedText(mix, "50"), 0.5F);
    EXPECT_EQ(valueFromTypedText(mix, " 12.5 % "), 0.125F);
    EXPECT_EQ(valueFromTypedText(mix, "250%"), 1.0F);
    EXPECT_EQ(valueFromTypedText(mix, "-3"), 0.0F);
    EXPECT_EQ(valueFromTypedText(trim, "-10 dB"), 0.25F);
    EXPECT_EQ(valueFromTypedText(trim, "+10dB"), 0.75F);
    EXPECT_EQ(valueFromTypedText(mode, "linked"), 1.0F);
    for (const char* wrong : {"", "%", "nan", "inf", "1,5", "3 dB", "5 5", "x"}) {
        EXPECT_FALSE(valueFromTypedText(mix, wrong)) << wrong;
    }
}

TEST(EditorHost, WithItsServiceThreadItOpensClosesAndEnds) {
    const test::CapturedLog log;
    auto units = UnitHost::create({});
    ASSERT_TRUE(units);
    UnitHostModel model(*units.value());
    for (int i = 0; i < 3; ++i) {
        auto made = EditorHost::create(model);
        ASSERT_TRUE(made);
        const auto window = makeRef<UIWindow>(EditorHost::kPreferredSize);
        for (int turn = 0; turn < 3; ++turn) {
            made.value()->open(*window);
            made.value()->pump();
            {
                const EditorHost::Turn held(*made.value());
                window->display();
            }
            made.value()->close();
        }
        EXPECT_EQ(made.value()->registrations(), 2u);
    }
    EXPECT_EQ(units.value()->unit().parameterTree()->parameterObserverCount(), 0u);
}
