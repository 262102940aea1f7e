// The host's side of LV2 editors in real windows: the built object, and one editor with what it tells its
// host.
#pragma once

#include "hosts/lv2/Lv2Ports.h"

#include <gtest/gtest.h>
#include <lv2/ui/ui.h>

#include <cstdint>
#include <utility>
#include <vector>

// Behind the others, as it defines common words.
#include <X11/Xlib.h>

namespace test {

/// Of the built object; null if it cannot be loaded.
const LV2UI_Descriptor* uiDescriptor();

/// One editor as a host has it. Main thread.
class UiHost {
public:
    UiHost() = default;
    ~UiHost() { close(); }
    UiHost(const UiHost&) = delete;
    UiHost& operator=(const UiHost&) = delete;

    /// Embedded in a window, or free-standing in none. The scale goes with the host's options; 0 for none.
    bool open(Window parent, float scale = 0.0F);
    void close();
    bool isOpen() const { return handle_ != nullptr; }
    Window window() const { return reinterpret_cast<Window>(widget_); }

    /// The host's idle calls, some milliseconds apart; the last one's answer.
    int idle(int times);
    int idleOnce();
    void port(std::uint32_t index, float value);

    std::vector<std::pair<std::uint32_t, float>> written;
    std::vector<std::pair<std::uint32_t, bool>> touched;
    std::pair<int, int> asked; // for a size

private:
    LV2UI_Handle handle_ = nullptr;
    LV2UI_Widget widget_ = nullptr;
    LV2UI_Touch touch_{};
    LV2UI_Resize resize_{};
};

/// A connection of the test's own to the display, with hands.
class UiTest : public ::testing::Test {
protected:
    UiTest();
    ~UiTest() override;

    /// Of the editor's size, at a place of the screen, unmanaged.
    Window makeParent(int x = 0, int y = 0);
    void moveTo(int x, int y);
    void button(unsigned number, bool down);
    /// 0xRRGGBB rows from the top.
    std::vector<unsigned long> picture(Window window);

    Display* display;
};

} // namespace test
