// What a host is told of the editor, and what it refuses.
#include "ClapGuiFixture.h"

#include <utility>

#include <X11/Xatom.h>

using namespace test;

namespace {

class ClapGui : public ClapGuiTest {
protected:
    ClapGui() { turned = {&editor}; }
    const clap_plugin_t* plugin() { return editor.plugin->get(); }

    ClapEditorUnderTest editor{Offer::timers};
    const clap_plugin_gui_t* gui = editor.gui;
};

} // namespace

TEST_F(ClapGui, OffersX11EmbeddedAndFloatingAndNothingElse) {
    ASSERT_NE(gui, nullptr);
    EXPECT_TRUE(gui->is_api_supported(plugin(), CLAP_WINDOW_API_X11, false));
    EXPECT_TRUE(gui->is_api_supported(plugin(), CLAP_WINDOW_API_X11, true));
    EXPECT_FALSE(gui->is_api_supported(plugin(), CLAP_WINDOW_API_WAYLAND, true));
    EXPECT_FALSE(gui->is_api_supported(plugin(), nullptr, false));
    const char* api = nullptr;
    bool isFloating = true;
    EXPECT_TRUE(gui->get_preferred_api(plugin(), &api, &isFloating));
    EXPECT_STREQ(api, CLAP_WINDOW_API_X11);
    EXPECT_FALSE(isFloating);
}

TEST_F(ClapGui, TellsItsSizeBeforeItHasAParentAndKeepsItsAspect) {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    EXPECT_FALSE(gui->get_size(plugin(), &width, &height)); // not created
    ASSERT_TRUE(gui->create(plugin(), CLAP_WINDOW_API_X11, false));
    ASSERT_TRUE(gui->get_size(plugin(), &width, &height));
    EXPECT_EQ(width, 512U);
    const std::uint32_t single = height;
    ASSERT_TRUE(gui->set_scale(plugin(), 2.0));
    ASSERT_TRUE(gui->get_size(plugin(), &width, &height));
    EXPECT_EQ(width, 1024U);
    EXPECT_EQ(height, 2 * single);
    width = 2000;
    height = single;
    EXPECT_TRUE(gui->adjust_size(plugin(), &width, &height));
    EXPECT_EQ(width, 512U);
    EXPECT_EQ(height, single);
    gui->destroy(plugin());
}

TEST_F(ClapGui, HasTheDesktopsScaleBeforeItsWindowIsThere) {
    const std::string resources = "Xft.dpi:\t192\n";
    const Window root = DefaultRootWindow(display);
    XChangeProperty(display, root, XA_RESOURCE_MANAGER, XA_STRING, 8, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(resources.data()),
                    static_cast<int>(resources.size()));
    XSync(display, False);
    ASSERT_TRUE(gui->create(plugin(), CLAP_WINDOW_API_X11, false));
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    ASSERT_TRUE(gui->get_size(plugin(), &width, &height));
    EXPECT_EQ(width, 1024U);
    EXPECT_EQ(height, 784U);
    width = height = 100;
    EXPECT_TRUE(gui->adjust_size(plugin(), &width, &height));
    EXPECT_EQ(width, 512U) << "the least size is one in points";
    const Window parent = makeParent();
    clap_window_t window{};
    window.api = CLAP_WINDOW_API_X11;
    window.x11 = parent;
    ASSERT_TRUE(gui->set_parent(plugin(), &window));
    ASSERT_TRUE(gui->show(plugin()));
    turn(10);
    XDeleteProperty(display, root, XA_RESOURCE_MANAGER);
    EXPECT_EQ(sizeOf(children(parent).front()), (std::pair{1024, 784}));
    gui->destroy(plugin());
    XDestroyWindow(display, parent);
}

TEST_F(ClapGui, TakesASizeThatItsHostForcesBeforeItHasAParent) {
    ASSERT_TRUE(gui->create(plugin(), CLAP_WINDOW_API_X11, false));
    ASSERT_TRUE(gui->set_size(plugin(), 800, 392));
    const Window parent = makeParent();
    clap_window_t window{};
    window.api = CLAP_WINDOW_API_X11;
    window.x11 = parent;
    ASSERT_TRUE(gui->set_parent(plugin(), &window));
    ASSERT_TRUE(gui->show(plugin()));
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    ASSERT_TRUE(gui->get_size(plugin(), &width, &height));
    EXPECT_EQ(width, 800U);
    EXPECT_EQ(height, 392U);
    EXPECT_TRUE(turnUntil([&] { return sizeOf(children(parent).front()) == std::pair{800, 392}; }));
    turn(20);
    // The panel keeps its proportions, 512 by 392 in the middle: 144 of bar, and the knob as far to the
    // right.
    const Window shown = children(parent).front();
    EXPECT_FALSE(isDrawn(shown));
    EXPECT_TRUE(isDrawn(shown, 144));
    gui->destroy(plugin());
    XDestroyWindow(display, parent);
}

TEST_F(ClapGui, AnotherScaleWhileOpenAsksTheHostForTheSizeThatGoesWithIt) {
    const Window parent = makeParent();
    ASSERT_TRUE(editor.openIn(parent));
    turn(10);
    ASSERT_TRUE(gui->set_scale(plugin(), 2.0));
    EXPECT_EQ(editor.host.resizes, (std::vector<std::pair<std::uint32_t, std::uint32_t>>{{1024, 784}}));
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    ASSERT_TRUE(gui->get_size(plugin(), &width, &height));
    EXPECT_EQ(width, 1024U);
    EXPECT_EQ(height, 784U);
    EXPECT_TRUE(turnUntil([&] { return sizeOf(children(parent).front()) == std::pair{1024, 784}; }));
    gui->destroy(plugin());
    XDestroyWindow(display, parent);
}

TEST_F(ClapGui, OpensAgainAndAgainWithOneConnectionToTheUnit) {
    for (int i = 0; i < 10; ++i) {
        const Window parent = makeParent();
        ASSERT_TRUE(editor.openIn(parent)) << i;
        EXPECT_FALSE(gui->create(plugin(), CLAP_WINDOW_API_X11, false));
        turn(3);
        gui->destroy(plugin());
        EXPECT_TRUE(children(parent).empty());
        XDestroyWindow(display, parent);
    }
}

TEST_F(ClapGui, RefusesAParentThatIsNotThere) {
    ASSERT_TRUE(gui->create(plugin(), CLAP_WINDOW_API_X11, false));
    clap_window_t window{};
    window.api = CLAP_WINDOW_API_X11;
    window.x11 = 0x7FFFFFF0;
    EXPECT_FALSE(gui->set_parent(plugin(), &window));
    EXPECT_FALSE(gui->set_parent(plugin(), nullptr));
    gui->destroy(plugin());
}

TEST_F(ClapGui, AutomationMovesTheKnobsInTheOpenEditor) {
    const Window parent = makeParent();
    ASSERT_TRUE(editor.openIn(parent));
    ASSERT_TRUE(turnUntil([&] { return children(parent).size() == 1; }));
    turn(20);
    const Window shown = children(parent).front();
    const std::string before = knobPicture(shown);
    ASSERT_TRUE(editor.plugin->activate());
    ClapEventList automation;
    automation.value(3, kTrim, 0.9);
    float samples[2][64] = {};
    float* const places[2] = {samples[0], samples[1]};
    editor.plugin->process(places, places, 64, automation.table());
    EXPECT_TRUE(turnUntil([&] { return knobPicture(shown) != before; }));
    turn(20);
    EXPECT_TRUE(editor.flushed().empty()) << "the host hears of nothing that it has moved itself";
    // A drag goes on from there: 10 of the 200 points that are the full range.
    dragTrim(-10);
    EXPECT_NEAR(editor.plugin->value(kTrim), 0.85, 0.011);
    editor.close();
    XDestroyWindow(display, parent);
}

TEST_F(ClapGui, TwoInstancesHaveTheirEditorsOpenAtOnce) {
    ClapEditorUnderTest other(Offer::timers);
    turned = {&editor, &other};
    const Window left = makeParent();
    const Window right = makeParent(600);
    ASSERT_TRUE(editor.openIn(left));
    ASSERT_TRUE(other.openIn(right));
    ASSERT_TRUE(turnUntil([&] { return children(left).size() == 1 && children(right).size() == 1; }));
    turn(20);
    const std::string before = knobPicture(children(left).front());
    EXPECT_EQ(knobPicture(children(right).front()), before);
    dragTrim(30, 600);
    EXPECT_EQ(editor.plugin->value(kTrim), 0.5);
    EXPECT_NEAR(other.plugin->value(kTrim), 0.65, 0.011);
    EXPECT_EQ(knobPicture(children(left).front()), before);
    EXPECT_NE(knobPicture(children(right).front()), before);
    EXPECT_TRUE(editor.flushed().empty());
    EXPECT_FALSE(other.flushed().empty());
    other.close();
    dragTrim(40);
    EXPECT_NEAR(editor.plugin->value(kTrim), 0.7, 0.011);
    editor.close();
    turned = {};
    XDestroyWindow(display, left);
    XDestroyWindow(display, right);
}
