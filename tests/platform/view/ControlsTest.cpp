#include "platform/view/HeadlessWindow.h"
#include "platform/view/View.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

using namespace platform; // NOLINT(google-build-using-namespace): the library under test

namespace {

class Controls : public testing::Test {
protected:
    Controls() { headless.show(root); }
    template <class View>
    Ref<View> add(double x, double y, double width, double height) {
        const auto view = makeRef<View>();
        view->setFrame(CGRectMake(x, y, width, height));
        root->addSubview(view);
        return view;
    }
    HeadlessWindow headless{{.width = 200.0, .height = 100.0}};
    Ref<UIView> root = makeRef<UIView>();
};

} // namespace

TEST_F(Controls, AButtonSendsWhetherTheTouchWentUpInside) {
    const auto button = add<UIButton>(10.0, 10.0, 60.0, 20.0);
    std::vector<std::string> sent;
    button->addAction(UIControlEventTouchDown, [&](UIControl&) { sent.emplace_back("down"); });
    button->addAction(UIControlEventTouchUpInside, [&](UIControl&) { sent.emplace_back("inside"); });
    button->addAction(UIControlEventTouchUpOutside, [&](UIControl&) { sent.emplace_back("outside"); });
    headless.click({.x = 20.0, .y = 20.0});
    headless.drag({.x = 20.0, .y = 20.0}, {.x = 190.0, .y = 90.0});
    EXPECT_EQ(sent, (std::vector<std::string>{"down", "inside", "down", "outside"}));
    button->setEnabled(false);
    headless.click({.x = 20.0, .y = 20.0});
    EXPECT_EQ(sent.size(), 4u);
}

TEST_F(Controls, TheKeyboardReachesAndPressesButtons) {
    const auto first = add<UIButton>(0.0, 0.0, 50.0, 20.0);
    const auto second = add<UIButton>(60.0, 0.0, 50.0, 20.0);
    int pressed = 0;
    second->addAction(UIControlEventTouchUpInside, [&](UIControl&) { ++pressed; });
    headless.key(UIKey::tab);
    EXPECT_TRUE(first->isFirstResponder());
    headless.key(UIKey::tab);
    EXPECT_TRUE(second->isFirstResponder());
    headless.key(UIKey::enter);
    headless.type(" ");
    EXPECT_EQ(pressed, 2);
    headless.key(UIKey::tab, UIKeyModifierShift);
    EXPECT_TRUE(first->isFirstResponder());
}

TEST_F(Controls, ASliderFollowsTheTouchAndStaysInItsRange) {
    const auto slider = add<UISlider>(0.0, 0.0, 110.0, 20.0);
    slider->setRange(0.0f, 2.0f);
    slider->setValue(0.5f);
    std::vector<float> values;
    slider->addAction(UIControlEventValueChanged,
                      [&](UIControl& sender) { values.push_back(static_cast<UISlider&>(sender).value()); });
    headless.down({.x = 55.0, .y = 10.0});
    headless.move({.x = 105.0, .y = 10.0});
    headless.move({.x = 190.0, .y = 90.0});
    headless.up({.x = 190.0, .y = 90.0});
    EXPECT_EQ(values, (std::vector<float>{1.0f, 2.0f}));
    slider->setValue(std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(slider->value(), 2.0f);
    slider->setValue(-7.0f);
    EXPECT_EQ(slider->value(), 0.0f);
    EXPECT_EQ(values.size(), 2u);
}

TEST_F(Controls, TheWheelAndTheArrowKeysMoveASliderFinely) {
    const auto slider = add<UISlider>(0.0, 0.0, 110.0, 20.0);
    slider->setValue(0.5f);
    headless.wheel({.x = 55.0, .y = 10.0}, 1.0);
    EXPECT_FLOAT_EQ(slider->value(), 0.51f);
    headless.wheel({.x = 55.0, .y = 10.0}, -1.0, UIKeyModifierShift);
    EXPECT_FLOAT_EQ(slider->value(), 0.509f);
    slider->becomeFirstResponder();
    headless.key(UIKey::left);
    EXPECT_FLOAT_EQ(slider->value(), 0.499f);
}

TEST_F(Controls, ATextFieldTakesCharactersAtItsCaret) {
    const auto field = add<UITextField>(0.0, 0.0, 110.0, 20.0);
    field->setText("abc");
    headless.click({.x = 20.0, .y = 10.0});
    EXPECT_TRUE(field->isEditing());
    headless.type("x"); // replaces what is selected
    EXPECT_EQ(field->text(), "x");
    headless.type("äy");
    headless.key(UIKey::left);
    headless.key(UIKey::backspace);
    EXPECT_EQ(field->text(), "xy");
    headless.key(UIKey::home);
    headless.key(UIKey::deleteForward);
    headless.type("1");
    EXPECT_EQ(field->text(), "1y");
}

TEST_F(Controls, ATextFieldTellsHowItsEditingEnded) {
    const auto field = add<UITextField>(0.0, 0.0, 110.0, 20.0);
    field->endsOnEscape = true;
    std::vector<std::string> sent;
    field->addAction(UIControlEventEditingDidBegin, [&](UIControl&) { sent.emplace_back("begin"); });
    field->addAction(UIControlEventEditingChanged, [&](UIControl&) { sent.emplace_back("changed"); });
    field->addAction(UIControlEventEditingDidEndOnExit, [&](UIControl&) { sent.emplace_back("exit"); });
    field->addAction(UIControlEventEditingDidEnd, [&](UIControl&) { sent.emplace_back("end"); });
    headless.click({.x = 20.0, .y = 10.0});
    headless.type("1");
    headless.key(UIKey::enter);
    EXPECT_EQ(sent, (std::vector<std::string>{"begin", "changed", "exit", "end"}));
    sent.clear();
    headless.click({.x = 20.0, .y = 10.0});
    headless.key(UIKey::escape);
    EXPECT_EQ(sent, (std::vector<std::string>{"begin", "end"}));
    sent.clear();
    headless.click({.x = 20.0, .y = 10.0});
    headless.click({.x = 150.0, .y = 90.0});
    EXPECT_EQ(sent, (std::vector<std::string>{"begin", "end"}));
}

TEST_F(Controls, LabelsAndPicturesShowWhatTheyHold) {
    const auto label = add<UILabel>(0.0, 0.0, 100.0, 20.0);
    headless.settle();
    EXPECT_EQ(headless.pixel(50, 10), 0U);
    label->setTextAlignment(NSTextAlignment::center);
    label->setText("HHHHHHHH");
    bool inked = false;
    for (int x = 0; x < 100; ++x) {
        inked = inked || headless.pixel(x, 10) != 0U;
    }
    EXPECT_TRUE(inked);
    const auto picture = add<UIImageView>(0.0, 40.0, 10.0, 10.0);
    picture->setImage(UIImage(1, 1, 1.0, {0xFF00FF00U}));
    EXPECT_EQ(headless.pixel(5, 45), 0xFF00FF00U);
}
