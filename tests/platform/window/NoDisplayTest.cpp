#include "platform/window/NativeWindow.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace platform {
namespace {

TEST(NoDisplay, IsAnErrorThatSaysSoWithoutTheVariable) {
    ::unsetenv("DISPLAY"); // NOLINT(concurrency-mt-unsafe): the only thread
    const auto window = NativeWindow::open(makeRef<UIWindow>(CGSizeMake(100.0, 100.0)));
    ASSERT_FALSE(window);
    EXPECT_EQ(window.error().code, WindowNoDisplay);
    EXPECT_EQ(window.error().localizedDescription(),
              "there is no display: the variable DISPLAY is not set. Start from a graphical session.");
}

TEST(NoDisplay, IsAnErrorThatNamesADisplayThatDoesNotOpen) {
    ::setenv("DISPLAY", ":65000", 1); // NOLINT(concurrency-mt-unsafe): the only thread
    const auto window = NativeWindow::open(makeRef<UIWindow>(CGSizeMake(100.0, 100.0)));
    ASSERT_FALSE(window);
    EXPECT_EQ(window.error().code, WindowNoDisplay);
    EXPECT_EQ(window.error().localizedDescription(), "the display ':65000' cannot be opened. Check the "
                                                     "variable DISPLAY and the right to use that display.");
}

} // namespace
} // namespace platform
