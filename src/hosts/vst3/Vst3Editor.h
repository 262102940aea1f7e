// The editor of one VST3 instance.
#pragma once

#include "hosts/shared/EditorWindow.h"
#include "hosts/shared/ServiceThread.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace qor::vst3 {

class Vst3View;

/// Lives as long as the instance, so that the editor is joined to the unit once however often its window
/// opens. Sizes are pixels. Main thread; where the host has no run loop a service thread pumps, and the
/// window operations take turns with it.
class Vst3Editor final : private host::Serviced {
public:
    struct Edit {
        AUParameterAddress address;
        host::EditPhase phase;
        float value;
    };

    /// What the instance wants to know.
    struct Actions {
        host::EditSink edited;                       // at once, within the editor's turn
        Block<void(AUParameterAddress)> gestureTold; // the host has heard of its end
    };

    /// Fails if the resources are missing.
    static Result<std::shared_ptr<Vst3Editor>> create(host::UnitHost& unit, Actions actions);
    ~Vst3Editor() override;
    Vst3Editor(const Vst3Editor&) = delete;
    Vst3Editor& operator=(const Vst3Editor&) = delete;
    /// The instance goes: from now on nothing here has an effect.
    void end();
    bool isAlive() const noexcept { return editor_ != nullptr; }

    /// The view that has the host's ear; the one before is told that it has lost it. Null when it goes.
    void setView(Vst3View* view);
    Vst3View* view() const noexcept { return view_; }

    /// Fails without a display or the parent.
    Result<void> open(std::uintptr_t parent);
    void close();
    bool isOpen() const noexcept { return window_ != nullptr; }

    /// Pixels per point; before it is called, what the desktop says. The size in points stays.
    void setScale(double scale);
    CGSize size() const noexcept { return pixels_; }
    void setSize(const CGSize& pixels);
    /// The nearest size that shows the editor without bars. Where one edge alone is another one than now, the
    /// other follows it.
    CGSize adjusted(const CGSize& pixels) const noexcept;

    /// Input, drawing, and what automation has moved; left out while another thread is at work here.
    void pump();
    /// Calls `call` regularly on a thread of its own.
    void startService(Block<void()> call);
    /// Returns when no call is in progress.
    void stopService();
    /// What a person has done since.
    std::vector<Edit> takeEdits();
    /// The host has heard of it.
    void told(const Edit& edit) const;
    void unitReplaced();

private:
    Vst3Editor(host::UnitHost& unit, Actions actions);

    void service() override;

    host::UnitHostModel model_;
    Actions actions_;
    std::unique_ptr<host::EditorHost> editor_;
    std::unique_ptr<host::EditorWindow> window_;
    platform::NativeWindowOptions options_;
    double scale_;
    CGSize pixels_;
    std::vector<Edit> edits_;
    Vst3View* view_ = nullptr;
    std::shared_ptr<host::ServiceThread> serviceThread_;
    Block<void()> serviceCall_;
};

} // namespace qor::vst3
