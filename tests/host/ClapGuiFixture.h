// The editor in a real window, as a CLAP host shows it. Needs a display.
#pragma once

#include "ClapEditorUnderTest.h"
#include "support/CapturedLog.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

// Behind the others, as they define common words.
#include <X11/Xlib.h>

namespace test {

constexpr clap_id kTrim = 4;

class ClapGuiTest : public ::testing::Test {
protected:
    ClapGuiTest();
    ~ClapGuiTest() override;

    Window makeParent(int x = 0, int y = 0);
    std::vector<Window> children(Window parent);
    /// Turns the hosts' loops until something holds; false if it never does.
    bool turnUntil(const std::function<bool()>& holds);
    void turn(int times);
    // From the devices; places are the screen's.
    void motion(int x, int y);
    void button(bool down);
    /// Drags the knob "gain" of an editor at the screen's upper left corner by so many pixels upwards.
    void dragTrim(int pixels, int x = 0);
    /// Pixels.
    std::pair<int, int> sizeOf(Window window);
    /// It is on the screen, and the place of the knob "gain" is not in one colour.
    bool isDrawn(Window editor, int x = 0);
    /// The picture of the knob "gain" as the window shows it, or of the place so many pixels beside it.
    std::string knobPicture(Window editor, int x = 0);

    CapturedLog log;
    Display* display;
    std::vector<ClapEditorUnderTest*> turned; // whose loops turn
};

} // namespace test
