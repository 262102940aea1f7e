#include "hosts/standalone/App.h"

#include "hosts/shared/EditorHost.h"
#include "hosts/shared/EditorSizes.h"
#include "hosts/shared/EditorWindow.h"
#include "hosts/shared/PluginRuntime.h"
#include "hosts/standalone/StopSignal.h"
#include "hosts/standalone/Storage.h"

#include <iostream>
#include <poll.h>

namespace qor::app {

namespace {

constexpr int kTurn = 20;          // milliseconds between two turns without input
constexpr double kKeepEvery = 5.0; // seconds between two looks at whether the state has changed
constexpr double kJoinEvery = 2.0; // seconds between two attempts to find a server again
constexpr const char* kTitle = "QOR Limiter";

void say(const std::string& text) {
    std::cerr << "qor-limiter-app: " << text << std::endl; // at once: the reader may wait for it
}

int list() {
    for (const auto& describe : {describeJack, describeRtAudio}) {
        for (const std::string& line : describe()) {
            std::cout << line << '\n';
        }
    }
    std::cout.flush();
    return std::cout ? 0 : 1;
}

class App {
public:
    explicit App(const Options& options) : options_(options) {}

    int run();

private:
    Result<void> open();
    void startSound();
    void followSound(double now);
    void rejoin();
    void showStatus();
    void keep(bool report);
    void turn();

    const Options& options_;
    Storage storage_;
    std::unique_ptr<host::UnitHost> unit_;
    std::optional<host::UnitHostModel> model_;
    std::unique_ptr<host::EditorHost> editor_;
    std::unique_ptr<host::EditorWindow> window_;
    std::optional<Sound> sound_;
    double keptAt_ = 0.0;
    double joinedAt_ = 0.0;
    bool closed_ = false;
};

Result<void> App::open() {
    auto unit = host::UnitHost::create();
    if (!unit) {
        return unit.error();
    }
    unit_ = std::move(unit).value();
    if (auto restored = storage_.restore(*unit_); !restored) {
        say(restored.error().localizedDescription());
    }
    model_.emplace(*unit_);
    auto editor = host::EditorHost::create(*model_);
    if (!editor) {
        return editor.error();
    }
    editor_ = std::move(editor).value();
    unit_->setOnUnitReplaced([this] { editor_->unitReplaced(); });
    NativeWindowOptions look;
    look.title = kTitle;
    look.className = "qor-limiter-app";
    look.size = host::EditorHost::kPreferredSize;
    look.minimumSize = host::kLeastEditorSize;
    look.scale = options_.scale;
    auto window = host::EditorWindow::open(*editor_, look);
    if (!window) {
        return window.error();
    }
    window_ = std::move(window).value();
    if (const auto size = storage_.windowSize()) {
        window_->native().setSize(*size);
    }
    window_->native().onClose = [this] { closed_ = true; };
    window_->native().show();
    return {};
}

void App::startSound() {
    std::vector<std::string> notes;
    auto started = sound_->start(options_.sound, notes);
    for (const std::string& note : notes) {
        say(note);
    }
    if (!started) {
        say(started.error().localizedDescription() + " The editor works without sound.");
    } else if (sound_->isRunning()) {
        say("sound: " + sound_->description());
    }
    showStatus();
}

void App::followSound(double now) {
    if (sound_->followRate()) {
        say("sound: " + sound_->description());
    }
    if (const auto loss = sound_->takeLoss()) {
        say(*loss + ". The editor works on without sound.");
        showStatus();
        joinedAt_ = now;
    }
    if (!sound_->isRunning() && now - joinedAt_ >= kJoinEvery) {
        joinedAt_ = now;
        rejoin();
    }
}

// Only for a JACK server: looking for devices would disturb those that other programs use.
void App::rejoin() {
    if (options_.sound.backend != BackendChoice::automatic && options_.sound.backend != BackendChoice::jack) {
        return;
    }
    SoundOptions jack = options_.sound;
    jack.backend = BackendChoice::jack;
    if (std::vector<std::string> notes; sound_->start(jack, notes)) {
        for (const std::string& note : notes) {
            say(note);
        }
        say("sound: " + sound_->description());
        showStatus();
    }
}

void App::showStatus() {
    window_->native().setTitle(std::string(kTitle) + (sound_->isRunning() ? "" : " (no sound)"));
}

void App::keep(bool report) {
    if (auto kept = storage_.keep(*unit_); !kept && report) {
        say("the settings cannot be kept: " + kept.error().localizedDescription());
    }
}

void App::turn() {
    window_->pump();
    const double now = steadyClock().now();
    followSound(now);
    if (now - keptAt_ >= kKeepEvery) {
        keptAt_ = now;
        keep(false);
    }
}

int App::run() {
    const StopSignal stop; // first: who sees the window may end the program
    if (auto opened = open(); !opened) {
        say(opened.error().localizedDescription());
        return 1;
    }
    sound_.emplace(*unit_);
    startSound();
    keptAt_ = joinedAt_ = steadyClock().now();
    while (!stop.came() && !closed_) {
        pollfd waiting[] = {{.fd = window_->native().fileDescriptor(), .events = POLLIN, .revents = 0},
                            {.fd = stop.descriptor(), .events = POLLIN, .revents = 0}};
        ::poll(waiting, 2, kTurn);
        turn();
    }
    sound_->stop();
    keep(true);
    const bool lost = window_->native().isGone();
    if (auto kept = storage_.keepWindowSize(window_->native().size()); !kept) {
        say("the window's size cannot be kept: " + kept.error().localizedDescription());
    }
    window_.reset();
    editor_.reset();
    if (lost) {
        say("the connection with the display is lost.");
        return 1;
    }
    return 0;
}

} // namespace

int runApp(const Options& options) {
    if (options.listDevices) {
        return list();
    }
    const auto runtime = options.log ? host::PluginRuntime::acquire() : nullptr;
    LogSink* before = options.log ? nullptr : &setLogSink(discardingSink());
    const int status = App(options).run();
    if (before != nullptr) {
        setLogSink(*before);
    }
    return status;
}

} // namespace qor::app
