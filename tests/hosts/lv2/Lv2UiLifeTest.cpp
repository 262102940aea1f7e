// How LV2 editors come and go: often, beside running sound, in the middle of things, and with the display.
#include "Lv2UiHost.h"

#include "support/LevelMemory.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <lv2/core/lv2.h>
#include <malloc.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <string>
#include <thread>

using namespace qor;
using namespace qor::lv2;

namespace {

int displayErrors = 0;

/// Sends standard output, where the editors log, to nowhere.
class Quiet {
public:
    Quiet() : before_(::dup(STDOUT_FILENO)) {
        std::fflush(stdout);
        const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
        ::dup2(nowhere, STDOUT_FILENO);
        ::close(nowhere);
    }
    ~Quiet() {
        ::dup2(before_, STDOUT_FILENO);
        ::close(before_);
    }
    Quiet(const Quiet&) = delete;
    Quiet& operator=(const Quiet&) = delete;

private:
    int before_;
};

/// The sound object on a thread of its own.
class Sound {
public:
    Sound() {
        void* object = dlopen(QOR_LV2_OBJECT, RTLD_NOW | RTLD_LOCAL);
        const auto entry = reinterpret_cast<LV2_Descriptor_Function>(dlsym(object, "lv2_descriptor"));
        descriptor_ = entry(0);
        const LV2_Feature* const none = nullptr;
        handle_ = descriptor_->instantiate(descriptor_, 48000.0, "/", &none);
        for (std::uint32_t port = 0; port < kPortCount; ++port) {
            const bool isAudio = port <= kOutputRight;
            if (port >= kFirstParameter && port < kEnabled) {
                controls_.at(port) = kParameterTable.at(port - kFirstParameter).defaultValue;
            }
            descriptor_->connect_port(handle_, port, isAudio ? audio_.at(port).data() : &controls_.at(port));
        }
        controls_[kEnabled] = 1.0F;
        descriptor_->activate(handle_);
        thread_ = std::thread([this] {
            for (int block = 0; !ending_.load(); ++block) {
                for (std::size_t i = 0; i < kFrames; ++i) {
                    audio_[kInputLeft][i] = audio_[kInputRight][i] =
                        (i + static_cast<std::size_t>(block)) % 50 < 25 ? 0.9F : -0.9F;
                }
                descriptor_->run(handle_, kFrames);
                meter_.store(controls_[kFirstMeter]);
                blocks.fetch_add(1);
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
        });
    }
    ~Sound() {
        ending_.store(true);
        thread_.join();
        descriptor_->deactivate(handle_);
        descriptor_->cleanup(handle_);
    }
    Sound(const Sound&) = delete;
    Sound& operator=(const Sound&) = delete;

    float meter() const { return meter_.load(); }
    std::atomic<int> blocks{0};

private:
    static constexpr std::uint32_t kFrames = 64;

    const LV2_Descriptor* descriptor_ = nullptr;
    LV2_Handle handle_ = nullptr;
    std::array<std::array<float, kFrames>, 4> audio_{};
    std::array<float, kPortCount> controls_{};
    std::atomic<float> meter_{1.0F};
    std::atomic<bool> ending_{false};
    std::thread thread_;
};

long countOf(const char* folder) {
    return std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator());
}

/// How many editors the two tests of memory open; a hundred are enough to find what leaks.
int openings() {
    const char* given = std::getenv("QOR_EDITOR_OPENINGS"); // NOLINT(concurrency-mt-unsafe): nobody writes it
    return given == nullptr ? 300 : std::max(100, std::atoi(given));
}

class Lv2UiLife : public test::UiTest {
protected:
    Lv2UiLife() {
        displayErrors = 0;
        before_ = XSetErrorHandler([](Display* /*display*/, XErrorEvent* /*event*/) -> int {
            ++displayErrors;
            return 0;
        });
    }
    ~Lv2UiLife() override { XSetErrorHandler(before_); }

    void openAndClose(int times, const Sound* sound) {
        for (int i = 0; i < times; ++i) {
            const Window parent = makeParent();
            test::UiHost ui;
            ASSERT_TRUE(ui.open(parent)) << i;
            ui.port(kFirstParameter + kLimiterTrim, static_cast<float>(i % 100) / 100.0F);
            if (sound != nullptr) {
                ui.port(kFirstMeter, sound->meter());
            }
            EXPECT_EQ(ui.idleOnce(), 0);
            EXPECT_EQ(ui.idleOnce(), 0);
            EXPECT_TRUE(ui.written.empty());
            ui.close();
            XDestroyWindow(display, parent);
            XSync(display, False);
        }
    }

    void expectLevelMemory(const Sound* sound) {
        constexpr int kRounds = 4;
        const int times = openings() / (kRounds + 1);
        const auto start = std::chrono::steady_clock::now();
        auto level = ::testing::AssertionFailure();
        {
            const Quiet quiet;
            openAndClose(times, sound);
            const long threads = countOf("/proc/self/task");
            const long files = countOf("/proc/self/fd");
            // Less than a hundred bytes an opening: what Xlib itself keeps for a display's input method.
            level = ::test::staysLevel(
                static_cast<std::size_t>(times) * 100, [&] { openAndClose(times, sound); }, kRounds);
            EXPECT_EQ(countOf("/proc/self/task"), threads);
            EXPECT_EQ(countOf("/proc/self/fd"), files);
        }
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
        std::printf("rounds of %d openings, %.1f s: %s\n", times, taken.count(), level.message());
        EXPECT_TRUE(level);
        EXPECT_EQ(displayErrors, 0);
    }

    /// One step of the wheel is one value, however many editors there have been.
    void expectOneWritePerStep() {
        test::UiHost ui;
        ASSERT_TRUE(ui.open(makeParent()));
        ui.idle(20);
        moveTo(84, 93);
        button(4, true);
        button(4, false);
        ui.idle(10);
        ASSERT_EQ(ui.written.size(), 1U);
        EXPECT_EQ(ui.written.front().first, kFirstParameter + kLimiterAttack);
    }

private:
    XErrorHandler before_ = nullptr;
};

/// A server of the test's own, to be killed.
class DoomedDisplay {
public:
    DoomedDisplay() {
        // Two servers that start in the same moment may choose the same number; one of them gives up.
        for (int attempt = 0; attempt < 10 && name.empty(); ++attempt) {
            kill();
            start();
        }
    }
    ~DoomedDisplay() { kill(); }
    DoomedDisplay(const DoomedDisplay&) = delete;
    DoomedDisplay& operator=(const DoomedDisplay&) = delete;

    void kill() {
        if (process_ != 0) {
            ::kill(process_, SIGKILL);
            ::waitpid(process_, nullptr, 0);
            process_ = 0;
        }
    }

    std::string name; // empty if there is none

private:
    void start() {
        std::array<int, 2> pipe{};
        if (::pipe(pipe.data()) != 0) {
            return;
        }
        const std::string number = std::to_string(pipe[1]);
        const std::array<const char*, 7> arguments{"Xvfb", "-displayfd", number.c_str(), "-nolisten",
                                                   "tcp",  "-noreset",   nullptr};
        if (::posix_spawnp(&process_, "Xvfb", nullptr, nullptr, const_cast<char* const*>(arguments.data()),
                           environ) != 0) {
            process_ = 0;
        }
        ::close(pipe[1]);
        std::string told; // the number and a line's end, maybe one after the other
        for (char next = 0; ::read(pipe[0], &next, 1) == 1;) {
            if (next == '\n') {
                name = ":" + told;
                break;
            }
            told += next;
        }
        ::close(pipe[0]);
    }

    pid_t process_ = 0;
};

} // namespace

TEST_F(Lv2UiLife, ManyEditorsOneAfterTheOtherLeaveTheMemoryLevel) {
    expectLevelMemory(nullptr);
    expectOneWritePerStep();
}

TEST_F(Lv2UiLife, ManyEditorsBesideRunningSoundLeaveTheMemoryLevel) {
    const Sound sound;
    expectLevelMemory(&sound);
    EXPECT_GT(sound.blocks.load(), 100);
    EXPECT_LT(sound.meter(), 1.0F) << "the sound was limited meanwhile";
    expectOneWritePerStep();
}

TEST_F(Lv2UiLife, EndsInTheMiddleOfADrag) {
    const Window parent = makeParent();
    {
        test::UiHost ui;
        ASSERT_TRUE(ui.open(parent));
        ui.idle(20);
        moveTo(83, 200);
        button(1, true);
        moveTo(83, 190);
        ui.idle(10);
        ASSERT_FALSE(ui.written.empty());
        ui.close();
        EXPECT_EQ(ui.touched.size() % 2, 0U) << "what was grabbed is let go";
    }
    button(1, false);
    expectOneWritePerStep();
    EXPECT_EQ(displayErrors, 0);
}

TEST_F(Lv2UiLife, EndsWithAFieldOrAMenuOpenAndGivesTheKeyboardBack) {
    const Window parent = makeParent();
    XSetInputFocus(display, parent, RevertToParent, CurrentTime);
    XSync(display, False);
    for (const auto& [x, y] : {std::pair{84, 132}, {214, 355}, {87, 355}}) { // a number, mode, presets
        test::UiHost ui;
        ASSERT_TRUE(ui.open(parent));
        ui.idle(20);
        moveTo(x, y);
        button(1, true);
        button(1, false);
        ui.idle(20);
        Window focused = 0;
        int revert = 0;
        XGetInputFocus(display, &focused, &revert);
        EXPECT_EQ(focused, ui.window()) << x;
        ui.close();
        XGetInputFocus(display, &focused, &revert);
        EXPECT_EQ(focused, parent) << x;
    }
    EXPECT_EQ(displayErrors, 0);
}

TEST_F(Lv2UiLife, TellsItsHostWhenItsParentIsDestroyed) {
    const Window parent = makeParent();
    test::UiHost ui;
    ASSERT_TRUE(ui.open(parent));
    EXPECT_EQ(ui.idle(10), 0);
    XDestroyWindow(display, parent);
    XSync(display, False);
    EXPECT_NE(ui.idle(10), 0);
    ui.port(kFirstParameter, 0.3F);
    EXPECT_NE(ui.idleOnce(), 0);
    ui.close();
    EXPECT_EQ(displayErrors, 0);
}

TEST_F(Lv2UiLife, TellsItsHostWhenItsConnectionIsCutAndTheHostLives) {
    const Window parent = makeParent();
    {
        test::UiHost ui;
        ASSERT_TRUE(ui.open(parent));
        EXPECT_EQ(ui.idle(10), 0);
        XKillClient(display, ui.window());
        XSync(display, False);
        EXPECT_NE(ui.idle(10), 0);
        ui.port(kFirstParameter, 0.3F);
        EXPECT_NE(ui.idleOnce(), 0);
    }
    expectOneWritePerStep();
}

TEST_F(Lv2UiLife, OutlivesItsDisplay) {
    DoomedDisplay doomed;
    ASSERT_FALSE(doomed.name.empty()) << "Xvfb is missing";
    // Nothing else of this process reads the environment meanwhile. NOLINTBEGIN(concurrency-mt-unsafe)
    const std::string kept = std::getenv("DISPLAY");
    {
        test::UiHost ui;
        ::setenv("DISPLAY", doomed.name.c_str(), 1);
        const bool opened = ui.open(0); // free-standing: the host has no connection to it
        ::setenv("DISPLAY", kept.c_str(), 1);
        // NOLINTEND(concurrency-mt-unsafe)
        ASSERT_TRUE(opened);
        EXPECT_EQ(ui.idle(10), 0);
        doomed.kill();
        ui.port(kFirstParameter, 0.9F);
        EXPECT_NE(ui.idle(10), 0);
        EXPECT_NE(ui.idleOnce(), 0);
    }
    expectOneWritePerStep();
}
