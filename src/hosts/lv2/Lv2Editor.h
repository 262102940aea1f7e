// The editor as an LV2 user interface: driven by the ports alone.
#pragma once

#include "hosts/lv2/Lv2EditorModel.h"
#include "hosts/shared/EditorWindow.h"
#include "hosts/shared/PluginRuntime.h"

#include <cstdint>
#include <memory>

namespace qor::lv2 {

/// What the host does with a person's moves.
struct Lv2EditorActions {
    Block<void(std::uint32_t port, float value)> write;
    Block<void(std::uint32_t port, bool grabbed)> touch; // may be absent
};

/// Main thread.
class Lv2Editor {
public:
    /// Fails without a display, without the parent, or without the resources.
    static Result<std::unique_ptr<Lv2Editor>> open(std::uintptr_t parent, double scale,
                                                   Lv2EditorActions actions);
    ~Lv2Editor();
    Lv2Editor(const Lv2Editor&) = delete;
    Lv2Editor& operator=(const Lv2Editor&) = delete;

    std::uintptr_t window() { return window_->native().nativeHandle(); }
    /// Pixels.
    CGSize size() { return window_->native().pixelSize(); }
    void setSize(double width, double height);
    void portIs(std::uint32_t port, float value);
    /// The host's idle call. False once the window is gone.
    bool idle() { return window_->pump(); }

private:
    explicit Lv2Editor(Ref<MeterUnit> unit, std::unique_ptr<RunLoop> unitLoop, Lv2EditorActions actions)
        : unitLoop_(std::move(unitLoop)), actions_(std::move(actions)), model_(std::move(unit)) {}

    void tell(AUParameterAddress address, host::EditPhase phase, float value);

    std::shared_ptr<host::PluginRuntime> runtime_ = host::PluginRuntime::acquire();
    std::unique_ptr<RunLoop> unitLoop_; // where the unit's log lines land
    Lv2EditorActions actions_;
    Lv2EditorModel model_;
    std::unique_ptr<host::EditorHost> editor_;
    std::unique_ptr<host::EditorWindow> window_;
};

} // namespace qor::lv2
