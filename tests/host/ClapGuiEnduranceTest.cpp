// Editors opened and closed again and again in one process. bench/hosts/clap/EditorEndurance.cpp does the
// same many times more.
#include "ClapAudioThread.h"
#include "ClapGuiFixture.h"
#include "DisplayErrors.h"
#include "support/LevelMemory.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>

#include <malloc.h>

using namespace test;

namespace {

/// What the program writes to its standard output meanwhile, the plug-in's log included.
class StandardOutput {
public:
    StandardOutput() : file_(::memfd_create("output", MFD_CLOEXEC)), before_(::dup(STDOUT_FILENO)) {
        std::fflush(stdout);
        ::dup2(file_, STDOUT_FILENO);
    }
    ~StandardOutput() {
        std::fflush(stdout);
        ::dup2(before_, STDOUT_FILENO);
        ::close(before_);
        ::close(file_);
    }
    StandardOutput(const StandardOutput&) = delete;
    StandardOutput& operator=(const StandardOutput&) = delete;

    int count(std::string_view text) const {
        std::fflush(stdout);
        std::string all;
        char piece[4096];
        for (ssize_t got = 0;
             (got = ::pread(file_, piece, sizeof piece, static_cast<off_t>(all.size()))) > 0;) {
            all.append(piece, static_cast<std::size_t>(got));
        }
        int found = 0;
        for (std::size_t at = all.find(text); at != std::string::npos; at = all.find(text, at + 1)) {
            ++found;
        }
        return found;
    }

private:
    int file_;
    int before_;
};

std::ptrdiff_t entriesOf(const char* folder) {
    return std::distance(std::filesystem::directory_iterator(folder), {});
}

class ClapGuiEndurance : public ClapGuiTest {
protected:
    ClapGuiEndurance() { turned = {&editor}; }

    void openAndClose(int times) {
        for (int i = 0; i < times; ++i) {
            ASSERT_TRUE(editor.openIn(parent));
            XSync(display, False);
            editor.turn();
            editor.turn();
            if (i % 20 == 0) {
                EXPECT_TRUE(turnUntil([&] { return isDrawn(children(parent).front()); }));
            }
            editor.close();
        }
    }
    /// Opens five hundred times and looks at what is left behind.
    void endure() {
        openAndClose(40); // until the libraries have what they keep
        const auto timers = editor.host.timers;
        const std::ptrdiff_t descriptors = entriesOf("/proc/self/fd");
        const std::ptrdiff_t threads = entriesOf("/proc/self/task");
        const int errors = displayErrors();
        // Less than a hundred bytes an opening: what Xlib itself keeps for a display's input method.
        EXPECT_TRUE(::test::staysLevel(
            10000, [&] { openAndClose(100); }, 5));
        EXPECT_EQ(editor.host.timers, timers);
        EXPECT_TRUE(editor.host.descriptors.empty());
        EXPECT_EQ(entriesOf("/proc/self/fd"), descriptors);
        EXPECT_EQ(entriesOf("/proc/self/task"), threads);
        EXPECT_EQ(displayErrors(), errors);
        EXPECT_TRUE(children(parent).empty());
        EXPECT_TRUE(editor.host.closed.empty());
        expectOneObserver();
    }
    /// The editor's answer to a moved parameter, which each of its observers would give.
    void expectOneObserver() {
        ASSERT_TRUE(editor.openIn(parent));
        turn(5);
        {
            const StandardOutput output;
            editor.plugin->setValue(kTrim, 0.25);
            EXPECT_TRUE(turnUntil([&] { return output.count("editor received parameter") != 0; }));
            turn(10);
            EXPECT_EQ(output.count("editor received parameter : address: 4, value: 0.25"), 1);
            EXPECT_EQ(output.count("editor received parameter"), 1);
        }
        editor.flushed();
        dragTrim(30);
        const auto told = editor.flushed();
        const auto phases = [&](std::uint16_t type) {
            return std::count_if(told.begin(), told.end(), [&](const auto& one) { return one.type == type; });
        };
        EXPECT_EQ(phases(CLAP_EVENT_PARAM_GESTURE_BEGIN), 1);
        EXPECT_EQ(phases(CLAP_EVENT_PARAM_GESTURE_END), 1);
        editor.close();
    }

    ClapEditorUnderTest editor{Offer::timersAndDescriptors};
    Window parent = makeParent();
};

} // namespace

TEST_F(ClapGuiEndurance, FiveHundredOpeningsLeaveNothingBehind) {
    endure();
}

TEST_F(ClapGuiEndurance, FiveHundredOpeningsWhileAudioRunsLeaveNothingBehind) {
    ASSERT_TRUE(editor.plugin->activate());
    {
        const ClapAudioThread audio(*editor.plugin);
        endure();
        EXPECT_GT(audio.blocks(), 100U);
    }
    editor.plugin->deactivate();
}

TEST_F(ClapGuiEndurance, ErrorsOfTheDisplayAreCounted) {
    ASSERT_TRUE(editor.openIn(parent));
    const int before = displayErrors();
    XDestroyWindow(display, parent);
    XSync(display, False);
    editor.close(); // asks for a window that is gone
    EXPECT_GT(displayErrors(), before);
}
