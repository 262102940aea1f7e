// The editor of one CLAP instance: embedded in a window of the host's, or floating.
#pragma once

#include "hosts/clap/ClapEditQueue.h"
#include "hosts/clap/ClapHost.h"
#include "hosts/clap/ClapPulse.h"
#include "hosts/shared/EditorWindow.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace qor::clap {

/// Lives as long as the instance, so that the editor is joined to the unit once however often its window
/// opens. Sizes towards the host are pixels. Main thread, apart from `unitReplaced`.
class ClapEditor {
public:
    /// All must outlive the editor.
    ClapEditor(host::UnitHost& unit, ClapHost& host, ClapEditQueue& edits, ClapPulse& pulse);
    ~ClapEditor();
    ClapEditor(const ClapEditor&) = delete;
    ClapEditor& operator=(const ClapEditor&) = delete;

    static bool isSupported(const char* api, bool isFloating) noexcept;

    /// Fails, with a line in the host's log, where there is no display or the resources are missing.
    bool create(bool isFloating);
    void destroy();
    bool isCreated() const noexcept { return created_; }

    /// Pixels per point; before it is called, what the desktop says. The size in points stays.
    bool setScale(double scale);
    CGSize size() const;
    /// The nearest size that shows the editor without bars.
    CGSize adjusted(const CGSize& pixels) const;
    void setSize(const CGSize& pixels);
    bool setParent(std::uintptr_t window);
    bool setTransient(std::uintptr_t window);
    void suggestTitle(const char* title);
    bool show();
    bool hide();

    /// Takes input in and draws; whenever the host calls on the main thread. Tells the host if the window was
    /// closed or is gone.
    void pump();
    /// The instance has another unit now. Any thread that pumps the unit, under its lock.
    void unitReplaced();

private:
    bool open();
    void close();
    void resizeWindow();
    void tell(AUParameterAddress address, host::EditPhase phase, float value);

    host::UnitHost& unit_;
    ClapHost& host_;
    ClapEditQueue& edits_;
    ClapPulse& pulse_;
    host::UnitHostModel model_;
    std::unique_ptr<host::EditorHost> editor_; // from the first window on
    std::unique_ptr<host::EditorWindow> window_;
    platform::NativeWindowOptions options_;
    bool created_ = false;
    bool floating_ = false;
    std::optional<double> hostScale_;
    double scale_ = 1.0;
    CGSize pixels_; // as the host has asked for
};

} // namespace qor::clap
