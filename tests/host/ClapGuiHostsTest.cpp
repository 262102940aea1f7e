// The editor in hosts that offer more or less for the main thread: it must work in each of them.
#include "ClapGuiFixture.h"

#include <algorithm>
#include <cstdlib>

using namespace test;

namespace {

class ClapGuiInHost : public ClapGuiTest, public ::testing::WithParamInterface<Offer> {
protected:
    ClapGuiInHost() { turned = {&editor}; }
    /// Opens in a parent and waits for the first pictures.
    Window open() {
        const Window parent = makeParent();
        EXPECT_TRUE(editor.openIn(parent));
        EXPECT_TRUE(turnUntil([&] { return children(parent).size() == 1; }));
        turn(20);
        return parent;
    }

    ClapEditorUnderTest editor{GetParam()};
    const std::map<clap_id, std::uint32_t> timersBefore = editor.host.timers;
};

class ClapGuiWithTimers : public ClapGuiTest {};
class ClapGuiWithDescriptors : public ClapGuiTest {};
class ClapGuiWithNothing : public ClapGuiTest {};

} // namespace

TEST_P(ClapGuiInHost, ADragReachesTheUnitAndTheHostAsOneGesture) {
    const Window parent = open();
    const double before = editor.plugin->value(kTrim);
    dragTrim(30);
    EXPECT_GT(editor.plugin->value(kTrim), before + 0.1);
    const auto told = editor.flushed();
    ASSERT_GE(told.size(), 3U);
    EXPECT_EQ(told.front().type, CLAP_EVENT_PARAM_GESTURE_BEGIN);
    EXPECT_EQ(told.back().type, CLAP_EVENT_PARAM_GESTURE_END);
    for (std::size_t i = 0; i < told.size(); ++i) {
        EXPECT_EQ(told[i].id, kTrim);
        EXPECT_EQ(told[i].type == CLAP_EVENT_PARAM_VALUE, i != 0 && i + 1 != told.size());
    }
    EXPECT_EQ(told[told.size() - 2].value, editor.plugin->value(kTrim));
    editor.close();
    XDestroyWindow(display, parent);
}

TEST_P(ClapGuiInHost, ClosingLeavesNothingRegistered) {
    for (int i = 0; i < 3; ++i) {
        const Window parent = open();
        editor.close();
        EXPECT_TRUE(editor.host.descriptors.empty());
        EXPECT_EQ(editor.host.timers, timersBefore);
        XDestroyWindow(display, parent);
    }
    EXPECT_TRUE(editor.host.closed.empty()) << "the host has closed it itself";
}

TEST_P(ClapGuiInHost, TheEndOfTheInstanceWhileOpenLeavesNothingRegistered) {
    const Window parent = open();
    editor.plugin.reset();
    turned = {};
    EXPECT_TRUE(editor.host.descriptors.empty());
    EXPECT_TRUE(editor.host.timers.empty());
    EXPECT_TRUE(children(parent).empty());
    XDestroyWindow(display, parent);
}

TEST_P(ClapGuiInHost, TheEndOfTheParentIsToldAndAnotherEditorOpens) {
    XDestroyWindow(display, open());
    XSync(display, False);
    EXPECT_TRUE(turnUntil([&] { return !editor.host.closed.empty(); }));
    turn(5);
    EXPECT_EQ(editor.host.closed, std::vector<bool>{true});
    EXPECT_TRUE(editor.host.descriptors.empty());
    editor.close();
    const Window parent = open();
    editor.close();
    XDestroyWindow(display, parent);
}

TEST_P(ClapGuiInHost, ALostConnectionIsToldAndLeavesTheProcessAlive) {
    const XIOErrorHandler before = XSetIOErrorHandler([](Display*) -> int { std::abort(); });
    const Window parent = open();
    XKillClient(display, children(parent).front());
    XSync(display, False);
    EXPECT_TRUE(turnUntil([&] { return !editor.host.closed.empty(); }));
    turn(5);
    EXPECT_EQ(editor.host.closed, std::vector<bool>{true});
    EXPECT_TRUE(editor.host.descriptors.empty());
    editor.close();
    XDestroyWindow(display, parent);
    const Window second = open();
    dragTrim(30);
    EXPECT_NEAR(editor.plugin->value(kTrim), 0.65, 0.011);
    editor.close();
    XDestroyWindow(display, second);
    XSetIOErrorHandler(before);
}

INSTANTIATE_TEST_SUITE_P(Hosts, ClapGuiInHost,
                         ::testing::Values(Offer::timers, Offer::timersAndDescriptors, Offer::descriptors,
                                           Offer::nothing),
                         [](const auto& tested) { return nameOf(tested.param); });

TEST_F(ClapGuiWithTimers, InputIsAnsweredWithoutWaitingForTheTimerWhereDescriptorsAreOfferedToo) {
    ClapEditorUnderTest editor(Offer::timersAndDescriptors);
    turned = {&editor};
    const Window parent = makeParent();
    ASSERT_TRUE(editor.openIn(parent));
    EXPECT_EQ(editor.host.descriptors.size(), 1U);
    turn(20);
    editor.firesTimers = false;
    dragTrim(30);
    EXPECT_NEAR(editor.plugin->value(kTrim), 0.65, 0.011);
    EXPECT_EQ(editor.host.callbacksAsked, 0);
    editor.close();
    XDestroyWindow(display, parent);
}

TEST_F(ClapGuiWithDescriptors, TheirHostWaitsForATimerAndTheConnectionWhileAnEditorIsOpen) {
    ClapEditorUnderTest editor(Offer::descriptors);
    EXPECT_TRUE(editor.host.descriptors.empty());
    const Window parent = makeParent();
    ASSERT_TRUE(editor.openIn(parent));
    EXPECT_EQ(editor.host.descriptors.size(), 2U);
    editor.close();
    EXPECT_TRUE(editor.host.descriptors.empty());
    XDestroyWindow(display, parent);
}

TEST_F(ClapGuiWithDescriptors, AHostThatRefusesTimersIsAskedForDescriptors) {
    ClapEditorUnderTest editor(Offer::descriptors);
    editor.host.offersTimers = editor.host.refusesTimers = true;
    editor.plugin = std::make_unique<ClapPluginUnderTest>(editor.host);
    turned = {&editor};
    const Window parent = makeParent();
    ASSERT_TRUE(editor.openIn(parent));
    EXPECT_EQ(editor.host.descriptors.size(), 2U);
    turn(20);
    dragTrim(30);
    EXPECT_NEAR(editor.plugin->value(kTrim), 0.65, 0.011);
    editor.close();
    XDestroyWindow(display, parent);
}

TEST_F(ClapGuiWithNothing, CallsAreAskedForWhileAnEditorIsOpenAndAtNoOtherTime) {
    ClapEditorUnderTest editor(Offer::nothing);
    turned = {&editor};
    EXPECT_EQ(editor.host.callbacksAsked, 0);
    const Window parent = makeParent();
    ASSERT_TRUE(editor.openIn(parent));
    for (int i = 0; i < 3; ++i) {
        turned = {};
        EXPECT_TRUE(turnUntil([&] { return editor.host.callbacksAsked != 0; })) << "again after each answer";
        EXPECT_EQ(editor.host.callbacksAsked, 1) << "one under way is enough";
        turned = {&editor};
        turn(1);
    }
    editor.close();
    editor.turn();
    EXPECT_EQ(editor.host.callbacksAsked, 0);
    XDestroyWindow(display, parent);
}
