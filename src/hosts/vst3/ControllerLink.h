// How the editor's moves get to the framework's controller, and from there to the host.
#pragma once

#include "hosts/vst3/Vst3Editor.h"
#include "hosts/vst3/Vst3Interface.h"

namespace qor::vst3 {

/// Speaks the messages that the framework's own views speak; they are read within the call, so no message
/// object of the host's is needed. What the controller says in turn is not needed either, as the editor works
/// on the instance itself.
class ControllerLink {
public:
    /// The controller's end, owned by the controller. Null: there is none (any more).
    void setController(v3_connection_point** controller) noexcept { controller_ = controller; }
    v3_connection_point** controller() const noexcept { return controller_; }

    /// The controller passes nothing on before `opened` and after `closed`.
    void opened();
    void closed();
    void tell(const Vst3Editor::Edit& edit);

private:
    v3_connection_point** controller_ = nullptr;
    bool open_ = false;
};

} // namespace qor::vst3
