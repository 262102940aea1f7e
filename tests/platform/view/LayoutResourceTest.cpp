#include "platform/view/View.h"

#include <gtest/gtest.h>

#include <string>

using namespace platform; // NOLINT(google-build-using-namespace): the library under test

namespace {

using Dictionary = PropertyListDictionary;

struct Owner {
    Ref<UIView> panel;
    Ref<UISlider> slider;
    Ref<UITapGestureRecognizer> tap;
    int presses = 0;
    LayoutBindings bindings;

    Owner() {
        bindings.outlet("panel", panel);
        bindings.outlet("slider", slider);
        bindings.outlet("tap", tap);
        bindings.controlAction("onPress", [this](UIControl&) { ++presses; });
        bindings.gestureAction("onTap", [](UIGestureRecognizer&) {});
    }
};

PropertyListArray numbers(double a, double b, double c, double d) {
    return {a, b, c, d};
}

Dictionary slider() {
    return {{"class", "UISlider"},
            {"outlet", "slider"},
            {"minimumValue", 0.1},
            {"maximumValue", 0.9},
            {"value", 0.15},
            {"hidden", true},
            {"actions", Dictionary{{"valueChanged", "onPress"}}}};
}

Dictionary tree() {
    return {
        {"frame", numbers(1.0, 2.0, 300.0, 200.0)},
        {"subviews",
         PropertyListArray{
             Dictionary{
                 {"outlet", "panel"},
                 {"pin", Dictionary{{"top", 10.0}, {"leading", 20.0}, {"bottom", 30.0}, {"trailing", 40.0}}}},
             slider()}},
        {"gestureRecognizers", PropertyListArray{Dictionary{{"class", "UITapGestureRecognizer"},
                                                            {"outlet", "tap"},
                                                            {"action", "onTap"},
                                                            {"numberOfTapsRequired", 2}}}}};
}

/// Why the layout is refused; empty if it isn't.
std::string refusal(const Dictionary& root) {
    Owner owner;
    const LayoutResource layout("Test.plist", Dictionary{{"root", root}});
    const auto made = layout.instantiate("root", owner.bindings);
    return made ? "" : made.error().localizedDescription();
}

Dictionary withSlider(const Dictionary& changed) {
    Dictionary root = tree();
    PropertyListArray below = *root.find("subviews")->asArray();
    below[1] = changed;
    root.set("subviews", below);
    return root;
}

} // namespace

TEST(LayoutResource, MakesAndConnectsTheTree) {
    Owner owner;
    const LayoutResource layout("Test.plist", Dictionary{{"root", tree()}});
    auto made = layout.instantiate("root", owner.bindings);
    ASSERT_TRUE(made) << made.error().localizedDescription();
    const Ref<UIView> root = made.value();
    EXPECT_EQ(root->frame(), CGRectMake(1.0, 2.0, 300.0, 200.0));
    ASSERT_TRUE(owner.panel && owner.slider && owner.tap);
    root->layoutIfNeeded();
    EXPECT_EQ(owner.panel->frame(), CGRectMake(20.0, 10.0, 240.0, 160.0));
    EXPECT_EQ(owner.slider->minimumValue(), 0.1f);
    EXPECT_EQ(owner.slider->maximumValue(), 0.9f);
    EXPECT_EQ(owner.slider->value(), 0.15f);
    EXPECT_TRUE(owner.slider->isHidden());
    EXPECT_EQ(owner.tap->numberOfTapsRequired, 2);
    EXPECT_EQ(owner.tap->view(), root.get());
    owner.slider->sendActionsForControlEvents(UIControlEventValueChanged);
    EXPECT_EQ(owner.presses, 1);
}

TEST(LayoutResource, RefusesAnUnknownClassWithItsKeyPath) {
    Dictionary broken = slider();
    broken.set("class", "UIFoo");
    EXPECT_EQ(refusal(withSlider(broken)).find("Test.plist: root.subviews[1].class: unknown class \"UIFoo\""),
              0u)
        << refusal(withSlider(broken));
}

TEST(LayoutResource, RefusesAnUnknownOutletWithItsKeyPath) {
    Dictionary broken = slider();
    broken.set("outlet", "slidr");
    EXPECT_EQ(refusal(withSlider(broken)),
              "Test.plist: root.subviews[1].outlet: unknown outlet \"slidr\"; known are: panel, slider");
}

TEST(LayoutResource, RefusesAnUnknownActionWithItsKeyPath) {
    Dictionary broken = slider();
    broken.set("actions", Dictionary{{"valueChanged", "onPres"}});
    EXPECT_EQ(
        refusal(withSlider(broken)),
        "Test.plist: root.subviews[1].actions.valueChanged: unknown action \"onPres\"; known are: onPress");
    broken.set("actions", Dictionary{{"valueChange", "onPress"}});
    EXPECT_NE(refusal(withSlider(broken)).find("unknown event \"valueChange\""), std::string::npos);
    Dictionary root = tree();
    root.set("gestureRecognizers",
             PropertyListArray{
                 Dictionary{{"class", "UITapGestureRecognizer"}, {"outlet", "tap"}, {"action", "onTip"}}});
    EXPECT_EQ(refusal(root),
              "Test.plist: root.gestureRecognizers[0].action: unknown action \"onTip\"; known are: onTap");
}

TEST(LayoutResource, RefusesAnOutletOfAnotherClassTwiceOrNotAtAll) {
    Dictionary broken = slider();
    broken.set("class", "UIView");
    EXPECT_NE(refusal(withSlider(broken)), "");
    broken = slider();
    broken.set("outlet", "panel");
    EXPECT_EQ(refusal(withSlider(broken)),
              "Test.plist: root.subviews[1].outlet: the outlet \"panel\" is connected already");
    broken = slider();
    broken.remove("outlet");
    EXPECT_EQ(refusal(withSlider(broken)), "Test.plist: root: the outlet \"slider\" is connected to nothing");
}

TEST(LayoutResource, RefusesValuesOfTheWrongKind) {
    const auto slipped = [](const char* key, PropertyList value) {
        Dictionary broken = slider();
        broken.set(key, std::move(value));
        return refusal(withSlider(broken));
    };
    EXPECT_NE(slipped("frame", PropertyListArray{1.0, 2.0}).find(".frame: a list of 4 finite numbers"),
              std::string::npos);
    EXPECT_NE(slipped("frame", "0 0 1 1"), "");
    EXPECT_NE(slipped("hidden", 1), "");
    EXPECT_NE(slipped("class", 7), "");
    EXPECT_NE(slipped("value", 0.95).find(".value: the range"), std::string::npos);
    EXPECT_NE(slipped("valu", 0.5).find(".valu: unknown key"), std::string::npos);
    EXPECT_NE(slipped("subviews", Dictionary{}).find(".subviews: a list is needed"), std::string::npos);
    EXPECT_NE(slipped("subviews", PropertyListArray{3}).find(".subviews[0]: a dictionary is needed"),
              std::string::npos);
    EXPECT_NE(slipped("pin", Dictionary{{"left", 1.0}}).find(".pin.left: unknown key"), std::string::npos);
}

TEST(LayoutResource, RefusesAFileThatIsMissing) {
    const auto loaded = LayoutResource::load(URL::fileURLWithPath("/nowhere/Layout.plist"));
    ASSERT_FALSE(loaded);
    EXPECT_EQ(loaded.error().localizedDescription().find("/nowhere/Layout.plist: "), 0u);
}
